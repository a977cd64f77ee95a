#pragma once

#include <string_view>

namespace lamp::controller {

/// A file of the live page by its name, as the build embedded it; empty where there is none.
std::string_view webFile(std::string_view name);

}  // namespace lamp::controller
