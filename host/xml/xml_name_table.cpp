#include "host/xml/xml_name_table.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "host/xml/xml_bytes.h"

namespace host::xml {

void NameRecord::prepare(const char* terminated, std::size_t length) {
  text = terminated;
  size = static_cast<std::uint32_t>(length + 1);
  char padded[WordBytes] = {};
  std::copy_n(text, std::min<std::size_t>(size, WordBytes), padded);
  front = loadWord(padded);
  frontMask = size < WordBytes ? (std::uint64_t(1) << (8 * size)) - 1 : ~std::uint64_t(0);
  back = size >= WordBytes ? loadWord(text + size - WordBytes) : 0;
}

NameTable& NameTable::get() {
  // Never destroyed: documents with static lifetime may outlive it otherwise.
  static NameTable& table = *new NameTable;
  return table;
}

std::string_view NameTable::text(std::uint32_t id) const {
  if (!isOfDocuments(id)) return known_[id].view();
  const std::uint32_t place = id & ~OfDocuments;
  if (place >> PlaceBits >= chunks_.size()) return {};
  const auto& chunk = chunks_[place >> PlaceBits];
  const bool used = chunk && (chunk->used >> place % Places & 1) != 0;
  return used ? chunk->records[place % Places].view() : std::string_view();
}

std::optional<std::uint32_t> NameTable::find(std::string_view name) const {
  const auto found = ids_.find(name);
  return found == ids_.end() ? std::nullopt : std::optional(found->second);
}

std::uint32_t NameTable::keep(std::string_view name) {
  if (const auto there = find(name)) {
    // Brought by a document before: it is never released from now on.
    if (NameRecord& known = record(*there); isOfDocuments(*there) && !known.kept) {
      known.kept = true;
      ++known.holders;
    }
    return *there;
  }
  const auto id = static_cast<std::uint32_t>(known_.size());
  known_.emplace_back();
  const std::string& text = knownTexts_.emplace_back(name);
  known_.back().prepare(text.c_str(), text.size());
  ids_.emplace(text, id);
  return id;
}

// A chunk that is made here stays among the roomy ones when what follows fails.
std::uint32_t NameTable::freePlace() {
  if (roomy_.empty()) {
    roomy_.reserve(chunks_.size() + 1);
    chunks_.emplace_back();
    roomy_.push_back(static_cast<std::uint32_t>(chunks_.size() - 1));
  }
  const std::uint32_t number = roomy_.back();
  std::unique_ptr<Chunk>& chunk = chunks_[number];
  if (!chunk) chunk = std::make_unique<Chunk>();
  return number << PlaceBits | static_cast<std::uint32_t>(std::countr_one(chunk->used));
}

std::uint32_t NameTable::add(std::string_view name) {
  const std::uint32_t place = freePlace();
  const std::uint32_t id = place | OfDocuments;
  auto text = std::make_unique<char[]>(name.size() + 1);
  std::memcpy(text.get(), name.data(), name.size());
  ids_.emplace(std::string_view(text.get(), name.size()), id);
  Chunk& chunk = *chunks_[place >> PlaceBits];
  NameRecord& added = chunk.records[place % Places] = {};
  added.prepare(text.release(), name.size());
  added.holders = 1;
  chunk.used |= std::uint64_t(1) << place % Places;
  if (chunk.used == ~std::uint64_t(0)) roomy_.pop_back();
  return id;
}

void NameTable::release(std::uint32_t id) {
  NameRecord& released = record(id);
  if (--released.holders > 0) return;
  ids_.erase(released.view());
  delete[] released.text;
  const std::uint32_t place = id & ~OfDocuments;
  std::unique_ptr<Chunk>& chunk = chunks_[place >> PlaceBits];
  if (chunk->used == ~std::uint64_t(0)) roomy_.push_back(place >> PlaceBits);
  chunk->used &= ~(std::uint64_t(1) << place % Places);
  if (chunk->used == 0) chunk.reset();
}

}  // namespace host::xml
