#include "host/time/date_time.h"

#include <gtest/gtest.h>

#include "tests/support/dialog_driver.h"
#include "tests/support/printers.h"

namespace {

bool isLeapYear(int year) {
  return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

int daysIn(int year, int month) {
  constexpr int Days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return month == 2 && isLeapYear(year) ? 29 : Days[month - 1];
}

TEST(DateTime, ExactlyTheDaysOfTheCalendarAreValid) {
  for (int year = 1895; year <= 2105; ++year)
    for (int month = -1; month <= 14; ++month)
      for (int day = -1; day <= 33; ++day) {
        const bool exists = month >= 1 && month <= 12 && day >= 1 && day <= daysIn(year, month);
        ASSERT_EQ(XCDateTime(year, month, day).isValidDate(), exists)
            << year << "-" << month << "-" << day;
      }
}

TEST(DateTime, YearsAndTimesOfDayHaveLimits) {
  EXPECT_TRUE(XCDateTime(1, 1, 1).isValidDate());
  EXPECT_FALSE(XCDateTime(0, 1, 1).isValidDate());
  EXPECT_FALSE(XCDateTime(-5, 1, 1).isValidDate());
  EXPECT_TRUE(XCDateTime(9999, 12, 31, 23, 59, 59).isValidDate());
  EXPECT_FALSE(XCDateTime(10000, 1, 1).isValidDate());
  EXPECT_FALSE(XCDateTime().isValidDate());
  struct Row {
    int hour, minute, second;
    bool valid;
  };
  const Row rows[] = {{0, 0, 0, true},   {23, 59, 59, true}, {24, 0, 0, false}, {-1, 0, 0, false},
                      {0, 60, 0, false}, {0, -1, 0, false},  {0, 0, 60, false}, {0, 0, -1, false}};
  for (const Row& row : rows)
    EXPECT_EQ(XCDateTime(2025, 1, 1, row.hour, row.minute, row.second).isValidDate(), row.valid)
        << row.hour << ":" << row.minute << ":" << row.second;
}

TEST(DateTime, LeapYearsAreThoseOfTheGregorianCalendar) {
  EXPECT_TRUE(XCDateTime(2000, 2, 29).isValidDate());
  EXPECT_TRUE(XCDateTime(2024, 2, 29).isValidDate());
  EXPECT_FALSE(XCDateTime(1900, 2, 29).isValidDate());
  EXPECT_FALSE(XCDateTime(2100, 2, 29).isValidDate());
  EXPECT_FALSE(XCDateTime(2025, 2, 29).isValidDate());
}

// The weekday by Sakamoto's congruence, which shares nothing with the implementation: 0 = Sunday.
int weekdayByCongruence(int year, int month, int day) {
  constexpr int Terms[] = {0, 3, 2, 5, 0, 3, 5, 1, 4, 6, 2, 4};
  if (month < 3) --year;
  return (year + year / 4 - year / 100 + year / 400 + Terms[month - 1] + day) % 7;
}

TEST(DateTime, EveryDayHasItsWeekdayAndItsNumber) {
  std::int64_t number = XCDateTime(1899, 12, 31).DayNumber();
  for (int year = 1900; year <= 2200; ++year)
    for (int month = 1; month <= 12; ++month)
      for (int day = 1; day <= daysIn(year, month); ++day) {
        const XCDateTime date(year, month, day);
        ASSERT_EQ(date.DayOfWeek(), weekdayByCongruence(year, month, day) + 1)
            << year << "-" << month << "-" << day;
        ASSERT_EQ(date.DayNumber(), ++number);
      }
}

TEST(DateTime, KnownWeekdays) {
  EXPECT_EQ(XCDateTime(2024, 3, 31).DayOfWeek(), 1) << "a Sunday";
  EXPECT_EQ(XCDateTime(2024, 10, 31).DayOfWeek(), 5) << "a Thursday";
  EXPECT_EQ(XCDateTime(2025, 3, 15).DayOfWeek(), 7) << "a Saturday";
  EXPECT_EQ(XCDateTime(2025, 2, 30).DayOfWeek(), 0) << "no day";
}

TEST(DateTime, DayNumbersCountFrom1970) {
  EXPECT_EQ(XCDateTime(1970, 1, 1).DayNumber(), 0);
  EXPECT_EQ(XCDateTime(1969, 12, 31).DayNumber(), -1);
  EXPECT_EQ(XCDateTime(2000, 3, 1).DayNumber(), 11017);
}

TEST(DateTime, AddDaysKeepsTheTimeOfDay) {
  const XCDateTime date(2024, 2, 28, 12, 30, 15);
  EXPECT_EQ(date.AddDays(1), XCDateTime(2024, 2, 29, 12, 30, 15));
  EXPECT_EQ(date.AddDays(2), XCDateTime(2024, 3, 1, 12, 30, 15));
  EXPECT_EQ(date.AddDays(-59), XCDateTime(2023, 12, 31, 12, 30, 15));
  EXPECT_EQ(date.AddDays(0), date);
  EXPECT_EQ(XCDateTime(2024, 1, 1).AddDays(366), XCDateTime(2025, 1, 1));
  EXPECT_FALSE(XCDateTime(9999, 12, 31).AddDays(1).isValidDate());
  EXPECT_FALSE(XCDateTime(1, 1, 1).AddDays(-1).isValidDate());
}

TEST(DateTime, OrdersByMoment) {
  const XCDateTime ordered[] = {
      {2024, 12, 31, 23, 59, 59}, {2025, 1, 1}, {2025, 1, 1, 0, 0, 1}, {2025, 1, 1, 0, 1, 0},
      {2025, 1, 1, 1, 0, 0},      {2025, 1, 2}, {2025, 2, 1},          {2026, 1, 1}};
  for (std::size_t i = 0; i + 1 < std::size(ordered); ++i) {
    EXPECT_LT(ordered[i], ordered[i + 1]) << i;
    EXPECT_FALSE(ordered[i + 1] < ordered[i]) << i;
  }
}

TEST(DateTime, WritesDayFirst) {
  const XCDateTime date(2024, 7, 5, 1, 2, 3);
  EXPECT_EQ(date.GetDateTime(1, false, u"/", u":"), u"05/07/2024 01:02:03");
  EXPECT_EQ(date.GetDateTime(1, true, u"/", u":"), u"05/07/2024");
  EXPECT_EQ(date.GetDateTime(1, false, u"-", u"."), u"05-07-2024 01.02.03");
  EXPECT_EQ(XCDateTime(33, 1, 1).GetDateTime(1, true, u"/", u":"), u"01/01/0033");
}

TEST(DateTime, ReadsWhatItWrites) {
  XCDateTime read;
  EXPECT_TRUE(read.SetDateTime(u"15/07/2024 10:30:59", 1, u':'));
  EXPECT_EQ(read, XCDateTime(2024, 7, 15, 10, 30, 59));
  EXPECT_TRUE(read.SetDateTime(u"15-07.2024 10.30.59", 1, u'.'));
  EXPECT_EQ(read, XCDateTime(2024, 7, 15, 10, 30, 59));
}

TEST(DateTime, ATextOfAnotherFormIsNoDate) {
  const char16_t* const texts[] = {u"",
                                   u"15/07/2024",
                                   u"15/07/2024 10:30",
                                   u"15/07/2024 10:30:5",
                                   u"15/07/2024 10:30:590",
                                   u"15/07/2024 10:30:59 ",
                                   u" 15/07/2024 10:30:59",
                                   u"5/7/2024 10:30:59",
                                   u"15/07/24 10:30:59",
                                   u"15/07/2024T10:30:59",
                                   u"15/07/2024 10-30-59",
                                   u"1507/2024 10:30:590",
                                   u"15/07/2024 1a:30:59",
                                   u"31/02/2024 00:00:00",
                                   u"00/01/2024 00:00:00",
                                   u"01/13/2024 00:00:00",
                                   u"01/01/0000 00:00:00",
                                   u"01/01/2024 24:00:00",
                                   u"\uFF11\uFF15/07/2024 10:30:59"};
  for (const char16_t* text : texts) {
    XCDateTime read(2020, 1, 1);
    EXPECT_FALSE(read.SetDateTime(text, 1, u':')) << XCBasicString(text).ToUtf8();
    EXPECT_FALSE(read.isValidDate()) << XCBasicString(text).ToUtf8();
  }
}

TEST(DateTime, NowIsWhatTheInstalledClockSays) {
  support::DialogDriver driver;
  EXPECT_EQ(XCDateTime::LTC(), XCDateTime(2025, 3, 15, 10, 0, 0));
  driver.clock().set({2031, 1, 2, 3, 4, 5});
  EXPECT_EQ(XCDateTime::LTC(), XCDateTime(2031, 1, 2, 3, 4, 5));
}

}  // namespace
