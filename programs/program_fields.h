#pragma once

#include <cstddef>
#include <vector>

#include "host/dialogs/base_dlg.h"
#include "host/ui/control_spec.h"
#include "host/ui/layout.h"
#include "pages/binding/row_editor.h"
#include "programs/dimming_program.h"

namespace lamp {

/// The eight edits of a dimming program below a list of programs, a frame for each step: time and
/// power of what is selected.
class ProgramFields {
 public:
  /// How many ids the controls take.
  static constexpr int IdCount = 5 * ProgramSteps;

  /// The values of a program with their controls, which have the ids from @p firstId on.
  static std::vector<host::Binding> values(ProgramKind kind, int firstId);
  static std::vector<host::ControlSpec> controls(int firstId);
  /// The four frames, two by two.
  static host::LayoutItem arrangement(int firstId);

  /// @p rows are a list of programs in @p dialog with the values that values() made; both must
  /// outlive this.
  ProgramFields(XCBaseDlg& dialog, const host::RowSet& rows);

  /// Sets captions, limits and masks. A clock program's first step takes no time.
  void initialise();

  /// Shows what the selected rows have in common; see RowEditor.
  void showSelected() { rows_.selectionChanged(); }
  /// Puts an edit's text into every selected row.
  void writeBack(int editId) { rows_.editChanged(editId); }

  /// The column that an edit stands for.
  std::size_t columnOf(int editId) const;
  /// The edits' texts, in the order of the columns from 1 on.
  std::vector<XCBasicString> texts() const;

 private:
  XCBaseDlg& dialog_;
  const std::vector<host::Binding>& values_;
  RowEditor rows_;
};

}  // namespace lamp
