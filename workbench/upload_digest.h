#pragma once

#include "host/xml/xml_document.h"
#include "workbench/journal_entry.h"

namespace workbench {

/// Size and digest of the file whose content is @p base64 (RFC 4648), without its name. Line breaks
/// and blanks are passed over. Empty for a text that is no Base64.
JournalEntry::Upload uploadDigest(host::XmlText base64);

}  // namespace workbench
