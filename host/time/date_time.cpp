#include "host/time/date_time.h"

#include <chrono>

#include "host/services/services.h"

namespace {

std::chrono::sys_days toDays(const XCDateTime& date) {
  return std::chrono::year(date.Year()) / std::chrono::month(static_cast<unsigned>(date.Month())) /
         std::chrono::day(static_cast<unsigned>(date.Day()));
}

// Reads exactly @p digits digits at @p at; false when one is missing.
bool readDigits(std::u16string_view text, std::size_t& at, int digits, int& value) {
  value = 0;
  for (int i = 0; i < digits; ++i, ++at) {
    if (at >= text.size() || text[at] < u'0' || text[at] > u'9') return false;
    value = value * 10 + (text[at] - u'0');
  }
  return true;
}

}  // namespace

XCDateTime XCDateTime::LTC() {
  return host::services().clock().now();
}

XCBasicString XCDateTime::GetDateTime(int, bool dateOnly, std::u16string_view dateSeparator,
                                      std::u16string_view timeSeparator) const {
  const XCBasicString date =
      XCBasicString::Format(u"%02d%s%02d%s%04d", day_, dateSeparator, month_, dateSeparator, year_);
  if (dateOnly) return date;
  return XCBasicString::Format(u"%s %02d%s%02d%s%02d", date, hour_, timeSeparator, minute_,
                               timeSeparator, second_);
}

bool XCDateTime::SetDateTime(std::u16string_view text, int, char16_t timeSeparator) {
  *this = {};
  std::size_t at = 0;
  int field[6] = {};
  constexpr int Digits[6] = {2, 2, 4, 2, 2, 2};
  for (int i = 0; i < 6; ++i) {
    if (!readDigits(text, at, Digits[i], field[i])) return false;
    if (i == 5) break;
    const char16_t separator = at < text.size() ? text[at++] : u'\0';
    if (i == 2 && separator != u' ') return false;
    if (i > 2 && separator != timeSeparator) return false;
    if (i < 2 && (separator == u'\0' || (separator >= u'0' && separator <= u'9'))) return false;
  }
  if (at != text.size()) return false;
  SetDateTime(field[2], field[1], field[0], field[3], field[4], field[5]);
  return isValidDate();
}

void XCDateTime::SetDateTime(int year, int month, int day, int hour, int minute, int second) {
  year_ = year;
  month_ = month;
  day_ = day;
  hour_ = hour;
  minute_ = minute;
  second_ = second;
}

bool XCDateTime::isValidDate() const {
  const auto within = [](int value, int least, int most) {
    return value >= least && value <= most;
  };
  if (!within(year_, 1, 9999) || !within(month_, 1, 12) || !within(day_, 1, 31)) return false;
  const auto date = std::chrono::year(year_) / std::chrono::month(static_cast<unsigned>(month_)) /
                    std::chrono::day(static_cast<unsigned>(day_));
  return date.ok() && within(hour_, 0, 23) && within(minute_, 0, 59) && within(second_, 0, 59);
}

int XCDateTime::DayOfWeek() const {
  if (!isValidDate()) return 0;
  return static_cast<int>(std::chrono::weekday(toDays(*this)).c_encoding()) + 1;
}

std::int64_t XCDateTime::DayNumber() const {
  return toDays(*this).time_since_epoch().count();
}

XCDateTime XCDateTime::AddDays(std::int64_t days) const {
  const std::chrono::year_month_day date = toDays(*this) + std::chrono::days(days);
  return {static_cast<int>(date.year()),
          static_cast<int>(static_cast<unsigned>(date.month())),
          static_cast<int>(static_cast<unsigned>(date.day())),
          hour_,
          minute_,
          second_};
}
