#include "programs/calendar_table.h"

#include "programs/calendar_names.h"
#include "programs/day_types.h"
#include "programs/program_values.h"

namespace lamp {
namespace {

using host::TextId;
using Node = XmlDocument::XmlNode;

const host::XmlName Date("date");
const host::XmlName At("at");
const host::XmlName DayTypeNumber("dayType");

host::RowSet dateRows(int yearControl) {
  return {.places = {{}},
          .isRow = [](const Node& child) { return child.TagName() == Date; },
          .identity = [](const Node& date) { return date.getAttribute(At); },
          .bindings = {{.name = std::string(DayTypeNumber.text()),
                        .attributes = {DayTypeNumber},
                        .caption = {TextId::DayType},
                        .kind = host::ValueKind::number,
                        .control = yearControl,
                        .controlName = "year"}}};
}

void addDates(Node& section, const std::u16string& year, const CalendarSpan& span) {
  for (XCDateTime day = span.first; day <= span.last; day = day.AddDays(1)) {
    Node& date = section.NewChild(Date);
    date.setAttribute(At,
                      XCBasicString::Format(u"%04d-%02d-%02d", day.Year(), day.Month(), day.Day()));
    date.setAttribute(DayTypeNumber, std::u16string_view(&year[slotOf(day)], 1));
  }
}

}  // namespace

host::PageDescription calendarTable(ProgramKind kind, const CalendarControls& controls) {
  host::PageDescription page;
  page.fields = {{.name = std::string(calendar::Calendar.text()),
                  .attributes = {calendar::Calendar},
                  .caption = {TextId::Name},
                  .control = controls.name,
                  .label = controls.nameLabel,
                  .controlName = "name"}};
  page.rows = {dayTypeRows(programValues(kind)), dateRows(controls.year)};
  return page;
}

XmlDocument describedCalendar(const Node& calendar, const std::optional<XCBasicString>& assigned,
                              const CalendarSpan& span) {
  XmlDocument section(calendar::Calendar);
  Node& root = *section.Root();
  if (assigned) root.setAttribute(calendar::Calendar, *assigned);
  if (const Node* days = calendar.Node(calendar::Days.text())) copyPrograms(*days, root);
  addDates(root, readYear(calendar.Value(calendar::Year)), span);
  return section;
}

}  // namespace lamp
