#pragma once

#include <QtWidgets/QWidget>
#include <array>
#include <string_view>

#include "editor/dialogs/side_pane.h"
#include "editor/program_chart/selected_programs.h"
#include "host/dialogs/base_dlg.h"

namespace editor {

class NightChart;

/// Shows the night of the rows that are selected in a list of dimming programs. Rows are read when
/// they are selected; what is typed for all of them changes what was read.
///
/// Such a list has the owner in its first column, then time and power of each step; the dialog has
/// the edits "time1" to "time4", masked where times are those of a clock, and "power1" to "power4".
class ProgramPane : public SidePane {
 public:
  /// Whether a dialog has the list, with its columns, and all the edits.
  static bool fits(const XCBaseDlg& dialog, std::string_view list);

  /// @p list names the control with the programs. @p dialog must outlive the last follow().
  ProgramPane(XCBaseDlg& dialog, std::string_view list, QWidget* parent);

  void note() override;
  void follow() override;

  NightChart& chart() const { return *chart_; }
  /// How many rows were read so far.
  std::size_t rowsRead() const { return rowsRead_; }

 private:
  static constexpr std::size_t Fields = 2 * ProgramSteps;
  using Texts = std::array<XCBasicString, Fields>;

  ProgramTimes times() const;
  bool takeTyped();
  void readRows();
  void remember();
  XCBasicString firstCell(std::size_t field) const;

  const host::ListControl& list_;
  std::array<const host::EditControl*, Fields> fields_{};
  NightChart* chart_;
  SelectedPrograms programs_;
  std::size_t rowsRead_ = 0;
  // What was shown last, and what changed since, if only for a moment.
  std::vector<std::size_t> selection_;
  const void* firstElement_ = nullptr;
  Texts texts_;
  Texts cells_;
  bool otherRows_ = true;
  std::array<bool, Fields> typed_{};
};

}  // namespace editor
