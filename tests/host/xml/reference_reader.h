#pragma once

#include <libxml/tree.h>

#include <memory>
#include <string>

#include "host/xml/xml_document.h"

// An independent reader of XML. It tells what a document is, and what it holds.

namespace reference {

struct Free {
  void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
};
using Document = std::unique_ptr<xmlDoc, Free>;

/// The document that @p xml is; null when it is none. Nothing is fetched for it.
Document read(const std::string& xml);

/// What the reference sees in a document, in a form of its own: "(tag name=value;... text
/// (child)...)". Declarations of namespaces are attributes like others and stand before them.
std::string content(const xmlDoc& document);

/// The same of what was read here. Text beside other pieces is compared without its blanks: those
/// between elements are no content, nor are those beside a comment or a CDATA section. Which texts
/// those are only @p reference tells.
std::string content(const XmlDocument& document, const xmlDoc& reference);

/// Whether a document that the reference takes is refused here for a reason that is listed.
bool isListedRefusal(const std::string& error);

}  // namespace reference
