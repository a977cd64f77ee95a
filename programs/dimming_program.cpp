#include "programs/dimming_program.h"

#include <array>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string>
#include <utility>

#include "exchange/sections.h"

namespace lamp {
namespace {

using Node = XmlDocument::XmlNode;

/// One attribute of every step, by the step's index from 0.
using StepNames = std::array<host::XmlName, ProgramSteps>;

const StepNames Times = {"time1", "time2", "time3", "time4"};
const StepNames Hours = {"hour1", "hour2", "hour3", "hour4"};
const StepNames Minutes = {"min1", "min2", "min3", "min4"};
const StepNames Powers = {"power1", "power2", "power3", "power4"};

constexpr std::array<std::u16string_view, ProgramColumns - 1> Captions = {
    u"T1", u"P1", u"T2", u"P2", u"T3", u"P3", u"T4", u"P4"};

host::XmlName nameOf(const StepNames& names, int step) {
  return names[static_cast<std::size_t>(step - 1)];
}

// The numbers that a clock program's step starts at, 0 for what is missing.
int stepHour(const Node& owner, int step) {
  return owner.attribute(nameOf(Hours, step)).toInt();
}

int stepMinute(const Node& owner, int step) {
  return owner.attribute(nameOf(Minutes, step)).toInt();
}

bool hasTwoDigits(int number) {
  return number >= 0 && number <= 99;
}

// "%02d:%02d", made by hand where both have two digits at most: lists ask for it row by row.
XCBasicString clockText(int hour, int minute) {
  if (!hasTwoDigits(hour) || !hasTwoDigits(minute))
    return XCBasicString::Format(u"%02d:%02d", hour, minute);
  const auto digit = [](int value) { return static_cast<char16_t>(u'0' + value); };
  const char16_t text[] = {digit(hour / 10), digit(hour % 10), u':', digit(minute / 10),
                           digit(minute % 10)};
  return XCBasicString(std::u16string_view(text, std::size(text)));
}

int order(int first, int second) {
  return first < second ? -1 : first > second ? 1 : 0;
}

// The order of the starts as texts. Texts of two digits each have the order of their numbers.
int compareStarts(const Node& first, const Node& second, int step) {
  const std::pair a(stepHour(first, step), stepMinute(first, step));
  const std::pair b(stepHour(second, step), stepMinute(second, step));
  if (hasTwoDigits(a.first) && hasTwoDigits(a.second) && hasTwoDigits(b.first) &&
      hasTwoDigits(b.second))
    return a < b ? -1 : b < a ? 1 : 0;
  const auto texts = clockText(a.first, a.second) <=> clockText(b.first, b.second);
  return texts < 0 ? -1 : texts > 0 ? 1 : 0;
}

int compareTimes(const Node& first, const Node& second, int step) {
  const host::XmlName time = nameOf(Times, step);
  if (!first.hasAttribute(time)) return compareStarts(first, second, step);
  return order(first.attribute(time).toInt(), second.attribute(time).toInt());
}

// A number in the order of compareTimes, for rows of the page's own kind alone: between rows of
// both kinds it has none.
std::optional<std::int64_t> timeNumber(const Node& row, ProgramKind kind, int step) {
  const host::XmlName time = nameOf(Times, step);
  if (row.hasAttribute(time) != (kind == ProgramKind::interval)) return std::nullopt;
  if (kind == ProgramKind::interval) return row.attribute(time).toInt();
  const int hour = stepHour(row, step);
  const int minute = stepMinute(row, step);
  if (!hasTwoDigits(hour) || !hasTwoDigits(minute)) return std::nullopt;
  return 100 * hour + minute;
}

std::vector<host::XmlName> attributesInOrder(ProgramKind kind) {
  std::vector<host::XmlName> names;
  for (int step = 1; step <= ProgramSteps; ++step) {
    if (kind == ProgramKind::interval) {
      names.push_back(nameOf(Times, step));
    } else if (step > 1) {
      names.push_back(nameOf(Hours, step));
      names.push_back(nameOf(Minutes, step));
    }
    names.push_back(nameOf(Powers, step));
  }
  return names;
}

int stepOf(std::size_t column) {
  return static_cast<int>(column + 1) / 2;
}

}  // namespace

XCBasicString stepTime(const Node& owner, ProgramKind kind, int step) {
  return kind == ProgramKind::clock ? clockText(stepHour(owner, step), stepMinute(owner, step))
                                    : owner.getAttribute(nameOf(Times, step));
}

void setStepTime(Node& owner, ProgramKind kind, int step, const XCBasicString& text) {
  if (kind == ProgramKind::interval) {
    owner.setAttribute(nameOf(Times, step), text);
    return;
  }
  owner.setAttribute(nameOf(Hours, step), text.Left(2));
  owner.setAttribute(nameOf(Minutes, step), text.Mid(3));
}

host::XmlName powerAttribute(int step) {
  return nameOf(Powers, step);
}

host::XmlName durationAttribute(int step) {
  return nameOf(Times, step);
}

host::XmlName hourAttribute(int step) {
  return nameOf(Hours, step);
}

host::XmlName minuteAttribute(int step) {
  return nameOf(Minutes, step);
}

const std::vector<host::XmlName>& programAttributes(ProgramKind kind) {
  return programRewrite(kind).moved;
}

const RowRewrite& programRewrite(ProgramKind kind) {
  static const RowRewrite interval{element::Interval, attributesInOrder(ProgramKind::interval)};
  // A controller may report a start of the first step, which it does not take back.
  static const RowRewrite clock{
      element::Interval, attributesInOrder(ProgramKind::clock), {Hours[0], Minutes[0]}};
  return kind == ProgramKind::clock ? clock : interval;
}

std::u16string_view programCaption(std::size_t column) {
  return Captions[column - 1];
}

std::vector<host::ListColumn> programColumns(ProgramKind kind, host::ListColumn owner) {
  std::vector<host::ListColumn> columns{std::move(owner)};
  for (std::size_t i = 1; i < ProgramColumns; ++i) {
    host::ListColumn& column = columns.emplace_back();
    const int step = stepOf(i);
    column.caption = programCaption(i);
    if (i == timeColumn(step)) {
      column.name = "time" + std::to_string(step);
      column.cell = [kind, step](const Node& row) { return stepTime(row, kind, step); };
      column.number = [kind, step](const Node& row) { return timeNumber(row, kind, step); };
    } else {
      column.attribute = powerAttribute(step);
      column.number = [power = powerAttribute(step)](const Node& row) {
        return std::optional<std::int64_t>(row.attribute(power).toInt());
      };
    }
  }
  // Of a row's own attribute the list knows the order by itself.
  for (std::size_t i = columns[0].cell ? 0 : 1; i < ProgramColumns; ++i)
    columns[i].compare = [i](const host::ListRow& first, const host::ListRow& second) {
      return compareProgramRows(first, second, i);
    };
  return columns;
}

int compareProgramRows(const host::ListRow& first, const host::ListRow& second,
                       std::size_t column) {
  if (first.element == nullptr || second.element == nullptr || column >= ProgramColumns) return 0;
  const Node& a = *first.element;
  const Node& b = *second.element;
  if (column == 0) return a.attribute(attribute::Id).compare(b.attribute(attribute::Id));
  const int step = stepOf(column);
  if (column == timeColumn(step)) return compareTimes(a, b, step);
  const host::XmlName power = powerAttribute(step);
  return order(a.attribute(power).toInt(), b.attribute(power).toInt());
}

}  // namespace lamp
