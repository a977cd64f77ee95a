#pragma once

#include <array>
#include <cstddef>
#include <optional>
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

  /// @p listId is the list's control in @p dialog, which must outlive this; the fields' controls
  /// have the ids from @p firstId on.
  ProgramFields(XCBaseDlg& dialog, int listId, int firstId, ProgramKind kind);

  static std::vector<host::ControlSpec> controls(int firstId);
  /// The four frames, two by two.
  static host::LayoutItem arrangement(int firstId);

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

  /// Checks every row of the list in its order, step by step. The first fault is shown, with its
  /// row selected and the focus on its edit, and gives false; otherwise the last row is selected.
  bool validate();

 private:
  struct Fault {
    int editId = 0;
    XCBasicString message;
  };
  using Places = std::array<StepPlaces, ProgramSteps>;
  enum class Wrong { nothing, duration, hour, minute, power };
  Wrong wrongIn(const XmlDocument::XmlNode& owner, int step, StepPlaces& places) const;
  Fault faultOf(Wrong wrong, int step) const;
  std::optional<Fault> firstFault(const XmlDocument::XmlNode& owner, Places& places) const;
  Fault outOfRange(int labelId, int editId, int highest) const;
  void selectAfresh(std::size_t row);

  XCBaseDlg& dialog_;
  int firstId_;
  ProgramKind kind_;
  RowEditor rows_;
};

}  // namespace lamp
