#pragma once

#include <cstddef>
#include <optional>
#include <pugixml.hpp>
#include <string>

namespace lamp::controller {

/// Deepest element that a request may have; the root is 1.
inline constexpr std::size_t MostDepth = 64;
/// Most attributes that an element may have, in a request and in what is kept.
inline constexpr std::size_t MostAttributes = 4096;

/// What is wrong with a text that should have been an XML document, and where (both counted from
/// 1).
struct XmlFault {
  std::size_t line = 1;
  std::size_t column = 1;
  std::string text;

  /// "line 3, column 7: mismatched tag".
  std::string message() const;
};

/// Reads `text` into `document` in one pass: one well-formed document in UTF-8, without a document
/// type declaration, with elements at most `depth` deep (the root is 1) and at most
/// `MostAttributes` attributes an element. Comments, processing instructions and texts of blanks
/// alone are left out; CDATA becomes text. Answers what is wrong, or nothing; the document is of no
/// use after a fault. Time and memory grow with the length of the text. Throws std::bad_alloc.
std::optional<XmlFault> readXml(std::string text, std::size_t depth, pugi::xml_document& document);

}  // namespace lamp::controller
