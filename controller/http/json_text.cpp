#include "controller/http/json_text.h"

#include <cstdio>

namespace lamp::controller {
namespace {

// Length of the UTF-8 sequence that begins at `at`; 0 when it is none.
std::size_t sequenceLength(std::string_view text, std::size_t at) {
  const auto lead = static_cast<unsigned char>(text[at]);
  if (lead < 0x80U) return 1;
  const std::size_t length = lead >= 0xF0U ? 4 : lead >= 0xE0U ? 3 : 2;
  if (lead < 0xC2U || lead > 0xF4U || at + length > text.size()) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    if ((static_cast<unsigned char>(text[at + i]) & 0xC0U) != 0x80U) return 0;
  }
  return length;
}

std::string escaped(char c) {
  switch (c) {
    case '"':
      return "\\\"";
    case '\\':
      return "\\\\";
    case '\n':
      return "\\n";
    default:
      break;
  }
  char code[8];
  std::snprintf(code, sizeof code, "\\u%04x", static_cast<unsigned>(static_cast<unsigned char>(c)));
  return code;
}

}  // namespace

std::string jsonString(std::string_view text) {
  std::string json = "\"";
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t length = sequenceLength(text, at);
    const char c = text[at];
    if (length == 0) {
      json += "\\ufffd";
    } else if (length == 1 && (static_cast<unsigned char>(c) < 0x20U || c == '"' || c == '\\')) {
      json += escaped(c);
    } else {
      json += text.substr(at, length);
    }
    at += length == 0 ? 1 : length;
  }
  return json + '"';
}

JsonText& JsonText::addRaw(std::string_view name, std::string_view value) {
  if (!empty()) text_ += ',';
  if (!name.empty()) text_ += jsonString(name) + ':';
  text_ += value;
  return *this;
}

JsonText& JsonText::add(std::string_view name, double value) {
  char number[40];
  std::snprintf(number, sizeof number, "%.9g", value);
  return addRaw(name, number);
}

JsonText& JsonText::add(std::string_view name, const std::vector<std::string>& values) {
  JsonText list('[');
  for (const std::string& value : values) list.add("", value);
  return addRaw(name, list.done());
}

}  // namespace lamp::controller
