#include "workbench/wire/uri_parameters.h"

#include <algorithm>

#include "workbench/wire/escape.h"

namespace workbench {

std::vector<UriParameter> uriParameters(std::string_view parameters) {
  std::vector<UriParameter> found;
  for (;;) {
    const std::size_t end = std::min(parameters.find('&'), parameters.size());
    const std::string_view entry = parameters.substr(0, end);
    const std::size_t equals = std::min(entry.find('='), entry.size());
    found.push_back({entry.substr(0, equals), entry.substr(std::min(equals + 1, entry.size()))});
    if (end == parameters.size()) return found;
    parameters.remove_prefix(end + 1);
  }
}

std::string percentDecoded(std::string_view text) {
  std::string out;
  for (std::size_t at = 0; at < text.size();) {
    const Escape escape = text[at] == '%' ? escapeAt(text, at) : Escape();
    out += escape.size > 0 ? escape.meaning() : text.substr(at, 1);
    at += std::max<std::size_t>(escape.size, 1);
  }
  return out;
}

std::string parameterValue(std::string_view parameters, std::string_view name) {
  for (const UriParameter& parameter : uriParameters(parameters))
    if (percentDecoded(parameter.name) == name) return percentDecoded(parameter.value);
  return {};
}

}  // namespace workbench
