#include "workbench/json_writer.h"

#include <algorithm>

#include "host/text/utf.h"

namespace workbench {
namespace {

bool isAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(),
                     [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

}  // namespace

void JsonWriter::separate() {
  if (!first_) out_ += ',';
  first_ = false;
}

JsonWriter& JsonWriter::open(char bracket) {
  separate();
  out_ += bracket;
  first_ = true;
  return *this;
}

JsonWriter& JsonWriter::close(char bracket) {
  out_ += bracket;
  first_ = false;
  return *this;
}

JsonWriter& JsonWriter::name(std::string_view name) {
  separate();
  quote(name);
  out_ += ':';
  first_ = true;  // no comma in front of the value
  return *this;
}

JsonWriter& JsonWriter::value(bool value) {
  separate();
  out_ += value ? "true" : "false";
  return *this;
}

JsonWriter& JsonWriter::value(std::int64_t number) {
  separate();
  out_ += std::to_string(number);
  return *this;
}

JsonWriter& JsonWriter::null() {
  separate();
  out_ += "null";
  return *this;
}

JsonWriter& JsonWriter::value(std::string_view text) {
  separate();
  if (isAscii(text))
    quote(text);
  else
    quote(host::toUtf8(host::toUtf16(text)));
  return *this;
}

JsonWriter& JsonWriter::value(std::u16string_view text) {
  separate();
  quote(host::toUtf8(text));
  return *this;
}

JsonWriter& JsonWriter::members(std::string_view written) {
  if (written.empty()) return *this;
  separate();
  out_ += written;
  return *this;
}

void JsonWriter::quote(std::string_view valid) {
  constexpr char Hex[] = "0123456789abcdef";
  out_ += '"';
  std::size_t written = 0;
  for (std::size_t at = 0; at < valid.size(); ++at) {
    const auto c = static_cast<unsigned char>(valid[at]);
    if (c >= 0x20 && c != '"' && c != '\\') continue;
    out_ += valid.substr(written, at - written);
    written = at + 1;
    out_ += '\\';
    switch (c) {
      case '"':
      case '\\':
        out_ += valid[at];
        break;
      case '\n':
        out_ += 'n';
        break;
      case '\r':
        out_ += 'r';
        break;
      case '\t':
        out_ += 't';
        break;
      default:
        out_ += "u00";
        out_ += Hex[c >> 4];
        out_ += Hex[c & 15];
    }
  }
  out_ += valid.substr(written);
  out_ += '"';
}

}  // namespace workbench
