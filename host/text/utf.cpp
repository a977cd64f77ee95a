#include "host/text/utf.h"

#include <array>

namespace host {
namespace {

constexpr char32_t Replacement = 0xFFFD;

constexpr bool isHighSurrogate(char32_t unit) {
  return unit >= 0xD800 && unit < 0xDC00;
}
constexpr bool isLowSurrogate(char32_t unit) {
  return unit >= 0xDC00 && unit < 0xE000;
}

struct Lead {
  int trailing;
  char32_t bits;
  char32_t least;
};

// The number of trailing bytes, the payload and the least code point that the length may encode.
Lead decodeLead(unsigned char byte) {
  if (byte < 0x80) return {0, byte, 0};
  if (byte >= 0xC2 && byte < 0xE0) return {1, char32_t(byte & 0x1F), 0x80};
  if (byte >= 0xE0 && byte < 0xF0) return {2, char32_t(byte & 0x0F), 0x800};
  if (byte >= 0xF0 && byte < 0xF5) return {3, char32_t(byte & 0x07), 0x10000};
  return {-1, 0, 0};
}

}  // namespace

char32_t nextCodePoint(std::string_view utf8, std::size_t& position, bool* malformed) {
  const auto byteAt = [&](std::size_t i) { return static_cast<unsigned char>(utf8[i]); };
  const Lead lead = decodeLead(byteAt(position++));
  char32_t value = lead.bits;
  bool good = lead.trailing >= 0;
  for (int i = 0; good && i < lead.trailing; ++i) {
    good = position < utf8.size() && (byteAt(position) & 0xC0) == 0x80;
    if (good) value = (value << 6) | (byteAt(position++) & 0x3F);
  }
  good = good && value >= lead.least && value <= 0x10FFFF && (value < 0xD800 || value > 0xDFFF);
  if (good) return value;
  if (malformed) *malformed = true;
  return Replacement;
}

char32_t nextCodePoint(std::u16string_view utf16, std::size_t& position, bool* malformed) {
  const char32_t unit = utf16[position++];
  if (!isHighSurrogate(unit) && !isLowSurrogate(unit)) return unit;
  if (isHighSurrogate(unit) && position < utf16.size() && isLowSurrogate(utf16[position]))
    return 0x10000 + ((unit - 0xD800) << 10) + (utf16[position++] - 0xDC00);
  if (malformed) *malformed = true;
  return Replacement;
}

void appendCodePoint(std::string& out, char32_t c) {
  if (c < 0x80) {
    out += static_cast<char>(c);
  } else if (c < 0x800) {
    out += static_cast<char>(0xC0 | (c >> 6));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    out += static_cast<char>(0xE0 | (c >> 12));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (c >> 18));
    out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  }
}

void appendCodePoint(std::u16string& out, char32_t c) {
  if (c < 0x10000) {
    out += static_cast<char16_t>(c);
  } else {
    out += static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10));
    out += static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF));
  }
}

std::u16string toUtf16(std::string_view utf8) {
  std::u16string out;
  out.reserve(utf8.size());
  for (std::size_t at = 0; at < utf8.size();) {
    const auto byte = static_cast<unsigned char>(utf8[at]);
    if (byte < 0x80) {
      out += static_cast<char16_t>(byte);
      ++at;
    } else {
      appendCodePoint(out, nextCodePoint(utf8, at));
    }
  }
  return out;
}

void appendUtf8(std::string& out, std::u16string_view utf16) {
  for (std::size_t at = 0; at < utf16.size();) {
    const char16_t unit = utf16[at];
    if (unit < 0x80) {
      out += static_cast<char>(unit);
      ++at;
    } else {
      appendCodePoint(out, nextCodePoint(utf16, at));
    }
  }
}

std::string toUtf8(std::u16string_view utf16) {
  std::string out;
  out.reserve(utf16.size());
  appendUtf8(out, utf16);
  return out;
}

}  // namespace host
