#pragma once

#include <string>
#include <string_view>

#include "host/export.h"

namespace host {

/// The UTF-16 form of UTF-8 text. Each malformed byte sequence becomes one U+FFFD.
HOST_API std::u16string toUtf16(std::string_view utf8);

/// The UTF-8 form of UTF-16 text. An unpaired surrogate becomes U+FFFD.
HOST_API std::string toUtf8(std::u16string_view utf16);

/// Appends the UTF-8 form of UTF-16 text to @p out.
HOST_API void appendUtf8(std::string& out, std::u16string_view utf16);

/// Appends one code point (0 to 0x10FFFF, no surrogate) to @p out.
HOST_API void appendCodePoint(std::string& out, char32_t codePoint);
HOST_API void appendCodePoint(std::u16string& out, char32_t codePoint);

/// Reads one code point at @p position and moves past it. Malformed input yields U+FFFD, sets
/// @p malformed (when given) and moves by at least one byte. @p position must be inside the text.
HOST_API char32_t nextCodePoint(std::string_view utf8, std::size_t& position,
                                bool* malformed = nullptr);
HOST_API char32_t nextCodePoint(std::u16string_view utf16, std::size_t& position,
                                bool* malformed = nullptr);

}  // namespace host
