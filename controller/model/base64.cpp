#include "controller/model/base64.h"

#include <array>
#include <cstdint>

namespace lamp::controller {
namespace {

constexpr std::uint8_t kNone = 0xFF;
constexpr std::uint8_t kBlank = 0xFE;
constexpr std::uint8_t kPadding = 0xFD;

// What each character stands for: 0 to 63, or one of the above.
constexpr std::array<std::uint8_t, 256> makeValues() {
  std::array<std::uint8_t, 256> values{};
  for (std::uint8_t& value : values) value = kNone;
  constexpr std::string_view kAlphabet =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  for (std::size_t i = 0; i < kAlphabet.size(); ++i) {
    values[static_cast<unsigned char>(kAlphabet[i])] = static_cast<std::uint8_t>(i);
  }
  for (const char blank : {' ', '\t', '\r', '\n'}) {
    values[static_cast<unsigned char>(blank)] = kBlank;
  }
  values['='] = kPadding;
  return values;
}

constexpr std::array<std::uint8_t, 256> kValues = makeValues();

std::uint32_t valueOf(char c) {
  return kValues[static_cast<unsigned char>(c)];
}

void putGroup(std::uint32_t group, char* to) {
  to[0] = static_cast<char>(group >> 16U);
  to[1] = static_cast<char>(group >> 8U);
  to[2] = static_cast<char>(group);
}

// Decodes groups of four characters as long as each is whole and plain: an image is many megabytes
// of nothing else. Returns how many characters were taken.
std::size_t decodePlain(std::string_view text, char*& to) {
  std::size_t at = 0;
  for (; at + 4 <= text.size(); at += 4, to += 3) {
    const std::uint32_t a = valueOf(text[at]);
    const std::uint32_t b = valueOf(text[at + 1]);
    const std::uint32_t c = valueOf(text[at + 2]);
    const std::uint32_t d = valueOf(text[at + 3]);
    if ((a | b | c | d) > 63) break;
    putGroup(a << 18U | b << 12U | c << 6U | d, to);
  }
  return at;
}

}  // namespace

std::optional<std::string> decodeBase64(std::string_view text) {
  std::string bytes(text.size() / 4 * 3 + 3, '\0');
  char* to = bytes.data();
  std::uint32_t group = 0;
  int count = 0;
  int padding = 0;
  while (!text.empty()) {
    if (count == 0 && padding == 0) text.remove_prefix(decodePlain(text, to));
    if (text.empty()) break;
    const std::uint32_t value = valueOf(text.front());
    text.remove_prefix(1);
    if (value == kBlank) continue;
    if (value == kNone || (value != kPadding && padding > 0)) return std::nullopt;
    if (value == kPadding) ++padding;
    group = group << 6U | (value == kPadding ? 0U : value);
    if (++count < 4) continue;
    if (padding > 2) return std::nullopt;
    putGroup(group, to);
    to += 3 - padding;
    group = 0;
    count = 0;
  }
  if (count != 0 || padding > 2) return std::nullopt;
  bytes.resize(static_cast<std::size_t>(to - bytes.data()));
  return bytes;
}

}  // namespace lamp::controller
