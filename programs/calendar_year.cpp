#include "programs/calendar_year.h"

#include <algorithm>
#include <array>
#include <tuple>

namespace lamp {
namespace {

// February always counts as 29 days.
constexpr std::array<int, 12> MonthLengths = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};

}  // namespace

CalendarSpan calendarSpan(const XCDateTime& today) {
  XCDateTime nextYear(today.Year() + 1, today.Month(), today.Day());
  if (!nextYear.isValidDate()) nextYear.SetDate(today.Year() + 1, 3, 1);
  return {XCDateTime(today.Year(), today.Month(), today.Day()), nextYear.AddDays(-1)};
}

std::size_t slotOf(const XCDateTime& date) {
  int slot = date.Day() - 1;
  for (int month = 1; month < date.Month(); ++month)
    slot += MonthLengths[static_cast<std::size_t>(month - 1)];
  return static_cast<std::size_t>(slot);
}

XCDateTime dateOf(std::size_t slot, const CalendarSpan& span) {
  int day = static_cast<int>(slot) + 1;
  int month = 1;
  for (; month < 12 && day > MonthLengths[static_cast<std::size_t>(month - 1)]; ++month)
    day -= MonthLengths[static_cast<std::size_t>(month - 1)];
  const bool inStartYear =
      std::tuple(month, day) >= std::tuple(span.first.Month(), span.first.Day());
  return {(inStartYear ? span.first : span.last).Year(), month, day};
}

std::u16string readYear(std::u16string_view stored) {
  std::u16string year(stored.substr(0, YearSlots));
  year.resize(YearSlots, DefaultDayType);
  std::replace_if(
      year.begin(), year.end(), [](char16_t c) { return c < u'0' || c > u'9'; }, DefaultDayType);
  return year;
}

}  // namespace lamp
