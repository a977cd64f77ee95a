#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace lamp::controller {

/// What is wrong with a text that should have been an XML document, and where (both counted from
/// 1).
struct XmlFault {
  std::size_t line = 1;
  std::size_t column = 1;
  std::string text;
};

/// Looks for the first thing that makes `body` something else than one well-formed UTF-8 document
/// with a single root, without DTD, and with elements at most `depthLimit` deep (the root is 1).
/// Empty when there is none. The parser that reads the document afterwards is a forgiving one, so
/// strictness lives here. Time grows with the length of `body`, memory with its depth.
std::optional<XmlFault> findXmlFault(std::string_view body, std::size_t depthLimit);

}  // namespace lamp::controller
