#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <deque>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include "host/xml/xml_name.h"
#include "host/xml/xml_name_table.h"
#include "host/xml/xml_text.h"

// How a document keeps its elements and texts. Internal to host/xml.

namespace host::xml {

/// Texts and names that documents share: append-only, alive as long as one document refers to it.
class SharedPool {
 public:
  SharedPool() = default;
  SharedPool(const SharedPool&) = delete;
  SharedPool& operator=(const SharedPool&) = delete;
  ~SharedPool();

  XmlText store(std::u16string_view text);
  XmlText store(XmlText text);
  /// Takes the whole buffer over; texts may refer into it.
  std::string& adopt(std::string buffer);
  /// Keeps a name that documents brought.
  void hold(std::uint32_t name);
  /// Adds a name that is not there yet, and keeps it.
  std::uint32_t holdNew(std::string_view name);
  /// Marks the names that this pool met.
  std::uint64_t stamp() const { return stamp_; }
  /// What the texts take.
  std::size_t bytes() const { return bytes_; }

 private:
  void* allocate(std::size_t bytes, std::size_t alignment);
  void makeRoomForName();

  static constexpr std::size_t ChunkBytes = 16 * 1024;
  std::vector<std::unique_ptr<char[]>> chunks_;
  std::deque<std::string> adopted_;
  std::size_t bytes_ = 0;
  char* next_ = nullptr;
  std::size_t left_ = 0;
  // The same value set on many elements in a row is stored once.
  XmlText last_;
  const std::uint64_t stamp_ = NameTable::get().newStamp();
  std::vector<std::uint32_t> names_;  // few of them twice
  std::size_t namesWithoutRepeats_ = 0;
};

/// Trivial: a chunk of them costs nothing to make.
struct Attribute {
  std::uint32_t name;
  std::uint32_t sizeAndWidth;
  const void* data;

  XmlText text() const { return {data, sizeAndWidth}; }
  void setText(XmlText text) {
    data = text.data();
    sizeAndWidth = text.sizeAndWidth();
  }
};

struct Storage;

/// A block of elements, aligned to its size so that an element finds its document's storage
/// without carrying a pointer to it.
struct Slab {
  static constexpr std::size_t Bytes = 64 * 1024;
  Storage* owner = nullptr;
  std::size_t number = 0;  // its place among the slabs of the storage

  static Slab* of(const void* element) {
    return reinterpret_cast<Slab*>(reinterpret_cast<std::uintptr_t>(element) & ~(Bytes - 1));
  }
};

/// Everything that a document owns. Elements that were removed keep their place until it is asked
/// to release them (see Release): rows and dialogs may still refer to them.
struct Storage {
  /// Places for elements, one behind the other.
  struct Run {
    char* begin = nullptr;
    char* end = nullptr;
  };

  Storage() = default;
  Storage(const Storage&) = delete;
  Storage& operator=(const Storage&) = delete;
  ~Storage();

  void* allocateNode(std::size_t bytes) {
    if (static_cast<std::size_t>(nodesEnd_ - nextNode_) < bytes) openSlab();
    void* place = nextNode_;
    nextNode_ += bytes;
    return place;
  }
  Attribute* allocateAttributes(std::size_t count) {
    if (attributesLeft_ < count) return openAttributes(count);
    Attribute* place = nextAttribute_;
    nextAttribute_ += count;
    attributesLeft_ -= count;
    return place;
  }
  SharedPool& pool() {
    if (!own_) openPool();
    return *own_;
  }
  /// Before a name is given to an element or attribute of the document.
  void hold(XmlName name) {
    if (NameTable::isOfDocuments(name.id())) pool().hold(name.id());
  }
  void share(const Storage& other);
  std::size_t textBytes() const;

  /// Whether more was added since the last release than was left then.
  bool isWorthReleasing() const;
  const std::vector<Slab*>& slabs() const { return slabs_; }
  const std::vector<Run>& runs() const { return runs_; }
  Run openRun() const { return {nextNode_, nodesEnd_}; }
  /// Puts texts, names and attributes in the place of all that there are.
  void replaceContent(std::shared_ptr<SharedPool> pool,
                      std::vector<std::unique_ptr<Attribute[]>> attributes,
                      std::size_t attributeCount) noexcept;
  /// Leaves these slabs of all that there are; @p runs are their free places.
  void replaceSlabs(std::vector<Slab*> slabs, std::vector<Run> runs) noexcept;

 private:
  void openSlab();
  bool openFreeRun();
  std::size_t bytes() const;
  Attribute* openAttributes(std::size_t count);
  void openPool();
  static constexpr std::size_t AttributesPerChunk = 1024;
  std::vector<Slab*> slabs_;
  char* nextNode_ = nullptr;
  char* nodesEnd_ = nullptr;
  std::vector<Run> runs_;          // places of elements that were released
  std::size_t bytesReleased_ = 0;  // what was left behind the last release
  std::vector<std::unique_ptr<Attribute[]>> attributeChunks_;
  Attribute* nextAttribute_ = nullptr;
  std::size_t attributesLeft_ = 0;
  std::size_t attributeBytes_ = 0;
  std::shared_ptr<SharedPool> own_;
  std::vector<std::shared_ptr<SharedPool>> shared_;
};

}  // namespace host::xml
