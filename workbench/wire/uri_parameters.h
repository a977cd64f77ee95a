#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace workbench {

/// One of "name=value&name=value", percent-encoded as it is written.
struct UriParameter {
  std::string_view name;
  std::string_view value;  ///< empty also without an equals sign
};

/// The parameters in their order; an empty entry is one without name and value.
std::vector<UriParameter> uriParameters(std::string_view parameters);

/// Text with its percent escapes decoded; a broken escape stays as it stands.
std::string percentDecoded(std::string_view text);

/// The decoded value of the first parameter of this name, empty when there is none.
std::string parameterValue(std::string_view parameters, std::string_view name);

}  // namespace workbench
