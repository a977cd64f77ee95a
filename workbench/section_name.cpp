#include "workbench/section_name.h"

#include <algorithm>
#include <array>

namespace workbench {
namespace {

// What is written under these names is read under the same number. The others are orders.
constexpr std::array<std::string_view, 8> Written = {"E01", "E02", "E04", "E05",
                                                     "E06", "E07", "E13", "E17"};

}  // namespace

std::string readSectionOf(std::string_view written) {
  if (std::find(Written.begin(), Written.end(), written) == Written.end()) return {};
  return "L" + std::string(written.substr(1));
}

}  // namespace workbench
