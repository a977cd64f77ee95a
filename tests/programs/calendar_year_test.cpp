#include "programs/calendar_year.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <optional>
#include <string>

#include "tests/support/printers.h"

// The calculation that the slots are held against counts days of the leap year 2000.

namespace {

using std::chrono::day;
using std::chrono::days;
using std::chrono::month;
using std::chrono::sys_days;
using std::chrono::year;
using std::chrono::year_month_day;

constexpr sys_days LeapYear = sys_days(year(2000) / 1 / 1);

XCDateTime hostDate(sys_days when) {
  const year_month_day date(when);
  return {int(date.year()), int(unsigned(date.month())), int(unsigned(date.day()))};
}

std::size_t countedSlot(sys_days when) {
  const year_month_day date(when);
  return std::size_t((sys_days(year(2000) / date.month() / date.day()) - LeapYear).count());
}

sys_days countedEnd(sys_days start) {
  const year_month_day date(start);
  const year_month_day next(date.year() + std::chrono::years(1), date.month(), date.day());
  return (next.ok() ? sys_days(next) : sys_days(next.year() / 3 / 1)) - days(1);
}

std::string textOf(const XCDateTime& date) {
  return date.GetDateTime(1, true, u"/", u":").ToUtf8();
}

// What is wrong with the span that starts on a day, empty when nothing is.
std::string faultOfSpan(sys_days start) {
  const lamp::CalendarSpan span = lamp::calendarSpan(hostDate(start));
  const sys_days end = countedEnd(start);
  if (span.first != hostDate(start) || span.last != hostDate(end))
    return "the span runs from " + textOf(span.first) + " to " + textOf(span.last);
  std::array<std::optional<XCDateTime>, lamp::YearSlots> dates;
  for (sys_days when = start; when <= end; when += days(1)) {
    const XCDateTime date = hostDate(when);
    if (lamp::slotOf(date) != countedSlot(when)) return "the slot of " + textOf(date);
    if (dates[countedSlot(when)]) return "two days share the slot of " + textOf(date);
    dates[countedSlot(when)] = date;
  }
  for (std::size_t slot = 0; slot < lamp::YearSlots; ++slot) {
    const XCDateTime date = lamp::dateOf(slot, span);
    if (dates[slot] ? !(date == *dates[slot]) : date.isValidDate())
      return "slot " + std::to_string(slot) + " stands for " + textOf(date);
  }
  return {};
}

TEST(CalendarYear, EveryDayOfEverySpanHasItsSlotAndEverySlotItsDay) {
  for (sys_days start = year(2024) / 1 / 1; start < sys_days(year(2033) / 1 / 1); start += days(1))
    ASSERT_EQ(faultOfSpan(start), "") << "span from " << textOf(hostDate(start));
}

TEST(CalendarYear, FixedSlots) {
  struct Case {
    int month;
    int day;
    std::size_t slot;
  };
  const Case cases[] = {{1, 1, 0},  {1, 31, 30},  {2, 1, 31},   {2, 28, 58},  {2, 29, 59},
                        {3, 1, 60}, {4, 10, 100}, {12, 1, 335}, {12, 31, 365}};
  for (const Case& one : cases)
    for (const int when : {2024, 2025, 2100})
      EXPECT_EQ(lamp::slotOf(XCDateTime(when, one.month, one.day)), one.slot);
}

TEST(CalendarYear, ASpanFromMarchHoldsJanuaryOfTheNextYear) {
  const auto span = lamp::calendarSpan(XCDateTime(2025, 3, 15, 10, 0, 0));
  EXPECT_EQ(span.first, XCDateTime(2025, 3, 15));
  EXPECT_EQ(span.last, XCDateTime(2026, 3, 14));
  EXPECT_EQ(lamp::dateOf(0, span), XCDateTime(2026, 1, 1));
  EXPECT_EQ(lamp::dateOf(100, span), XCDateTime(2025, 4, 10));
  EXPECT_EQ(lamp::dateOf(73, span), XCDateTime(2026, 3, 14));
  EXPECT_EQ(lamp::dateOf(74, span), XCDateTime(2025, 3, 15));
}

TEST(CalendarYear, SpansOverTheTwentyNinthOfFebruary) {
  struct Case {
    XCDateTime first;
    XCDateTime last;
    bool holdsLeapDay;
  };
  const Case cases[] = {
      {{2024, 2, 29}, {2025, 2, 28}, true}, {{2024, 2, 28}, {2025, 2, 27}, true},
      {{2024, 3, 1}, {2025, 2, 28}, false}, {{2023, 2, 28}, {2024, 2, 27}, false},
      {{2023, 3, 1}, {2024, 2, 29}, true},  {{2027, 3, 2}, {2028, 3, 1}, true},
      {{2028, 1, 1}, {2028, 12, 31}, true}, {{2025, 1, 1}, {2025, 12, 31}, false}};
  for (const Case& one : cases) {
    const auto span = lamp::calendarSpan(one.first);
    EXPECT_EQ(span.last, one.last);
    EXPECT_EQ(lamp::dateOf(59, span).isValidDate(), one.holdsLeapDay)
        << one.first.GetDateTime(1, true, u"/", u":").ToUtf8();
  }
}

TEST(CalendarYear, AYearStringIsReadWithWhatItHolds) {
  const std::u16string full = std::u16string(365, u'7') + u'9';
  EXPECT_EQ(lamp::readYear(full), full);
  EXPECT_EQ(lamp::readYear(std::u16string(300, u'7')),
            std::u16string(300, u'7') + std::u16string(66, u'0'));
  EXPECT_EQ(lamp::readYear(full + std::u16string(34, u'3')), full);
  EXPECT_EQ(lamp::readYear(u""), std::u16string(366, u'0'));
  EXPECT_EQ(lamp::readYear(u"1x2 3:/4\u0661-5").substr(0, 12), u"102030040050");
}

}  // namespace
