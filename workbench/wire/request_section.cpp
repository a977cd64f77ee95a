#include "workbench/wire/request_section.h"

namespace workbench {
namespace {

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

}  // namespace

bool isSectionName(std::string_view name) {
  return name.size() == 3 && name[0] >= 'A' && name[0] <= 'Z' && isDigit(name[1]) &&
         isDigit(name[2]);
}

std::string sectionOf(const XmlDocument* document) {
  if (document == nullptr || document->Root() == nullptr) return {};
  for (const XmlDocument::XmlNode& child : document->Root()->Children())
    if (isSectionName(child.Tag())) return std::string(child.Tag());
  return {};
}

}  // namespace workbench
