#include "programs/program_values.h"

#include <string>
#include <utility>

#include "pages/binding/value_rules.h"

namespace lamp {
namespace {

using host::Binding;
using host::TextId;
using host::ValueKind;
using Node = XmlDocument::XmlNode;

constexpr int NumberLimit = 3;
constexpr int ClockLimit = 5;  // "22:15"
constexpr int HighestHour = 23;
constexpr int HighestMinute = 59;

constexpr host::Caption StartCaption{.text = TextId::StartTime};
constexpr host::Caption DurationCaption{.text = TextId::Time, .unit = TextId::MinutesUnit};

bool isUpTo(host::XmlText text, int highest) {
  const int number = text.toInt();
  return number >= 0 && number <= highest;
}

host::ValueRule startInDay(int step) {
  const host::XmlName hour = hourAttribute(step);
  const host::XmlName minute = minuteAttribute(step);
  return {[hour, minute](const Node& owner, std::size_t& place) {
            if (!isUpTo(owner.attribute(hour, place), HighestHour)) return false;
            std::size_t behind = place + 1;  // where a minute mostly stands
            return isUpTo(owner.attribute(minute, behind), HighestMinute);
          },
          [hour](const Node& owner) {
            const bool hourIsGood = isUpTo(owner.attribute(hour), HighestHour);
            return outOfRange(StartCaption, 0, hourIsGood ? HighestMinute : HighestHour);
          }};
}

std::string timeName(int step) {
  return "time" + std::to_string(step);
}

Binding startOf(int step) {
  Binding start{.name = timeName(step),
                .attributes = {hourAttribute(step), minuteAttribute(step)},
                .caption = StartCaption,
                .kind = ValueKind::time,
                .limit = ClockLimit};
  start.read = [step](const Node& owner) { return stepTime(owner, ProgramKind::clock, step); };
  start.write = [step](Node& owner, const XCBasicString& text) {
    setStepTime(owner, ProgramKind::clock, step, text);
  };
  // The first step begins when the lamp switches on; a start that is reported of it is not sent.
  if (step == 1)
    start.owner = host::ValueOwner::controller;
  else
    start.rule = startInDay(step);
  return start;
}

Binding durationOf(int step) {
  return {.name = timeName(step),
          .attributes = {durationAttribute(step)},
          .caption = DurationCaption,
          .kind = ValueKind::number,
          .limit = NumberLimit,
          .rule = notEmpty(durationAttribute(step))};
}

Binding powerOf(int step) {
  return {.name = "power" + std::to_string(step),
          .attributes = {powerAttribute(step)},
          .caption = PowerCaption,
          .kind = ValueKind::number,
          .limit = NumberLimit,
          .rule = powerInPercent(powerAttribute(step))};
}

Binding inStep(int step, Binding value, std::size_t column) {
  value.frame = {.text = TextId::Period, .number = step};
  value.column = programCaption(column);
  return value;
}

}  // namespace

std::vector<Binding> programValues(ProgramKind kind) {
  std::vector<Binding> values;
  for (int step = 1; step <= ProgramSteps; ++step) {
    Binding time = kind == ProgramKind::clock ? startOf(step) : durationOf(step);
    values.push_back(inStep(step, std::move(time), timeColumn(step)));
    values.push_back(inStep(step, powerOf(step), powerColumn(step)));
  }
  return values;
}

}  // namespace lamp
