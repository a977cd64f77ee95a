#include "host/xml/xml_storage.h"

#include <algorithm>

namespace host::xml {

void* TextPool::allocate(std::size_t bytes, std::size_t alignment) {
  if (bytes > ChunkBytes / 4) {
    chunks_.push_back(std::make_unique_for_overwrite<char[]>(bytes));
    return chunks_.back().get();
  }
  const std::size_t padding = reinterpret_cast<std::uintptr_t>(next_) % alignment;
  if (next_ == nullptr || left_ < bytes + padding) {
    chunks_.push_back(std::make_unique_for_overwrite<char[]>(ChunkBytes));
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
  if (last_ == text) return last_;
  const bool ascii = std::all_of(text.begin(), text.end(), [](char16_t c) { return c < 0x80; });
  if (ascii) {
    auto* place = static_cast<char*>(allocate(text.size(), 1));
    std::transform(text.begin(), text.end(), place, [](char16_t c) { return static_cast<char>(c); });
    last_ = XmlText::narrow({place, text.size()});
  } else {
    auto* place = static_cast<char16_t*>(allocate(text.size() * 2, 2));
    std::memcpy(place, text.data(), text.size() * 2);
    last_ = XmlText::wide({place, text.size()});
  }
  return last_;
}

XmlText TextPool::storeNarrow(std::string_view ascii) {
  if (ascii.empty()) return {};
  auto* place = static_cast<char*>(allocate(ascii.size(), 1));
  std::memcpy(place, ascii.data(), ascii.size());
  return XmlText::narrow({place, ascii.size()});
}

std::string& TextPool::adopt(std::string buffer) {
  return adopted_.emplace_back(std::move(buffer));
}

Storage::~Storage() {
  for (Slab* slab : slabs_) {
    slab->~Slab();
    ::operator delete(slab, std::align_val_t(Slab::Bytes));
  }
}

void Storage::openSlab() {
  void* place = ::operator new(Slab::Bytes, std::align_val_t(Slab::Bytes));
  slabs_.push_back(new (place) Slab{this});
  nextNode_ = static_cast<char*>(place) + 64;  // the elements stay on cache-line boundaries
  nodesEnd_ = static_cast<char*>(place) + Slab::Bytes;
}

void* Storage::allocateNode(std::size_t bytes) {
  if (nextNode_ == nullptr || nextNode_ + bytes > nodesEnd_) openSlab();
  void* place = nextNode_;
  nextNode_ += bytes;
  return place;
}

Attribute* Storage::allocateAttributes(std::size_t count) {
  if (count > AttributesPerChunk / 4) {
    attributeChunks_.push_back(std::make_unique_for_overwrite<Attribute[]>(count));
    return attributeChunks_.back().get();
  }
  if (attributesLeft_ < count) {
    attributeChunks_.push_back(std::make_unique_for_overwrite<Attribute[]>(AttributesPerChunk));
    nextAttribute_ = attributeChunks_.back().get();
    attributesLeft_ = AttributesPerChunk;
  }
  Attribute* place = nextAttribute_;
  nextAttribute_ += count;
  attributesLeft_ -= count;
  return place;
}

TextPool& Storage::pool() {
  if (!own_) own_ = std::make_shared<TextPool>();
  return *own_;
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
