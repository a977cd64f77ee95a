#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace lamp::controller {

/// Decodes base64 (RFC 4648, standard alphabet, padded); blanks and line breaks are passed over.
/// Empty when the text is anything else.
std::optional<std::string> decodeBase64(std::string_view text);

}  // namespace lamp::controller
