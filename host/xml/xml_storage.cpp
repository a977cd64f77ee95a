#include "host/xml/xml_storage.h"

#include <algorithm>
#include <bit>

// The address sanitizer is told of places that no element has, so that it sees who looks at a
// released one.
#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define SANITIZED
#endif
#elif defined(__SANITIZE_ADDRESS__)
#define SANITIZED
#endif
#ifdef SANITIZED
extern "C" void __asan_poison_memory_region(const volatile void* begin, std::size_t size);
extern "C" void __asan_unpoison_memory_region(const volatile void* begin, std::size_t size);
#endif

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

void* SharedPool::allocate(std::size_t bytes, std::size_t alignment) {
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

XmlText SharedPool::store(std::u16string_view text) {
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

XmlText SharedPool::store(XmlText text) {
  if (text.isWide()) return store(text.wideView());
  if (text.empty()) return {};
  if (last_ == text) return last_;
  auto* place = static_cast<char*>(allocate(text.size(), 1));
  std::memcpy(place, text.data(), text.size());
  return last_ = XmlText::narrow({place, text.size()});
}

std::string& SharedPool::adopt(std::string buffer) {
  std::string& kept = adopted_.emplace_back(std::move(buffer));
  bytes_ += kept.capacity();
  return kept;
}

SharedPool::~SharedPool() {
  for (const std::uint32_t name : names_) NameTable::get().release(name);
}

void SharedPool::hold(std::uint32_t name) {
  NameRecord& record = NameTable::get().record(name);
  if (record.lastPool == stamp_) return;
  makeRoomForName();
  names_.push_back(name);
  ++record.holders;
  record.lastPool = stamp_;
}

std::uint32_t SharedPool::holdNew(std::string_view name) {
  makeRoomForName();
  names_.push_back(NameTable::get().add(name));
  NameTable::get().record(names_.back()).lastPool = stamp_;
  return names_.back();
}

// A name is held twice where other pools met it in between. That may go on for ever: whenever there
// are twice as many, repeats go.
void SharedPool::makeRoomForName() {
  constexpr std::size_t Few = 64;
  if (names_.size() >= std::max(Few, 2 * namesWithoutRepeats_)) {
    std::sort(names_.begin(), names_.end());
    std::size_t kept = 0;
    for (const std::uint32_t name : names_) {
      if (kept > 0 && names_[kept - 1] == name)
        NameTable::get().release(name);
      else
        names_[kept++] = name;
    }
    names_.resize(kept);
    namesWithoutRepeats_ = kept;
  }
  if (names_.size() == names_.capacity()) names_.reserve(2 * names_.size() + 8);
}

namespace {

void forbid([[maybe_unused]] const Storage::Run& run) {
#ifdef SANITIZED
  __asan_poison_memory_region(run.begin, static_cast<std::size_t>(run.end - run.begin));
#endif
}

void allow([[maybe_unused]] const Storage::Run& run) {
#ifdef SANITIZED
  __asan_unpoison_memory_region(run.begin, static_cast<std::size_t>(run.end - run.begin));
#endif
}

void destroy(Slab* slab) {
  char* const begin = reinterpret_cast<char*>(slab);
  allow({begin, begin + Slab::Bytes});
  slab->~Slab();
  ::operator delete(slab, std::align_val_t(Slab::Bytes));
}

}  // namespace

Storage::~Storage() {
  for (Slab* slab : slabs_) destroy(slab);
}

bool Storage::openFreeRun() {
  if (runs_.empty()) return false;
  allow(runs_.back());
  nextNode_ = runs_.back().begin;
  nodesEnd_ = runs_.back().end;
  runs_.pop_back();
  return true;
}

void Storage::openSlab() {
  if (openFreeRun()) return;
  // First the room to note it: where memory ends between the two, a slab would be lost.
  if (slabs_.size() == slabs_.capacity()) slabs_.reserve(2 * slabs_.size() + 1);
  void* place = ::operator new(Slab::Bytes, std::align_val_t(Slab::Bytes));
  slabs_.push_back(new (place) Slab{this, slabs_.size()});
  nextNode_ = static_cast<char*>(place) + 64;  // the elements stay on cache-line boundaries
  nodesEnd_ = static_cast<char*>(place) + Slab::Bytes;
}

Attribute* Storage::openAttributes(std::size_t count) {
  if (count > AttributesPerChunk / 4) {
    attributeChunks_.push_back(std::make_unique_for_overwrite<Attribute[]>(count));
    attributeBytes_ += count * sizeof(Attribute);
    return attributeChunks_.back().get();
  }
  attributeChunks_.push_back(std::make_unique_for_overwrite<Attribute[]>(AttributesPerChunk));
  attributeBytes_ += AttributesPerChunk * sizeof(Attribute);
  nextAttribute_ = attributeChunks_.back().get() + count;
  attributesLeft_ = AttributesPerChunk - count;
  return nextAttribute_ - count;
}

void Storage::openPool() {
  own_ = std::make_shared<SharedPool>();
}

std::size_t Storage::textBytes() const {
  std::size_t bytes = own_ ? own_->bytes() : 0;
  for (const auto& pool : shared_) bytes += pool->bytes();
  return bytes;
}

void Storage::share(const Storage& other) {
  const auto add = [&](const std::shared_ptr<SharedPool>& pool) {
    if (pool && pool != own_ && std::find(shared_.begin(), shared_.end(), pool) == shared_.end())
      shared_.push_back(pool);
  };
  add(other.own_);
  for (const auto& pool : other.shared_) add(pool);
}

std::size_t Storage::bytes() const {
  std::size_t bytes = slabs_.size() * Slab::Bytes + attributeBytes_;
  if (own_) bytes += own_->bytes();
  for (const auto& pool : shared_) bytes += pool->bytes();
  return bytes;
}

bool Storage::isWorthReleasing() const {
  constexpr std::size_t Little = 256 * 1024;
  return bytes() > 2 * bytesReleased_ + Little;
}

void Storage::replaceContent(std::shared_ptr<SharedPool> pool,
                             std::vector<std::unique_ptr<Attribute[]>> attributes,
                             std::size_t attributeCount) noexcept {
  own_ = std::move(pool);
  shared_.clear();
  attributeChunks_ = std::move(attributes);
  attributeBytes_ = attributeCount * sizeof(Attribute);
  nextAttribute_ = nullptr;
  attributesLeft_ = 0;
}

void Storage::replaceSlabs(std::vector<Slab*> slabs, std::vector<Run> runs) noexcept {
  std::size_t kept = 0;
  for (Slab* slab : slabs_) {
    if (kept < slabs.size() && slabs[kept] == slab)
      slab->number = kept++;
    else
      destroy(slab);
  }
  slabs_ = std::move(slabs);
  runs_ = std::move(runs);
  for (const Run& run : runs_) forbid(run);
  nextNode_ = nodesEnd_ = nullptr;
  bytesReleased_ = bytes();
}

}  // namespace host::xml
