#include "host/ui/controls/calendar_control.h"

#include <algorithm>

using host::Change;
using host::Notice;

void XCCalendar::SetMonthName(int month, std::u16string_view name) {
  monthNames_.at(static_cast<std::size_t>(month)) = name;
  changed(Change::items);
}

void XCCalendar::SetWeekdayName(int weekday, std::u16string_view name) {
  weekdayNames_.at(static_cast<std::size_t>(weekday)) = name;
  changed(Change::items);
}

void XCCalendar::SetMinYear(int year) {
  minYear_ = year;
  ShowYear(year);
}

void XCCalendar::SetMaxYear(int year) {
  maxYear_ = year;
  ShowYear(shownYear_);
}

void XCCalendar::ShowYear(int year) {
  shownYear_ = std::clamp(year, minYear_, std::max(minYear_, maxYear_));
  changed(Change::items);
}

void XCCalendar::Disable(const XCDateTime& first, const XCDateTime& last) {
  if (last < first) return;
  disabled_.push_back({first.DayNumber(), last.DayNumber()});
  changed(Change::cells);
}

void XCCalendar::EnableAll() {
  disabled_.clear();
  changed(Change::cells);
}

bool XCCalendar::IsEnabledDay(const XCDateTime& date) const {
  if (!date.isValidDate() || date.Year() < minYear_ || date.Year() > maxYear_) return false;
  const std::int64_t day = date.DayNumber();
  return std::none_of(disabled_.begin(), disabled_.end(),
                      [day](const Span& span) { return day >= span.first && day <= span.last; });
}

std::optional<XCDateTime> XCCalendar::FirstEnabledDay() const {
  for (XCDateTime day(minYear_, 1, 1); day.Year() <= maxYear_; day = day.AddDays(1))
    if (IsEnabledDay(day)) return day;
  return std::nullopt;
}

std::optional<XCDateTime> XCCalendar::LastEnabledDay() const {
  for (XCDateTime day(maxYear_, 12, 31); day.Year() >= minYear_; day = day.AddDays(-1))
    if (IsEnabledDay(day)) return day;
  return std::nullopt;
}

void XCCalendar::SetSelType(host::Colour colour, std::u16string_view id, std::u16string_view name) {
  selType_ = {XCBasicString(id), colour, XCBasicString(name)};
}

void XCCalendar::SelectDay(const XCDateTime& date, const DayType& type) {
  if (!date.isValidDate()) return;
  days_[date.DayNumber()] = type;
  changed(Change::cells);
}

void XCCalendar::ClearDays() {
  days_.clear();
  changed(Change::cells);
}

const XCCalendar::DayType* XCCalendar::TypeOf(const XCDateTime& date) const {
  if (!date.isValidDate()) return nullptr;
  const auto found = days_.find(date.DayNumber());
  return found == days_.end() ? nullptr : &found->second;
}

bool XCCalendar::Paint(const XCDateTime& date) {
  if (!IsEnabledDay(date)) return false;
  const DayType* present = TypeOf(date);
  if (present != nullptr && present->id == selType_.id) {
    if (disableUnselect_) return true;
    days_.erase(date.DayNumber());
  } else {
    days_[date.DayNumber()] = selType_;
  }
  changed(Change::cells);
  notice(Notice::painted);
  return true;
}
