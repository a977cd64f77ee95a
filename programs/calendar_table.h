#pragma once

#include <optional>

#include "host/dialogs/page_description.h"
#include "programs/calendar_year.h"
#include "programs/dimming_program.h"

// What the calendar editor edits. It sends nothing: its sections are made to be compared, and hold
// what OK keeps of a calendar.

namespace lamp {

/// The controls of the editor that show the calendar.
struct CalendarControls {
  int year = 0;
  int name = 0;
  int nameLabel = 0;
};

/// The calendar that the controller is given, the programs of the day types by their numbers, and
/// the days by their dates.
host::PageDescription calendarTable(ProgramKind kind, const CalendarControls& controls);

/// What that table describes: the name of the calendar in the controller's element (none where it
/// has none), and the programs and the days of @p span in @p calendar.
XmlDocument describedCalendar(const XmlDocument::XmlNode& calendar,
                              const std::optional<XCBasicString>& assigned,
                              const CalendarSpan& span);

}  // namespace lamp
