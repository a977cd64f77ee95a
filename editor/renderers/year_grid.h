#pragma once

#include <QtCore/QRect>
#include <QtCore/QSize>
#include <array>
#include <optional>

#include "host/time/date_time.h"

namespace editor {

/// Where the months and days of a year stand in a rectangle: twelve blocks of a title, a line of
/// weekdays and six weeks, Monday first, in as many columns as leave most room for what a day
/// shows.
class YearGrid {
 public:
  /// @p natural is the size that the contents of a day need.
  YearGrid(int year, const QRect& area, int titleHeight, QSize natural);

  int year() const { return year_; }
  QSize cellSize() const { return {cellWidth_, cellHeight_}; }

  /// Month and day from 1, weekday 0 = Monday.
  QRect titleOf(int month) const;
  QRect weekdayOf(int month, int weekday) const;
  QRect cellOf(const XCDateTime& day) const;
  std::optional<XCDateTime> dayAt(const QPoint& point) const;

  static int daysIn(int year, int month);

  static constexpr int Weekdays = 7;
  static constexpr int Lines = 7;  // the weekdays and six weeks
  static constexpr int Gap = 12;

 private:
  QPoint originOf(int month) const;
  int firstWeekday(int month) const;

  int year_;
  QRect area_;
  int titleHeight_;
  int columns_ = 4;
  int cellWidth_ = 0;
  int cellHeight_ = 0;
};

}  // namespace editor
