#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace workbench {

/// The SHA-256 digest (FIPS 180-4) of @p bytes.
std::array<std::uint8_t, 32> sha256(std::string_view bytes);

/// The digest as 64 small hexadecimal digits.
std::string sha256Text(std::string_view bytes);

}  // namespace workbench
