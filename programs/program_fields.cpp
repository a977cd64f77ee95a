#include "programs/program_fields.h"

#include <algorithm>
#include <string>

#include "pages/binding/row_page.h"
#include "programs/program_values.h"

namespace lamp {
namespace {

using host::Binding;
using host::TextId;
namespace layout = host::layout;

constexpr std::u16string_view ClockMask = u"DD DD";
constexpr std::u16string_view ClockLayout = u"__:__";
constexpr char16_t EmptyPlace = u'0';
constexpr std::u16string_view ValidCharacters = u"1234567890";

/// The controls of one step, in the order of their ids.
enum Part { Box, TimeLabel, Time, PowerLabel, Power, PartCount };

int idOf(int firstId, int step, Part part) {
  return firstId + (step - 1) * PartCount + part;
}

void takeStarts(host::EditControl& edit, int limit) {
  edit.setLimit(limit);
  edit.setDigitsOnly(false);
  edit.setMask({ClockMask, ClockLayout, EmptyPlace, ValidCharacters});
}

}  // namespace

std::vector<Binding> ProgramFields::values(ProgramKind kind, int firstId) {
  std::vector<Binding> values = programValues(kind);
  for (int step = 1; step <= ProgramSteps; ++step) {
    Binding& time = values[timeColumn(step) - 1];
    time.label = idOf(firstId, step, TimeLabel);
    time.control = idOf(firstId, step, Time);
    Binding& power = values[powerColumn(step) - 1];
    power.label = idOf(firstId, step, PowerLabel);
    power.control = idOf(firstId, step, Power);
  }
  return values;
}

// For both kinds: initialise() makes what differs.
std::vector<host::ControlSpec> ProgramFields::controls(int firstId) {
  const std::vector<Binding> fields = values(ProgramKind::interval, firstId);
  std::vector<host::ControlSpec> specs;
  for (int step = 1; step <= ProgramSteps; ++step) {
    const std::string number = std::to_string(step);
    specs.push_back(host::group(idOf(firstId, step, Box), "step" + number, TextId::Period));
    specs.push_back(host::label(idOf(firstId, step, TimeLabel), "timeLabel" + number));
    specs.push_back(controlOf(fields[timeColumn(step) - 1]));
    specs.push_back(host::label(idOf(firstId, step, PowerLabel), "powerLabel" + number));
    specs.push_back(controlOf(fields[powerColumn(step) - 1]));
  }
  return specs;
}

host::LayoutItem ProgramFields::arrangement(int firstId) {
  const auto frame = [firstId](int step) {
    return layout::box(
        idOf(firstId, step, Box),
        {XCHoritzontalLayout(
            {layout::labelled(idOf(firstId, step, TimeLabel), idOf(firstId, step, Time), 1),
             layout::labelled(idOf(firstId, step, PowerLabel), idOf(firstId, step, Power), 1)})},
        1);
  };
  return XCVerticalLayout(
      {XCHoritzontalLayout({frame(1), frame(2)}), XCHoritzontalLayout({frame(3), frame(4)})});
}

ProgramFields::ProgramFields(XCBaseDlg& dialog, const host::RowSet& rows)
    : dialog_(dialog),
      values_(rows.bindings),
      rows_(dialog, rows.places.front().list, rows.bindings) {}

void ProgramFields::initialise() {
  showCaptions(dialog_, values_);
  const int firstId = values_.front().label - TimeLabel;
  for (int step = 1; step <= ProgramSteps; ++step)
    dialog_.SetDlgItemText(idOf(firstId, step, Box),
                           values_[timeColumn(step) - 1].frame.toString());
  for (const Binding& value : values_) {
    if (value.kind == host::ValueKind::time) takeStarts(dialog_.Edit(value.control), value.limit);
    if (value.owner == host::ValueOwner::controller)
      dialog_.GetDlgItem(value.control)
          .setEnabled(false, XCLoadString(TextId::FirstStepWithoutTime));
  }
}

std::size_t ProgramFields::columnOf(int editId) const {
  const auto found = std::find_if(values_.begin(), values_.end(), [editId](const Binding& value) {
    return value.control == editId;
  });
  return static_cast<std::size_t>(found - values_.begin()) + 1;
}

std::vector<XCBasicString> ProgramFields::texts() const {
  std::vector<XCBasicString> texts;
  for (const Binding& value : values_) texts.push_back(dialog_.GetDlgItemText(value.control));
  return texts;
}

}  // namespace lamp
