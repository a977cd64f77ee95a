#pragma once

#include <string>
#include <string_view>

namespace workbench {

/// The bytes of a text in Base64 (RFC 4648). Line breaks and blanks are passed over; it ends at the
/// first "=" or at what is no Base64.
std::string decodeBase64(std::string_view text);

}  // namespace workbench
