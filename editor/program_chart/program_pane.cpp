#include "editor/program_chart/program_pane.h"

#include <QtWidgets/QVBoxLayout>
#include <algorithm>
#include <string>

#include "editor/program_chart/night_chart.h"

namespace editor {
namespace {

// The fields stand in the order of the columns: the time of step 1, its power, and so on.
int stepOf(std::size_t field) {
  return static_cast<int>(field / 2) + 1;
}
bool isTime(std::size_t field) {
  return field % 2 == 0;
}
std::size_t columnOf(std::size_t field) {
  return field + 1;
}

std::string nameOf(std::size_t field) {
  return (isTime(field) ? "time" : "power") + std::to_string(stepOf(field));
}

template <class ControlType>
const ControlType* findControl(const XCBaseDlg& dialog, std::string_view name) {
  return dynamic_cast<const ControlType*>(dialog.FindControl(name));
}

}  // namespace

bool ProgramPane::fits(const XCBaseDlg& dialog, std::string_view list) {
  const auto* programs = findControl<host::ListControl>(dialog, list);
  if (programs == nullptr || programs->columns().size() <= Fields) return false;
  for (std::size_t field = 0; field < Fields; ++field)
    if (findControl<host::EditControl>(dialog, nameOf(field)) == nullptr) return false;
  return true;
}

ProgramPane::ProgramPane(XCBaseDlg& dialog, std::string_view list, QWidget* parent)
    : SidePane(parent),
      list_(*findControl<host::ListControl>(dialog, list)),
      chart_(new NightChart(this)) {
  for (std::size_t field = 0; field < Fields; ++field)
    fields_[field] = findControl<host::EditControl>(dialog, nameOf(field));
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(chart_);
}

// The first step of a clock program has no time of its own; the second tells.
ProgramTimes ProgramPane::times() const {
  return fields_[2]->mask().isActive() ? ProgramTimes::clock : ProgramTimes::interval;
}

XCBasicString ProgramPane::firstCell(std::size_t field) const {
  return list_.cell(list_.selection().front(), columnOf(field));
}

// The fields are filled when other rows are selected and are typed into otherwise.
void ProgramPane::note() {
  const auto& now = list_.selection();
  otherRows_ = otherRows_ || now != selection_ ||
               (!now.empty() && list_.element(now.front()) != firstElement_);
  for (std::size_t field = 0; field < Fields; ++field)
    typed_[field] = typed_[field] || fields_[field]->text() != texts_[field];
}

void ProgramPane::follow() {
  note();
  const bool typed = std::find(typed_.begin(), typed_.end(), true) != typed_.end();
  if (otherRows_ || !takeTyped())
    readRows();
  else if (!typed)
    return;
  remember();
  chart_->setNight(NightSteps(programs_));
}

// A text that was typed stands in all selected rows, so that the first one tells what became of it.
// False when a row differs from what was read without an edit having brought it.
bool ProgramPane::takeTyped() {
  for (std::size_t field = 0; field < Fields && !selection_.empty(); ++field) {
    const XCBasicString cell = firstCell(field);
    if (!typed_[field] && cell != cells_[field]) return false;
    if (!typed_[field]) continue;
    if (isTime(field))
      programs_.setTime(stepOf(field), cell);
    else
      programs_.setPower(stepOf(field), cell);
  }
  return true;
}

void ProgramPane::readRows() {
  programs_.clear(times());
  rowsRead_ += list_.selection().size();
  for (const std::size_t row : list_.selection()) {
    LampProgram program;
    for (std::size_t step = 0; step < program.size(); ++step) {
      program[step].minutes = readStepTime(programs_.times(), list_.cell(row, columnOf(2 * step)));
      program[step].power = readPower(list_.cell(row, columnOf(2 * step + 1)));
    }
    programs_.add(program);
  }
  programs_.seal();
}

void ProgramPane::remember() {
  if (selection_ != list_.selection()) selection_ = list_.selection();
  firstElement_ = selection_.empty() ? nullptr : list_.element(selection_.front());
  for (std::size_t field = 0; field < Fields; ++field) {
    texts_[field] = fields_[field]->text();
    cells_[field] = selection_.empty() ? XCBasicString() : firstCell(field);
  }
  otherRows_ = false;
  typed_.fill(false);
}

}  // namespace editor
