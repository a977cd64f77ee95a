#pragma once

#include <cstdint>
#include <string_view>

namespace lamp::controller {

/// CRC-32 of `bytes` (ISO 3309, the polynomial of Ethernet). `before` is the checksum of what
/// stands before them, 0 for nothing.
std::uint32_t checksumOf(std::string_view bytes, std::uint32_t before = 0);

}  // namespace lamp::controller
