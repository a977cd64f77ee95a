#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "host/time/date_time.h"

// How a calendar tells the type of each day: a string of 366 digits, one a day slot. Slots are
// fixed and know no common years: slot 0 is 1 January, 59 is 29 February, 60 is 1 March, 365 is 31
// December.

namespace lamp {

constexpr std::size_t YearSlots = 366;
/// What a slot without a day, or without a known type, holds.
constexpr char16_t DefaultDayType = u'0';

/// The twelve months that a calendar covers, both days included.
struct CalendarSpan {
  XCDateTime first;
  XCDateTime last;
};

/// The span that starts on the date of @p today and ends a year later less one day. From a
/// 29 February the year counts from 1 March.
CalendarSpan calendarSpan(const XCDateTime& today);

/// The slot of a valid date.
std::size_t slotOf(const XCDateTime& date);
/// The date within @p span that a slot, 0 to 365, stands for: of the start year from the start's
/// month and day on, else of the end year. Not a valid date for 29 February of a common year.
XCDateTime dateOf(std::size_t slot, const CalendarSpan& span);

/// A year string as it is read: missing slots and characters that are no digits are day type 0, and
/// what follows the last slot is left out.
std::u16string readYear(std::u16string_view stored);

}  // namespace lamp
