#include "workbench/section_name.h"

#include <algorithm>
#include <array>

namespace workbench {
namespace {

// What is written under these names is read under the same number. The others are orders.
constexpr std::array<std::string_view, 8> Written = {"E01", "E02", "E04", "E05",
                                                     "E06", "E07", "E13", "E17"};

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

bool isSection(std::string_view name) {
  return name.size() == 3 && name[0] >= 'A' && name[0] <= 'Z' && isDigit(name[1]) &&
         isDigit(name[2]);
}

}  // namespace

std::string sectionOf(const XmlDocument* document) {
  if (document == nullptr || document->Root() == nullptr) return {};
  for (const XmlDocument::XmlNode& child : document->Root()->Children()) {
    if (isSection(child.Tag())) return std::string(child.Tag());
  }
  return {};
}

std::string sectionOf(std::string_view xml) {
  // The section is the first element in the root: no need to read a long document for it.
  xml = xml.substr(0, 512);
  std::size_t at = xml.starts_with("<?xml") ? xml.find("?>") : 0;
  if (at == std::string_view::npos) return {};
  at = xml.find('<', at);
  if (at != std::string_view::npos) at = xml.find('<', at + 1);
  if (at == std::string_view::npos) return {};
  const std::string_view name = xml.substr(at + 1, 3);
  const bool ends = xml.size() > at + 4 && !isDigit(xml[at + 4]);
  return isSection(name) && ends ? std::string(name) : std::string();
}

std::string readSectionOf(std::string_view written) {
  if (std::find(Written.begin(), Written.end(), written) == Written.end()) return {};
  return "L" + std::string(written.substr(1));
}

}  // namespace workbench
