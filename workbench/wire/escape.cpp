#include "workbench/wire/escape.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <unordered_map>

#include "host/text/utf.h"

namespace workbench {
namespace {

using Entities = std::unordered_map<std::string_view, char32_t>;

// The entities of HTML 4 for U+00A0 to U+00FF, in their order.
constexpr std::string_view Latin =
    "nbsp iexcl cent pound curren yen brvbar sect uml copy ordf laquo not shy reg macr deg plusmn "
    "sup2 sup3 acute micro para middot cedil sup1 ordm raquo frac14 frac12 frac34 iquest Agrave "
    "Aacute Acirc Atilde Auml Aring AElig Ccedil Egrave Eacute Ecirc Euml Igrave Iacute Icirc Iuml "
    "ETH Ntilde Ograve Oacute Ocirc Otilde Ouml times Oslash Ugrave Uacute Ucirc Uuml Yacute THORN "
    "szlig agrave aacute acirc atilde auml aring aelig ccedil egrave eacute ecirc euml igrave "
    "iacute icirc iuml eth ntilde ograve oacute ocirc otilde ouml divide oslash ugrave uacute "
    "ucirc uuml yacute thorn yuml";

const Entities& entities() {
  static const Entities all = [] {
    Entities made = {{"amp", U'&'},  {"lt", U'<'},    {"gt", U'>'},
                     {"quot", U'"'}, {"apos", U'\''}, {"euro", U'\u20AC'}};
    char32_t character = 0xA0;
    for (std::size_t at = 0; at < Latin.size(); ++character) {
      const std::size_t end = std::min(Latin.find(' ', at), Latin.size());
      made[Latin.substr(at, end - at)] = character;
      at = end + 1;
    }
    return made;
  }();
  return all;
}

Escape standingFor(char32_t character, std::size_t size) {
  const bool surrogate = character >= 0xD800 && character < 0xE000;
  if (character == 0 || character > 0x10FFFF || surrogate) return {};
  std::string bytes;
  host::appendCodePoint(bytes, character);
  Escape escape{.size = size, .stands = {}, .standSize = bytes.size()};
  bytes.copy(escape.stands, sizeof escape.stands);
  return escape;
}

// Digits from one end to the other; none where there is another character.
bool readNumber(std::string_view digits, int base, char32_t& number) {
  std::uint32_t value = 0;
  const char* end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, value, base);
  number = value;
  return !digits.empty() && error == std::errc() && stop == end;
}

Escape entity(std::string_view text) {
  const std::size_t end = text.substr(0, Escape::MostBytes).find(';');
  if (end == std::string_view::npos) return {};
  std::string_view name = text.substr(1, end - 1);
  char32_t character = 0;
  if (!name.starts_with('#')) {
    const auto found = entities().find(name);
    return found == entities().end() ? Escape() : standingFor(found->second, end + 1);
  }
  name.remove_prefix(1);
  const bool hexadecimal = name.starts_with('x') || name.starts_with('X');
  if (hexadecimal) name.remove_prefix(1);
  return readNumber(name, hexadecimal ? 16 : 10, character) ? standingFor(character, end + 1)
                                                            : Escape();
}

// The four digits behind "\u".
bool readUnit(std::string_view text, char32_t& unit) {
  return text.size() >= 6 && text.starts_with("\\u") && readNumber(text.substr(2, 4), 16, unit);
}

Escape jsonEscape(std::string_view text) {
  constexpr std::string_view Letters = "\"\\/bfnrt";
  constexpr std::string_view Stands = "\"\\/\b\f\n\r\t";
  if (text.size() < 2) return {};
  if (const std::size_t at = Letters.find(text[1]); at != std::string_view::npos)
    return standingFor(static_cast<unsigned char>(Stands[at]), 2);
  char32_t high = 0;
  char32_t low = 0;
  if (!readUnit(text, high)) return {};
  if (high >= 0xD800 && high < 0xDC00 && readUnit(text.substr(6), low) && low >= 0xDC00 &&
      low < 0xE000)
    return standingFor(0x10000 + ((high - 0xD800) << 10) + (low - 0xDC00), 12);
  return standingFor(high, 6);
}

Escape percentEscape(std::string_view text) {
  char32_t byte = 0;
  if (text.size() < 3 || !readNumber(text.substr(1, 2), 16, byte)) return {};
  return {.size = 3, .stands = {static_cast<char>(byte)}, .standSize = 1};
}

}  // namespace

Escape escapeAt(std::string_view text, std::size_t at) {
  text.remove_prefix(at);
  switch (text.front()) {
    case '&':
      return entity(text);
    case '\\':
      return jsonEscape(text);
    case '%':
      return percentEscape(text);
    case '+':
      return {.size = 1, .stands = {' '}, .standSize = 1};
    default:
      return {};
  }
}

}  // namespace workbench
