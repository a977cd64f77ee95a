#pragma once

#include <string>
#include <string_view>

#include "host/xml/xml_document.h"

namespace workbench {

/// Whether a name is that of a section: a capital letter and two digits, "L04".
bool isSectionName(std::string_view name);

/// The section that a request is about: the first child of the root with such a name. Empty when
/// there is none.
std::string sectionOf(const XmlDocument* document);

}  // namespace workbench
