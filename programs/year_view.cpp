#include "programs/year_view.h"

#include <algorithm>

#include "host/resources/texts.h"
#include "programs/day_types.h"

namespace lamp {
namespace {

using host::TextId;

constexpr int MonthCount = 12;
constexpr int WeekdayCount = 7;

// The bit of a date's weekday: Monday 0 to Sunday 6.
int weekdayBit(const XCDateTime& date) {
  return (date.DayOfWeek() + 5) % WeekdayCount;
}

bool isDigit(char16_t c) {
  return c >= u'0' && c <= u'9';
}

}  // namespace

void YearView::initialise() {
  for (int month = 0; month < MonthCount; ++month)
    view_.SetMonthName(month, XCLoadString(host::textNumber(TextId::January) + month));
  for (int day = 0; day < WeekdayCount; ++day)
    view_.SetWeekdayName(day, XCLoadString(host::textNumber(TextId::Monday) + day));
  view_.SetMinYear(span_.first.Year());
  view_.SetMaxYear(span_.last.Year());
  view_.Disable(XCDateTime(span_.first.Year(), 1, 1), span_.first.AddDays(-1));
  view_.Disable(span_.last.AddDays(1), XCDateTime(span_.last.Year(), 12, 31));
  view_.SetDisableUnselect(true);
}

void YearView::apply(std::u16string_view stored) {
  const std::u16string digits = readYear(stored);
  for (std::size_t slot = 0; slot < YearSlots; ++slot) {
    const XCDateTime date = dateOf(slot, span_);
    if (date.isValidDate()) view_.SelectDay(date, dayType(digits[slot] - u'0'));
  }
}

std::u16string YearView::year() const {
  std::u16string digits(YearSlots, DefaultDayType);
  for (XCDateTime date = span_.first; date <= span_.last; date = date.AddDays(1)) {
    const XCCalendar::DayType* type = view_.TypeOf(date);
    if (type != nullptr && !type->id.IsEmpty() && isDigit(type->id[0]))
      digits[slotOf(date)] = type->id[0];
  }
  return digits;
}

void YearView::choosePaint(int dayTypeNumber) {
  const XCCalendar::DayType type = dayType(dayTypeNumber);
  view_.SetSelType(type.colour, type.id, type.name);
}

CalendarSpan YearView::shownPart() const {
  if (view_.ShownYear() != span_.first.Year())
    return {XCDateTime(span_.last.Year(), 1, 1), span_.last};
  return {span_.first, std::min(span_.last, XCDateTime(span_.first.Year(), 12, 31))};
}

void YearView::paint(unsigned months, unsigned weekdays, int dayTypeNumber) {
  const XCCalendar::DayType type = dayType(dayTypeNumber);
  const CalendarSpan part = shownPart();
  for (XCDateTime date = part.first; date <= part.last; date = date.AddDays(1))
    if ((months >> (date.Month() - 1) & 1U) != 0 && (weekdays >> weekdayBit(date) & 1U) != 0)
      view_.SelectDay(date, type);
}

}  // namespace lamp
