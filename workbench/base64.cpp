#include "workbench/base64.h"

#include <cstdint>

namespace workbench {
namespace {

int valueOf(char c) {
  if (c >= 'A' && c <= 'Z') return c - 'A';
  if (c >= 'a' && c <= 'z') return c - 'a' + 26;
  if (c >= '0' && c <= '9') return c - '0' + 52;
  if (c == '+') return 62;
  return c == '/' ? 63 : -1;
}

}  // namespace

std::string decodeBase64(std::string_view text) {
  std::string bytes;
  bytes.reserve(text.size() / 4 * 3);
  std::uint32_t held = 0;
  int bits = 0;
  for (const char c : text) {
    if (c == '\n' || c == '\r' || c == ' ') continue;
    const int value = valueOf(c);
    if (value < 0) break;
    held = held << 6 | static_cast<std::uint32_t>(value);
    bits += 6;
    if (bits < 8) continue;
    bits -= 8;
    bytes += static_cast<char>(held >> bits & 0xFF);
  }
  return bytes;
}

}  // namespace workbench
