#pragma once

#include <cstddef>

namespace bench {

/// What this program has on the heap, counted at its allocations, those of the XML library
/// included. Its own operator new stands in front of the C++ library's, for the shared libraries
/// too. For programs of one thread.
class CountedMemory {
 public:
  /// From now on counts how much more there is than now, at most.
  CountedMemory();
  /// The most since the construction, in bytes.
  std::size_t peak() const;

 private:
  std::size_t before_;
};

}  // namespace bench
