#pragma once

#include "host/services/services.h"

namespace support {

/// A clock that stands still: at 15/03/2025 10:00:00 until a test sets it.
class FixedClock : public host::Clock {
 public:
  FixedClock() = default;
  explicit FixedClock(const XCDateTime& now) : now_(now) {}
  XCDateTime now() const override { return now_; }
  void set(const XCDateTime& now) { now_ = now; }

 private:
  XCDateTime now_{2025, 3, 15, 10, 0, 0};
};

}  // namespace support
