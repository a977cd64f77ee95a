#include "host/xml/xml_name.h"

#include "host/text/utf.h"
#include "host/xml/xml_name_table.h"

namespace host {
namespace {

bool isNameStart(char32_t c) {
  return c == U':' || c == U'_' || (c >= U'A' && c <= U'Z') || (c >= U'a' && c <= U'z') ||
         (c >= 0xC0 && c <= 0xD6) || (c >= 0xD8 && c <= 0xF6) || (c >= 0xF8 && c <= 0x2FF) ||
         (c >= 0x370 && c <= 0x37D) || (c >= 0x37F && c <= 0x1FFF) ||
         (c >= 0x200C && c <= 0x200D) || (c >= 0x2070 && c <= 0x218F) ||
         (c >= 0x2C00 && c <= 0x2FEF) || (c >= 0x3001 && c <= 0xD7FF) ||
         (c >= 0xF900 && c <= 0xFDCF) || (c >= 0xFDF0 && c <= 0xFFFD) ||
         (c >= 0x10000 && c <= 0xEFFFF);
}

bool isNamePart(char32_t c) {
  return isNameStart(c) || c == U'-' || c == U'.' || (c >= U'0' && c <= U'9') || c == 0xB7 ||
         (c >= 0x300 && c <= 0x36F) || (c >= 0x203F && c <= 0x2040);
}

}  // namespace

XmlName::XmlName(std::string_view name) : id_(xml::NameTable::get().keep(name)) {}

XmlName XmlName::find(std::string_view name) {
  return fromId(xml::NameTable::get().find(name).value_or(xml::NameTable::None));
}

std::string_view XmlName::text() const {
  return xmlNameText(id_);
}

std::string_view xmlNameText(std::uint32_t id) {
  return xml::NameTable::get().text(id);
}

bool isXmlName(std::string_view name) {
  bool malformed = false;
  for (std::size_t at = 0; at < name.size();) {
    const bool first = at == 0;
    const char32_t c = nextCodePoint(name, at, &malformed);
    if (malformed || !(first ? isNameStart(c) : isNamePart(c))) return false;
  }
  return !name.empty();
}

}  // namespace host
