#pragma once

#include <cstddef>

namespace bench {

/// The most memory that the process held resident since this was made, above what it held then.
class PeakMemory {
 public:
  /// Sets the peak that the system keeps back to what is resident now.
  PeakMemory();
  /// In bytes.
  std::size_t growth() const;

 private:
  std::size_t before_;
};

}  // namespace bench
