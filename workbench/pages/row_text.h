#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/text/basic_string.h"

namespace workbench {

/// Texts for rows, or the reason why there are none.
struct RowTexts {
  std::vector<XCBasicString> texts;
  std::string refused = {};
};

/// One text for each of @p count rows, by a pattern: "{START}" counts from START in steps of 1,
/// "{START:STEP}" in steps of STEP, which may be negative; a leading zero in START keeps its width.
/// Other braces stay. Refused where a number would be below zero.
RowTexts numberedTexts(std::u16string_view pattern, std::size_t count);

/// The texts with every occurrence of @p find replaced, left to right and with regard to case.
/// Refused for an empty @p find.
RowTexts replacedTexts(const std::vector<XCBasicString>& texts, std::u16string_view find,
                       std::u16string_view with);

/// The same for a regular expression of ECMAScript; in @p with "$1" to "$99" stand for its groups,
/// "$&" for all that it matched, "$$" for a dollar sign. Refused for an empty or a malformed
/// expression, and for one that takes longer than a second.
RowTexts replacedByExpression(const std::vector<XCBasicString>& texts, std::u16string_view find,
                              std::u16string_view with);

}  // namespace workbench
