#include "programs/program_fields.h"

#include <string>

namespace lamp {
namespace {

using host::TextId;
using Node = XmlDocument::XmlNode;
namespace layout = host::layout;

constexpr std::u16string_view ClockMask = u"DD DD";
constexpr std::u16string_view ClockLayout = u"__:__";
constexpr char16_t EmptyPlace = u'0';
constexpr std::u16string_view ValidCharacters = u"1234567890";
constexpr int ClockLimit = 5;
constexpr int NumberLimit = 3;

/// The controls of one step, in the order of their ids.
enum Part { Box, TimeLabel, Time, PowerLabel, Power, PartCount };

int idOf(int firstId, int step, Part part) {
  return firstId + (step - 1) * PartCount + part;
}

std::vector<RowField> rowFields(int firstId, ProgramKind kind) {
  std::vector<RowField> fields;
  for (int step = 1; step <= ProgramSteps; ++step) {
    if (kind == ProgramKind::interval)
      fields.push_back({idOf(firstId, step, Time), durationAttribute(step)});
    else
      fields.push_back({idOf(firstId, step, Time), std::nullopt,
                        [step](const Node& row) { return stepTime(row, ProgramKind::clock, step); },
                        [step](Node& row, const XCBasicString& text) {
                          setStepTime(row, ProgramKind::clock, step, text);
                        }});
    fields.push_back({idOf(firstId, step, Power), powerAttribute(step)});
  }
  return fields;
}

}  // namespace

ProgramFields::ProgramFields(XCBaseDlg& dialog, int listId, int firstId, ProgramKind kind)
    : dialog_(dialog),
      firstId_(firstId),
      kind_(kind),
      rows_(dialog, listId, rowFields(firstId, kind)) {}

std::vector<host::ControlSpec> ProgramFields::controls(int firstId) {
  std::vector<host::ControlSpec> specs;
  for (int step = 1; step <= ProgramSteps; ++step) {
    const std::string number = std::to_string(step);
    specs.push_back(host::group(idOf(firstId, step, Box), "step" + number, TextId::Period));
    specs.push_back(host::label(idOf(firstId, step, TimeLabel), "timeLabel" + number));
    specs.push_back(host::digitsEdit(idOf(firstId, step, Time), "time" + number, NumberLimit));
    specs.push_back(host::label(idOf(firstId, step, PowerLabel), "powerLabel" + number));
    specs.push_back(host::digitsEdit(idOf(firstId, step, Power), "power" + number, NumberLimit));
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

void ProgramFields::initialise() {
  const bool clock = kind_ == ProgramKind::clock;
  const XCBasicString timeCaption =
      clock ? XCLoadString(TextId::StartTime)
            : XCLoadString(TextId::Time) + u" (" + XCLoadString(TextId::MinutesUnit) + u")";
  for (int step = 1; step <= ProgramSteps; ++step) {
    dialog_.SetDlgItemText(idOf(firstId_, step, Box),
                           XCLoadString(TextId::Period) + u" " + host::decimal(step));
    dialog_.SetDlgItemText(idOf(firstId_, step, TimeLabel), timeCaption);
    dialog_.SetDlgItemText(idOf(firstId_, step, PowerLabel), XCLoadString(TextId::Power) + u" (%)");
    if (!clock) continue;
    host::EditControl& time = dialog_.Edit(idOf(firstId_, step, Time));
    time.setLimit(ClockLimit);
    time.setDigitsOnly(false);
    time.setMask({ClockMask, ClockLayout, EmptyPlace, ValidCharacters});
  }
  if (clock)
    dialog_.GetDlgItem(idOf(firstId_, 1, Time))
        .setEnabled(false, XCLoadString(TextId::FirstStepWithoutTime));
}

std::size_t ProgramFields::columnOf(int editId) const {
  const int step = (editId - firstId_) / PartCount + 1;
  return editId == idOf(firstId_, step, Time) ? timeColumn(step) : powerColumn(step);
}

std::vector<XCBasicString> ProgramFields::texts() const {
  std::vector<XCBasicString> texts;
  for (int step = 1; step <= ProgramSteps; ++step)
    for (const Part part : {Time, Power})
      texts.push_back(dialog_.GetDlgItemText(idOf(firstId_, step, part)));
  return texts;
}

ProgramFields::Fault ProgramFields::outOfRange(int labelId, int editId, int highest) const {
  return {editId, XCBasicString::Format(XCLoadString(TextId::ValueOutOfRange),
                                        dialog_.GetDlgItemText(labelId), 0, highest)};
}

ProgramFields::Wrong ProgramFields::wrongIn(const Node& owner, int step, StepPlaces& places) const {
  const auto beyond = [](int number, int highest) { return number < 0 || number > highest; };
  if (kind_ == ProgramKind::interval) {
    if (owner.attribute(durationAttribute(step), places.duration).empty()) return Wrong::duration;
  } else if (step > 1) {  // the first step's start is not sent, so that it may hold anything
    if (beyond(stepHour(owner, step, places), HighestHour)) return Wrong::hour;
    if (beyond(stepMinute(owner, step, places), HighestMinute)) return Wrong::minute;
  }
  const host::XmlText power = owner.attribute(powerAttribute(step), places.power);
  return power.empty() || power.toInt() > HighestPower ? Wrong::power : Wrong::nothing;
}

ProgramFields::Fault ProgramFields::faultOf(Wrong wrong, int step) const {
  const int time = idOf(firstId_, step, Time);
  if (wrong == Wrong::duration) return {time, XCLoadString(TextId::FieldInvalid)};
  if (wrong == Wrong::power)
    return outOfRange(idOf(firstId_, step, PowerLabel), idOf(firstId_, step, Power), HighestPower);
  return outOfRange(idOf(firstId_, step, TimeLabel), time,
                    wrong == Wrong::hour ? HighestHour : HighestMinute);
}

std::optional<ProgramFields::Fault> ProgramFields::firstFault(const Node& owner,
                                                              Places& places) const {
  for (int step = 1; step <= ProgramSteps; ++step) {
    const Wrong wrong = wrongIn(owner, step, places[static_cast<std::size_t>(step - 1)]);
    if (wrong != Wrong::nothing) return faultOf(wrong, step);
  }
  return std::nullopt;
}

// The handlers of the selection run, also where the row is the only selected one already.
void ProgramFields::selectAfresh(std::size_t row) {
  rows_.list().clearSelection();
  rows_.list().selectOnly(row);
}

bool ProgramFields::validate() {
  const host::ListControl& rows = rows_.list();
  Places places;
  for (std::size_t row = 0; row < rows.rowCount(); ++row) {
    const Node* owner = rows.element(row);
    const std::optional<Fault> fault = owner == nullptr ? std::nullopt : firstFault(*owner, places);
    if (!fault) continue;
    selectAfresh(row);
    dialog_.MessageBox(fault->message);
    dialog_.FocusAndSelectAll(fault->editId);
    return false;
  }
  if (rows.rowCount() > 0) selectAfresh(rows.rowCount() - 1);
  return true;
}

}  // namespace lamp
