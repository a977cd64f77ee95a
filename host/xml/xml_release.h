#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

#include "host/xml/xml_document.h"
#include "host/xml/xml_storage.h"

// How removed elements give their memory back. Internal to host/xml.

namespace host::xml {

/// Releases the removed elements of a document that no holder refers to. The others stay where they
/// are; their texts and attributes are moved together, so that those of the released ones go too.
/// Where memory ends nothing is changed.
class Release {
 public:
  Release(Storage& storage, XmlDocument::XmlNode& root) : storage_(storage), root_(root) {}
  void run();

 private:
  using Node = XmlDocument::XmlNode;
  static constexpr std::size_t PlacesPerSlab = Slab::Bytes / sizeof(Node);
  using Places = std::array<std::uint64_t, PlacesPerSlab / 64>;

  static std::size_t placeOf(const void* node);
  static bool isSet(const Places& places, std::size_t place);
  static void set(Places& places, std::size_t place);
  Places& usedOf(const Node& node) { return used_[Slab::of(&node)->number]; }

  void noteFree();
  void noteFree(const Storage::Run& run);
  void keep(Node& top);
  void keepHeld();
  void keepHolderOf(const Node* held);
  template <class Visit>
  static void walk(Node& top, Visit visit);
  void prepare(const Node& node);
  void prepare(XmlText text);
  void prepareRuns();
  void moveContent(Node& node);
  XmlText moved(XmlText text) const;
  void finish();

  Storage& storage_;
  Node& root_;
  std::unordered_map<const Slab*, std::size_t> slabs_;
  std::vector<Places> free_;  // a slab: places that held no element before
  std::vector<Places> used_;  // a slab: places of elements that stay
  std::vector<Node*> kept_;   // the tops of the trees that stay
  std::size_t attributeCount_ = 0;
  std::shared_ptr<SharedPool> pool_;
  std::unordered_map<const void*, XmlText> texts_;  // where they lay and where they lie then
  std::vector<std::unique_ptr<Attribute[]>> attributes_;
  Attribute* nextAttribute_ = nullptr;
  std::vector<Slab*> slabsLeft_;
  std::vector<Storage::Run> runs_;
};

}  // namespace host::xml
