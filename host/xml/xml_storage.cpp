#include "host/xml/xml_storage.h"

#include <algorithm>
#include <bit>

namespace host::xml {
namespace {

// Four 16-bit units at a time.
constexpr std::size_t Units = 4;

std::uint64_t loadUnits(const char16_t* units) {
  std::uint64_t word;
  std::memcpy(&word, units, sizeof word);
  return word;
}

bool isAscii(std::u16string_view text) {
  constexpr std::uint64_t BeyondAscii = 0xFF80FF80FF80FF80U;
  std::size_t at = 0;
  std::uint64_t all = 0;
  for (; at + Units <= text.size(); at += Units) all |= loadUnits(text.data() + at);
  for (; at < text.size(); ++at) all |= text[at];
  return (all & BeyondAscii) == 0;
}

// Writes the low bytes of an ASCII text.
void narrow(std::u16string_view text, char* to) {
  std::size_t at = 0;
  if constexpr (std::endian::native == std::endian::little)
    for (; at + Units <= text.size(); at += Units) {
      std::uint64_t word = loadUnits(text.data() + at);
      word = (word | word >> 8) & 0x0000FFFF0000FFFFU;
      const auto bytes = static_cast<std::uint32_t>(word | word >> 16);
      std::memcpy(to + at, &bytes, sizeof bytes);
    }
  for (; at < text.size(); ++at) to[at] = static_cast<char>(text[at]);
}

}  // namespace

void* TextPool::allocate(std::size_t bytes, std::size_t alignment) {
  if (bytes > ChunkBytes / 4) {
    chunks_.push_back(std::make_unique_for_overwrite<char[]>(bytes));
    bytes_ += bytes;
    return chunks_.back().get();
  }
  const std::size_t padding = reinterpret_cast<std::uintptr_t>(next_) % alignment;
  if (next_ == nullptr || left_ < bytes + padding) {
    chunks_.push_back(std::make_unique_for_overwrite<char[]>(ChunkBytes));
    bytes_ += ChunkBytes;
    next_ = chunks_.back().get();
    left_ = ChunkBytes;
  } else {
    next_ += padding;
    left_ -= padding;
  }
  void* place = next_;
  next_ += bytes;
  left_ -= bytes;
  return place;
}

XmlText TextPool::store(std::u16string_view text) {
  text = text.substr(0, XmlText::MaxSize);
  if (text.empty()) return {};
  // Most values that follow one another differ at their ends.
  if (last_.size() == text.size() && last_[text.size() - 1] == text.back() && last_ == text)
    return last_;
  if (isAscii(text)) {
    auto* place = static_cast<char*>(allocate(text.size(), 1));
    narrow(text, place);
    last_ = XmlText::narrow({place, text.size()});
  } else {
    auto* place = static_cast<char16_t*>(allocate(text.size() * 2, 2));
    std::memcpy(place, text.data(), text.size() * 2);
    last_ = XmlText::wide({place, text.size()});
  }
  return last_;
}

XmlText TextPool::store(XmlText text) {
  if (text.isWide()) return store(text.wideView());
  if (text.empty()) return {};
  if (last_ == text) return last_;
  auto* place = static_cast<char*>(allocate(text.size(), 1));
  std::memcpy(place, text.data(), text.size());
  return last_ = XmlText::narrow({place, text.size()});
}

std::string& TextPool::adopt(std::string buffer) {
  std::string& adopted = adopted_.emplace_back(std::move(buffer));
  bytes_ += adopted.capacity();
  return adopted;
}

Storage::~Storage() {
  for (Slab* slab : slabs_) {
    slab->~Slab();
    ::operator delete(slab, std::align_val_t(Slab::Bytes));
  }
}

void Storage::openSlab() {
  // First the room to note it: where memory ends between the two, a slab would be lost.
  if (slabs_.size() == slabs_.capacity()) slabs_.reserve(2 * slabs_.size() + 1);
  void* place = ::operator new(Slab::Bytes, std::align_val_t(Slab::Bytes));
  slabs_.push_back(new (place) Slab{this});
  nextNode_ = static_cast<char*>(place) + 64;  // the elements stay on cache-line boundaries
  nodesEnd_ = static_cast<char*>(place) + Slab::Bytes;
}

Attribute* Storage::openAttributes(std::size_t count) {
  if (count > AttributesPerChunk / 4) {
    attributeChunks_.push_back(std::make_unique_for_overwrite<Attribute[]>(count));
    return attributeChunks_.back().get();
  }
  attributeChunks_.push_back(std::make_unique_for_overwrite<Attribute[]>(AttributesPerChunk));
  nextAttribute_ = attributeChunks_.back().get() + count;
  attributesLeft_ = AttributesPerChunk - count;
  return nextAttribute_ - count;
}

void Storage::openPool() {
  own_ = std::make_shared<TextPool>();
}

std::size_t Storage::textBytes() const {
  std::size_t bytes = own_ ? own_->bytes() : 0;
  for (const auto& pool : shared_) bytes += pool->bytes();
  return bytes;
}

void Storage::share(const Storage& other) {
  const auto add = [&](const std::shared_ptr<TextPool>& pool) {
    if (pool && pool != own_ && std::find(shared_.begin(), shared_.end(), pool) == shared_.end())
      shared_.push_back(pool);
  };
  add(other.own_);
  for (const auto& pool : other.shared_) add(pool);
}

}  // namespace host::xml
