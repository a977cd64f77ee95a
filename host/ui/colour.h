#pragma once

#include <cstdint>

namespace host {

struct Colour {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;
  friend bool operator==(const Colour&, const Colour&) = default;
};

}  // namespace host
