#pragma once

namespace test {

/// The memory of this program, of which one piece is not given. The program's own operator new
/// stands in front of the C++ library's, for the shared libraries too; other threads are given all
/// that they ask for.
class FailingAllocations {
 public:
  /// From now on this thread counts its allocations; the one with this number, from 1, throws
  /// std::bad_alloc, and those behind it succeed again.
  explicit FailingAllocations(long number);
  FailingAllocations(const FailingAllocations&) = delete;
  FailingAllocations& operator=(const FailingAllocations&) = delete;
  ~FailingAllocations() { disarm(); }

  /// Ends the counting; answers whether the allocation came and failed.
  bool disarm();
};

}  // namespace test
