#pragma once

#include <string>
#include <string_view>

#include "host/xml/xml_document.h"

namespace workbench {

/// The section that a request is about, "L04": a capital letter and two digits, the first such
/// child of the root. Empty when there is none.
std::string sectionOf(const XmlDocument* document);

/// The same, from the beginning of a document's text.
std::string sectionOf(std::string_view xml);

/// The section that is read to see what a written one changed: "L04" for "E04". Empty for commands
/// that write no section which can be read.
std::string readSectionOf(std::string_view written);

}  // namespace workbench
