#pragma once

#include <cstddef>
#include <string>

#include "host/xml/xml_document.h"
#include "workbench/wire/secrets.h"

namespace workbench {

/// A copy of a document in which "***" stands in the place of secrets: of the attributes with a
/// secret's name, of the texts inside of elements with one, and of every value in which a password
/// of @p secrets stands in whatever spelling. Empty values stay.
XmlDocument maskedCopy(const XmlDocument& document, const Secrets& secrets);

/// The same as UTF-8 text with its declaration; empty for a document without root.
std::string maskedText(const XmlDocument& document, const Secrets& secrets);

/// The beginning of such a copy, elements in document order up to about @p bytes of text; true in
/// @p cut where something is left out.
XmlDocument maskedBeginning(const XmlDocument& document, const Secrets& secrets, std::size_t bytes,
                            bool& cut);

}  // namespace workbench
