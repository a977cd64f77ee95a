#pragma once

#include <string>
#include <string_view>

#include "host/ui/controls/calendar_control.h"
#include "programs/calendar_year.h"

namespace lamp {

/// A calendar's span in the host's year view: which days can be painted, and the year string that
/// they make.
class YearView {
 public:
  /// @p view must outlive this.
  YearView(XCCalendar& view, const CalendarSpan& span) : view_(view), span_(span) {}

  /// Names months and weekdays, shows the years of the span, and takes all days outside of it out
  /// of use. Painting never clears a day.
  void initialise();

  /// Paints every day of the span with the type that a stored year string gives it.
  void apply(std::u16string_view stored);
  /// The year string of what is painted; a slot without a day in the span is "0".
  std::u16string year() const;

  /// What a click on a day paints from now on.
  void choosePaint(int dayTypeNumber);

  /// The part of the span that lies in the year that is shown.
  CalendarSpan shownPart() const;
  /// Paints the days of the shown part whose month (January is bit 0) and weekday (Monday is bit 0)
  /// are both among the given ones.
  void paint(unsigned months, unsigned weekdays, int dayTypeNumber);

 private:
  XCCalendar& view_;
  CalendarSpan span_;
};

}  // namespace lamp
