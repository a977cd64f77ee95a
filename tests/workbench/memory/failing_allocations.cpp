#include "tests/workbench/memory/failing_allocations.h"

#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

thread_local long left = 0;  // allocations until one fails; 0 when nobody counts
thread_local bool failed = false;

void* allocate(std::size_t size) {
  if (left > 0 && --left == 0) {
    failed = true;
    throw std::bad_alloc();
  }
  void* const memory = std::malloc(size == 0 ? 1 : size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

}  // namespace

namespace test {

FailingAllocations::FailingAllocations(long number) {
  failed = false;
  left = number;
}

bool FailingAllocations::disarm() {
  left = 0;
  return failed;
}

}  // namespace test

// The library hides what it does not export; these must be seen by the libraries. The other forms
// end in these.
#define REPLACED __attribute__((visibility("default")))

REPLACED void* operator new(std::size_t size) {
  return allocate(size);
}

REPLACED void* operator new[](std::size_t size) {
  return allocate(size);
}

REPLACED void operator delete(void* memory) noexcept {
  std::free(memory);
}

REPLACED void operator delete[](void* memory) noexcept {
  std::free(memory);
}

REPLACED void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}

REPLACED void operator delete[](void* memory, std::size_t) noexcept {
  std::free(memory);
}
