#include "bench/counted_memory.h"

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <new>
#include <pugixml.hpp>

namespace {

std::size_t inUse = 0;
std::size_t mostInUse = 0;

void* counted(void* memory) {
  if (memory == nullptr) return nullptr;
  inUse += malloc_usable_size(memory);
  mostInUse = std::max(mostInUse, inUse);
  return memory;
}

void release(void* memory) {
  if (memory == nullptr) return;
  inUse -= malloc_usable_size(memory);
  std::free(memory);
}

void* forLibrary(std::size_t size) {
  return counted(std::malloc(size));
}

void* taken(std::size_t size, std::size_t alignment) {
  void* const memory = alignment <= alignof(std::max_align_t)
                           ? std::malloc(std::max<std::size_t>(size, 1))
                           : std::aligned_alloc(alignment, size);
  if (memory == nullptr) throw std::bad_alloc();
  return counted(memory);
}

}  // namespace

namespace bench {

CountedMemory::CountedMemory() {
  pugi::set_memory_management_functions(forLibrary, release);
  before_ = mostInUse = inUse;
}

std::size_t CountedMemory::peak() const {
  return mostInUse - before_;
}

}  // namespace bench

// The library hides what it does not export; these must be seen by the libraries. The other forms
// end in these.
#define REPLACED __attribute__((visibility("default")))

REPLACED void* operator new(std::size_t size) {
  return taken(size, 1);
}
REPLACED void* operator new[](std::size_t size) {
  return taken(size, 1);
}
REPLACED void* operator new(std::size_t size, std::align_val_t alignment) {
  return taken(size, static_cast<std::size_t>(alignment));
}
REPLACED void operator delete(void* memory) noexcept {
  release(memory);
}
REPLACED void operator delete[](void* memory) noexcept {
  release(memory);
}
REPLACED void operator delete(void* memory, std::size_t) noexcept {
  release(memory);
}
REPLACED void operator delete[](void* memory, std::size_t) noexcept {
  release(memory);
}
REPLACED void operator delete(void* memory, std::align_val_t) noexcept {
  release(memory);
}
REPLACED void operator delete(void* memory, std::size_t, std::align_val_t) noexcept {
  release(memory);
}
