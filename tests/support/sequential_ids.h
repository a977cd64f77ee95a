#pragma once

#include "host/services/services.h"

namespace support {

/// Ids that count: the first one ends in 1, all other bytes are 0.
class SequentialIds : public host::IdSource {
 public:
  std::array<std::uint8_t, 16> next() override {
    ++given_;
    std::array<std::uint8_t, 16> bytes{};
    for (std::size_t i = 0; i < 4; ++i)
      bytes[15 - i] = static_cast<std::uint8_t>(given_ >> (8 * i));
    return bytes;
  }
  /// How many were given.
  std::uint32_t given() const { return given_; }

 private:
  std::uint32_t given_ = 0;
};

}  // namespace support
