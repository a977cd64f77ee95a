#include "editor/dialogs/side_panes.h"

#include <algorithm>
#include <initializer_list>
#include <string_view>

#include "editor/program_chart/program_pane.h"

namespace editor {
namespace {

template <class Pane>
SidePane* make(XCBaseDlg& dialog, std::string_view subject, QWidget* parent) {
  return Pane::fits(dialog, subject) ? new Pane(dialog, subject, parent) : nullptr;
}

/// One row of the table of panes. A dialog of the class that lacks the controls gets no pane.
struct Entry {
  std::string_view dialogClass;
  SidePane* (*make)(XCBaseDlg& dialog, std::string_view subject, QWidget* parent);
  /// The control that the pane is about.
  std::string_view subject;
  /// The first and the last of the controls that it stands beside.
  std::string_view first;
  std::string_view last;
};

constexpr Entry Table[] = {
    {"CDlgE06CfgZelLampManager", &make<ProgramPane>, "nodes", "time1", "power4"},
    {"XCDeviceCalendarDayTypesZelLAMPManager", &make<ProgramPane>, "days", "time1", "power4"},
};

}  // namespace

PlacedPane makeSidePane(XCBaseDlg& dialog, QWidget* parent) {
  const auto* entry = std::find_if(std::begin(Table), std::end(Table), [&](const Entry& row) {
    return row.dialogClass == dialog.ClassName();
  });
  if (entry == std::end(Table)) return {};
  PlacedPane placed{entry->make(dialog, entry->subject, parent), {}};
  if (placed.pane == nullptr) return {};
  for (const std::string_view name : {entry->first, entry->last})
    if (const host::Control* control = dialog.FindControl(name))
      placed.beside.push_back(control->id());
  return placed;
}

}  // namespace editor
