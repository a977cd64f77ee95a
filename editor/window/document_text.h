#pragma once

#include <QtCore/QString>
#include <string>

#include "workbench/wire/kept_document.h"

namespace editor {

/// A document for a person to read: an element a line, a very long one cut. A text that is no
/// document stays as it is.
QString documentText(const std::string& xml);

/// The same of a document on record.
QString documentText(const workbench::KeptDocument& document);

/// The same of one section of a request or a reply, its own attributes one below the other when
/// they are many; the whole document where it lacks the section.
QString sectionText(const std::string& xml, const std::string& section);

}  // namespace editor
