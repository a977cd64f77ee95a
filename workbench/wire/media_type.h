#pragma once

#include <string_view>

namespace workbench {

/// Whether the value of a Content-Type header names a media type ("text/plain"): compared whole,
/// without parameters and without regard to case (RFC 9110, 8.3.1).
bool isMediaType(std::string_view contentType, std::string_view type);

}  // namespace workbench
