#pragma once

#include <vector>

#include "host/dialogs/base_dlg.h"

// The radio buttons by which the user chooses a day type: one each, with its colour and name.

namespace lamp {

/// The buttons' controls, with the ids from @p firstId on and the names "dayType0" to "dayType9".
std::vector<host::ControlSpec> dayTypeButtons(int firstId);
/// Their box.
host::LayoutItem dayTypeBox(int groupId, int firstId);
/// Gives the buttons of a dialog their names and colours.
void showDayTypes(XCBaseDlg& dialog, int firstId);

}  // namespace lamp
