#include "pages/firmware_version.h"

#include <algorithm>

namespace lamp {
namespace {

bool isDigit(char16_t c) {
  return c >= u'0' && c <= u'9';
}

// Takes the first component off a version: its leading digits without leading zeros, so that 0
// is empty and, of two components, the one with more digits is the greater.
std::u16string_view takeComponent(std::u16string_view& version) {
  const std::size_t dot = std::min(version.find(u'.'), version.size());
  std::u16string_view piece = version.substr(0, dot);
  version.remove_prefix(std::min(dot + 1, version.size()));
  piece = {piece.begin(), std::find_if_not(piece.begin(), piece.end(), isDigit)};
  piece.remove_prefix(std::min(piece.find_first_not_of(u'0'), piece.size()));
  return piece;
}

}  // namespace

VersionOrder compareVersions(std::u16string_view first, std::u16string_view second) {
  while (!first.empty() || !second.empty()) {
    const std::u16string_view a = takeComponent(first);
    const std::u16string_view b = takeComponent(second);
    if (a == b) continue;
    const bool older = a.size() != b.size() ? a.size() < b.size() : a < b;
    return older ? VersionOrder::firstOlder : VersionOrder::firstNewer;
  }
  return VersionOrder::equal;
}

}  // namespace lamp
