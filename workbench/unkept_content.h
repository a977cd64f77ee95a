#pragma once

#include <cstddef>
#include <string_view>

#include "host/text/basic_string.h"

namespace workbench {

/// What the text of an XML document holds that is not there any more when the document was loaded
/// and saved: the line of the first of each, 0 where there is none.
struct UnkeptContent {
  std::size_t comment = 0;
  std::size_t instruction = 0;
  /// A text behind a child of the same element: saved, it stands in front of all children.
  std::size_t movedText = 0;

  bool any() const { return comment + instruction + movedText > 0; }
  /// A list for a person, in the language in force.
  XCBasicString text() const;
};

/// Looks through the text of a well-formed document, in time that grows with its size.
UnkeptContent unkeptContentOf(std::string_view xml);

}  // namespace workbench
