#pragma once

#include <cstdint>

#include "host/export.h"
#include "host/text/basic_string.h"

/// A local date and time of the proleptic Gregorian calendar, to the second. It may hold an
/// impossible date, which isValidDate tells.
class HOST_API XCDateTime {
 public:
  XCDateTime() = default;
  XCDateTime(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
    SetDateTime(year, month, day, hour, minute, second);
  }

  /// The host's local time now, from the clock that the program installed.
  static XCDateTime LTC();

  /// Day, month and year separated by @p dateSeparator, then, unless @p dateOnly, a blank and
  /// hour, minute and second separated by @p timeSeparator: two digits each, four for the year.
  /// @p style 1 is day first, the only style that the host has.
  XCBasicString GetDateTime(int style, bool dateOnly, std::u16string_view dateSeparator,
                            std::u16string_view timeSeparator) const;

  /// Reads "day/month/year hour:minute:second" (style 1); any single character may stand between
  /// day, month and year, @p timeSeparator between hour, minute and second. A text of another form
  /// gives an invalid date. Returns isValidDate().
  bool SetDateTime(std::u16string_view text, int style, char16_t timeSeparator);
  void SetDate(int year, int month, int day) { SetDateTime(year, month, day, 0, 0, 0); }
  void SetDateTime(int year, int month, int day, int hour, int minute, int second);

  int Year() const { return year_; }
  int Month() const { return month_; }
  int Day() const { return day_; }
  int Hour() const { return hour_; }
  int Minute() const { return minute_; }
  int Second() const { return second_; }

  /// 1 = Sunday to 7 = Saturday; 0 for an invalid date.
  int DayOfWeek() const;
  /// Year 1 to 9999, an existing month and day, hour 0 to 23, minute and second 0 to 59.
  bool isValidDate() const;

  /// Days since 1 January 1970, negative before it. For valid dates.
  std::int64_t DayNumber() const;
  /// The same time of day @p days later (earlier when negative).
  XCDateTime AddDays(std::int64_t days) const;

  friend bool operator==(const XCDateTime&, const XCDateTime&) = default;
  friend auto operator<=>(const XCDateTime&, const XCDateTime&) = default;

 private:
  int year_ = 0;
  int month_ = 0;
  int day_ = 0;
  int hour_ = 0;
  int minute_ = 0;
  int second_ = 0;
};
