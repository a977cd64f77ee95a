#pragma once

#include <vector>

#include "host/dialogs/base_dlg.h"
#include "workbench/pages/section_compare.h"

namespace workbench {

/// What OK of an open dialog would send now, or keep in a dialog that sends nothing: the values
/// that differ from what was read, in the order of the document, and what an order names. Empty
/// exactly when OK would send nothing. Secrets read "***".
std::vector<ValueChange> changesOf(host::EditedPage& page);

/// A value that OK would refuse.
struct ValueFault {
  std::optional<XCBasicString> row;  ///< none for a field of the section
  std::string name;
  XCBasicString text;  ///< what OK would say
};

/// Everything that OK would refuse of all rows, in the order of its checks; at most one a value,
/// also for values that came so from the controller. The activation date counts only while there is
/// something to send; its name is "ActDate". Moves neither selection nor focus.
std::vector<ValueFault> faultsOf(const XCBaseDlg& dialog, host::EditedPage& page);

}  // namespace workbench
