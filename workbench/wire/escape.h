#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace workbench {

/// A character, or a byte of one, as an encoder wrote it: "&amp;", "\u00e9", "%C3", or "+" for a
/// blank.
struct Escape {
  /// The longest one that is understood, in bytes; numbers with more zeros in front are none.
  static constexpr std::size_t MostBytes = 24;

  std::size_t size = 0;       ///< bytes of the text; 0 where there is no escape
  char stands[4] = {};        ///< what it stands for, UTF-8 or a part of it
  std::size_t standSize = 0;  ///< bytes of that

  std::string_view meaning() const { return {stands, standSize}; }
};

/// Whether an escape may begin with this byte.
constexpr bool beginsEscape(char c) {
  return c == '&' || c == '\\' || c == '%' || c == '+';
}

/// The escape that begins at @p at in UTF-8 text: of XML 1.0 and HTML 4 (the entities of Latin-1,
/// numbers), of JSON (RFC 8259), of URIs (RFC 3986) and of form data.
Escape escapeAt(std::string_view text, std::size_t at);

}  // namespace workbench
