#include "pages/firmware_version.h"

#include <algorithm>

namespace lamp {
namespace {

// Takes the first component off a version: its leading digits without leading zeros, so that 0
// is empty and, of two components, the one with more digits is the greater. By hand, character by
// character: components are short, and lists ask for the version of every row.
template <class View>
View takeComponent(View& version) {
  std::size_t at = 0;
  while (at < version.size() && version[at] == '0') ++at;
  const std::size_t begin = at;
  while (at < version.size() && version[at] >= '0' && version[at] <= '9') ++at;
  const View piece = version.substr(begin, at - begin);
  while (at < version.size() && version[at] != '.') ++at;
  version.remove_prefix(std::min(at + 1, version.size()));
  return piece;
}

template <class View>
VersionOrder compare(View first, View second) {
  while (!first.empty() || !second.empty()) {
    const View a = takeComponent(first);
    const View b = takeComponent(second);
    std::size_t same = 0;
    if (a.size() == b.size()) {
      while (same < a.size() && a[same] == b[same]) ++same;
      if (same == a.size()) continue;
    }
    const bool older = a.size() != b.size() ? a.size() < b.size() : a[same] < b[same];
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
