#pragma once

#include "workbench/page_values.h"

namespace workbench {

/// Types a section, as it was read or written, into an open page, by the rules that hold for its
/// user: what putValues() takes, the lines of the inputs and outputs page, the periodic tasks.
/// Nothing is sent.
PutReport putSection(XCBaseDlg& page, const XmlDocument::XmlNode& section);

}  // namespace workbench
