#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/dialogs/base_dlg.h"

namespace workbench {

/// An edit of rows: the list whose selected rows it edits, and the value.
struct RowEdit {
  host::ListControl* list;
  const host::RowSet* rows;
  const host::Binding* binding;
  host::Control* control;
};

/// What a control edits of the rows of a list; none for another control, a hidden or disabled one.
std::optional<RowEdit> rowEditOf(const XCBaseDlg& dialog, const host::EditedPage& page,
                                 const host::Control& control);

/// The set whose rows a list shows and that has entries; null when there is none.
const host::RowSet* rowsShownIn(const host::EditedPage& page, const host::ListControl& list);

/// The values of rows that a person edits below a list, in the order of the list's columns.
std::vector<RowEdit> editsBelow(const XCBaseDlg& dialog, const host::RowSet& rows,
                                host::ListControl& list);

/// Why a control would not take a text as a whole, if it were typed or chosen there: its length,
/// digits, mask, control characters, or a choice that it lacks. Empty when it takes it.
std::string whyNotTyped(const RowEdit& edit, const XCBasicString& text);

/// One value for each of some rows, given at once.
struct RowValues {
  std::vector<std::size_t> rows;      ///< of the list as it is shown
  std::vector<XCBasicString> values;  ///< one for each row
};

/// Why the edit would not take one of the values whole; empty when it takes all.
std::string whyRefused(const RowEdit& edit, const RowValues& values);

/// Puts the values into the elements of the rows and shows them. The count of those that differ
/// from what the row had.
std::size_t putRowValues(host::EditedPage& page, const RowEdit& edit, const RowValues& values);

}  // namespace workbench
