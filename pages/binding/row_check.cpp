#include "pages/binding/row_check.h"

namespace lamp {
namespace {

using host::Binding;
using host::CheckVisit;
using host::RowSet;

host::ListControl& listOf(const XCBaseDlg& dialog, const RowSet& rows) {
  return dialog.List(rows.places.front().list);
}

void visit(host::ListControl& list, std::size_t row, CheckVisit visit) {
  if (visit == CheckVisit::nothing) return;
  if (visit == CheckVisit::everyRow) list.clearSelection();
  list.selectOnly(row);
}

// The row at fault becomes the selected one, so that the edits show what is wrong with it.
bool refuse(XCBaseDlg& dialog, const RowSet& rows, std::size_t row, const Binding& binding) {
  host::ListControl& list = listOf(dialog, rows);
  visit(list, row, rows.visit);
  dialog.MessageBox(binding.rule.message(*list.element(row)));
  dialog.FocusAndSelectAll(binding.control);
  return false;
}

}  // namespace

bool checkRows(XCBaseDlg& dialog, const RowSet& rows) {
  host::ListControl& list = listOf(dialog, rows);
  std::vector<std::size_t> places(rows.bindings.size());
  for (std::size_t row = 0; row < list.rowCount(); ++row)
    for (std::size_t i = 0; i < rows.bindings.size(); ++i) {
      const Binding& binding = rows.bindings[i];
      if (binding.rule && !binding.rule.accepts(*list.element(row), places[i]))
        return refuse(dialog, rows, row, binding);
    }
  if (rows.visit == CheckVisit::everyRow && list.rowCount() > 0)
    visit(list, list.rowCount() - 1, rows.visit);
  return true;
}

}  // namespace lamp
