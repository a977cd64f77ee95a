#include "workbench/wire/media_type.h"

#include <algorithm>

namespace workbench {
namespace {

constexpr std::string_view Blanks = " \t";

char small(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

bool isMediaType(std::string_view contentType, std::string_view type) {
  contentType = contentType.substr(0, contentType.find(';'));
  contentType.remove_prefix(std::min(contentType.find_first_not_of(Blanks), contentType.size()));
  contentType = contentType.substr(0, contentType.find_last_not_of(Blanks) + 1);
  return std::equal(contentType.begin(), contentType.end(), type.begin(), type.end(),
                    [](char a, char b) { return small(a) == small(b); });
}

}  // namespace workbench
