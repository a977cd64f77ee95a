#pragma once

#include <string>
#include <string_view>

namespace workbench {

/// The section that is read to see what a written one changed: "L04" for "E04". Empty for commands
/// that write no section which can be read.
std::string readSectionOf(std::string_view written);

}  // namespace workbench
