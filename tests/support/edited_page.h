#pragma once

#include <string>
#include <vector>

#include "host/dialogs/base_dlg.h"
#include "workbench/pages/page_changes.h"

// What a dialog would send and what OK would refuse, as lines of text.

namespace support {

inline std::string lineText(const std::optional<XCBasicString>& text) {
  return text ? text->ToUtf8() : "null";
}

/// "row name caption: before -> after", a line for each change.
inline std::vector<std::string> changesOn(XCBaseDlg& dialog) {
  std::vector<std::string> lines;
  for (const workbench::ValueChange& change : workbench::changesOf(*dialog.Edits()))
    lines.push_back(lineText(change.row) + " " + change.name + " " + change.caption.ToUtf8() +
                    ": " + lineText(change.before) + " -> " + lineText(change.after));
  return lines;
}

/// "row name: text", a line for each fault.
inline std::vector<std::string> faultsOn(XCBaseDlg& dialog) {
  std::vector<std::string> lines;
  for (const workbench::ValueFault& fault : workbench::faultsOf(dialog, *dialog.Edits()))
    lines.push_back(lineText(fault.row) + " " + fault.name + ": " + fault.text.ToUtf8());
  return lines;
}

}  // namespace support
