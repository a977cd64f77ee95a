#include "pages/firmware_version.h"

#include <algorithm>

namespace lamp {
namespace {

// Takes the first component off a version: its leading digits without leading zeros, so that 0
// is empty and, of two components, the one with more digits is the greater.
template <class View>
View takeComponent(View& version) {
  const std::size_t dot = std::min(version.find('.'), version.size());
  View piece = version.substr(0, dot);
  version.remove_prefix(std::min(dot + 1, version.size()));
  const auto isDigit = [](auto c) { return c >= '0' && c <= '9'; };
  piece = {piece.begin(), std::find_if_not(piece.begin(), piece.end(), isDigit)};
  piece.remove_prefix(std::min(piece.find_first_not_of('0'), piece.size()));
  return piece;
}

template <class View>
VersionOrder compare(View first, View second) {
  while (!first.empty() || !second.empty()) {
    const View a = takeComponent(first);
    const View b = takeComponent(second);
    if (a == b) continue;
    const bool older = a.size() != b.size() ? a.size() < b.size() : a < b;
    return older ? VersionOrder::firstOlder : VersionOrder::firstNewer;
  }
  return VersionOrder::equal;
}

}  // namespace

VersionOrder compareVersions(std::u16string_view first, std::u16string_view second) {
  return compare(first, second);
}

VersionOrder compareVersions(host::XmlText first, std::string_view second) {
  if (!first.isWide()) return compare(first.narrowView(), second);
  return compare(first.wideView(),
                 std::u16string_view(std::u16string(second.begin(), second.end())));
}

}  // namespace lamp
