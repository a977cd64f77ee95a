#pragma once

#include <string>
#include <string_view>

#include "host/dialogs/base_dlg.h"

namespace workbench {

/// Whether the user gives the control a value: an edit, a drop-down list, an address, a check box.
bool takesValues(const host::Control& control);

/// What the control holds, as a section writes it: a drop-down list by the character of its entry,
/// a check box as Y or N.
std::u16string valueIn(const host::Control& control);

/// The control that takes values and has the name of an attribute, in whatever case; null for none.
host::Control* controlNamedLike(const XCBaseDlg& page, std::string_view attribute);

/// The control in which the rows of @p list show an attribute; null for none. Of two lists,
/// "oldRows" and "newRows", one may have edits "newTime" of its own beside the other's "time".
host::Control* editOfRows(const XCBaseDlg& page, const host::ListControl& list,
                          std::string_view attribute);

}  // namespace workbench
