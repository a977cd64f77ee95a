#include "controller/model/base64.h"

#include <cstdint>

namespace lamp::controller {
namespace {

int valueOf(char c) {
  if (c >= 'A' && c <= 'Z') return c - 'A';
  if (c >= 'a' && c <= 'z') return c - 'a' + 26;
  if (c >= '0' && c <= '9') return c - '0' + 52;
  if (c == '+') return 62;
  return c == '/' ? 63 : -1;
}

bool isBlank(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

}  // namespace

std::optional<std::string> decodeBase64(std::string_view text) {
  std::string bytes;
  bytes.reserve(text.size() / 4 * 3);
  std::uint32_t group = 0;
  int count = 0;
  int padding = 0;
  for (const char c : text) {
    if (isBlank(c)) continue;
    const int value = c == '=' ? 0 : valueOf(c);
    if (value < 0 || (c != '=' && padding > 0)) return std::nullopt;
    if (c == '=') ++padding;
    group = (group << 6U) | static_cast<std::uint32_t>(value);
    if (++count == 4) {
      if (padding > 2) return std::nullopt;
      for (int i = 0; i < 3 - padding; ++i) {
        bytes += static_cast<char>((group >> (16U - 8U * static_cast<unsigned>(i))) & 0xFFU);
      }
      group = 0;
      count = 0;
    }
  }
  if (count != 0 || padding > 2) return std::nullopt;
  return bytes;
}

}  // namespace lamp::controller
