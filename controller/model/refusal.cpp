#include "controller/model/refusal.h"

namespace lamp::controller {

Refusal malformed(std::string text) {
  return Refusal{400, std::move(text)};
}

Refusal unacceptable(std::string_view where, std::string_view what) {
  std::string text(where);
  text += ": ";
  text += what;
  text += ". Nothing was changed.";
  return Refusal{422, std::move(text)};
}

std::string quoted(std::string_view value) {
  constexpr std::size_t kLongest = 60;
  std::string shown = "\"";
  std::size_t length = value.size();
  if (length > kLongest) {
    length = kLongest;
    // A cut never splits a character: continuation bytes of UTF-8 begin with the bits 10.
    while (length > 0 && (static_cast<unsigned char>(value[length]) & 0xC0U) == 0x80U) --length;
  }
  for (const char c : value.substr(0, length)) {
    shown += static_cast<unsigned char>(c) < 0x20U ? '?' : c;
  }
  shown += length < value.size() ? "...\"" : "\"";
  return shown;
}

}  // namespace lamp::controller
