#pragma once

#include "host/dialogs/base_dlg.h"
#include "host/dialogs/page_description.h"

namespace lamp {

/// Checks every row of a list by the rules of its values, in the order of the list, as OK does. The
/// first value that its rule refuses is told with the rule's message, with the focus on its edit,
/// and gives false. Which row is selected then is told by RowSet::visit.
bool checkRows(XCBaseDlg& dialog, const host::RowSet& rows);

}  // namespace lamp
