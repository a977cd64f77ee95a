#pragma once

#include <string_view>

namespace lamp::controller {

/// The live page, its script and its style, as the build embedded them.
std::string_view webPage();
std::string_view webScript();
std::string_view webStyle();

}  // namespace lamp::controller
