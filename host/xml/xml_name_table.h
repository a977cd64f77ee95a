#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/xml/keyed_hash.h"

// The names of elements and attributes by their numbers. Internal to host/xml.

namespace host::xml {

/// A name, prepared so that most names compare in two steps.
struct NameRecord {
  const char* text = nullptr;  // with a zero behind it
  std::uint32_t size = 0;      // with the zero
  std::uint32_t holders = 0;   // of a name that documents brought: how often it is held
  bool kept = false;           // whether the program knows it too
  std::uint32_t place = 0;     // of that attribute, where it is looked for
  std::uint64_t front = 0;
  std::uint64_t frontMask = 0;
  std::uint64_t back = 0;
  std::uint64_t lastPool = 0;     // the stamp of the pool that met it last
  std::uint64_t lastElement = 0;  // the stamp of the element whose attribute it was last

  std::string_view view() const { return {text, size - 1}; }
  void prepare(const char* terminated, std::size_t length);
};

/// One number for each name of the process. The names that the program knows have low numbers and
/// stay; those that only documents bring have the top bit set and go when nobody holds them any
/// more, their numbers then serve others.
class NameTable {
 public:
  static NameTable& get();

  static bool isOfDocuments(std::uint32_t id) { return (id & OfDocuments) != 0; }
  /// The number of no name.
  static constexpr std::uint32_t None = ~0U;

  /// The name must be there.
  NameRecord& record(std::uint32_t id) {
    return isOfDocuments(id) ? ofDocuments(id & ~OfDocuments) : known_[id];
  }
  /// Those that the program knows, by their numbers, as long as none is added.
  NameRecord* knownRecords() { return known_.data(); }
  /// Empty for a number that has no name.
  std::string_view text(std::uint32_t id) const;
  std::optional<std::uint32_t> find(std::string_view name) const;

  /// The number of a name that stays from now on.
  std::uint32_t keep(std::string_view name);
  /// The number of a name that is not there yet, held once.
  std::uint32_t add(std::string_view name);
  void hold(std::uint32_t id) { ++record(id).holders; }
  /// The name goes when this was the last hold.
  void release(std::uint32_t id);

  /// A number that was never given before, to mark names with.
  std::uint64_t newStamp() { return ++stamp_; }
  /// How many names there are.
  std::size_t size() const { return ids_.size(); }

 private:
  NameTable() = default;

  static constexpr std::uint32_t OfDocuments = 0x80000000U;
  static constexpr std::uint32_t PlaceBits = 6;
  static constexpr std::uint32_t Places = 1U << PlaceBits;
  struct Chunk {
    std::uint64_t used = 0;  // a bit a place
    std::array<NameRecord, Places> records;
  };

  NameRecord& ofDocuments(std::uint32_t place) {
    return chunks_[place >> PlaceBits]->records[place % Places];
  }
  std::uint32_t freePlace();

  std::unordered_map<std::string_view, std::uint32_t, KeyedHash> ids_;
  std::deque<std::string> knownTexts_;
  std::vector<NameRecord> known_;
  std::vector<std::unique_ptr<Chunk>> chunks_;  // none where all places are free
  std::vector<std::uint32_t> roomy_;            // the chunks with a free place
  std::uint64_t stamp_ = 0;
};

}  // namespace host::xml
