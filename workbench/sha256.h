#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace workbench {

/// The SHA-256 digest (FIPS 180-4) of bytes that come in pieces.
class Sha256 {
 public:
  void add(std::string_view bytes);
  /// The digest of all that was added, as 64 small hexadecimal digits. Called once, at the end.
  std::string text();

 private:
  std::array<std::uint32_t, 8> state_ = {0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                                         0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};
  std::string held_;  // less than a block
  std::uint64_t bytes_ = 0;
};

/// The digest of @p bytes as 64 small hexadecimal digits.
std::string sha256Text(std::string_view bytes);

}  // namespace workbench
