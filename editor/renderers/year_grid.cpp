#include "editor/renderers/year_grid.h"

#include <algorithm>

namespace editor {
namespace {

constexpr int Months = 12;

int blockWidth(int width, int columns) {
  return (width - (columns - 1) * YearGrid::Gap) / columns;
}

}  // namespace

YearGrid::YearGrid(int year, const QRect& area, int titleHeight, QSize natural)
    : year_(year), area_(area), titleHeight_(titleHeight) {
  qreal best = -1;
  for (const int columns : {6, 4, 3, 2}) {
    const int rows = Months / columns;
    const int width = blockWidth(area.width(), columns) / Weekdays;
    const int height = (blockWidth(area.height(), rows) - titleHeight) / Lines;
    const qreal room = std::min(qreal(width) / natural.width(), qreal(height) / natural.height());
    if (room <= best) continue;
    best = room;
    columns_ = columns;
    cellWidth_ = width;
    cellHeight_ = height;
  }
}

int YearGrid::daysIn(int year, int month) {
  int day = 31;
  while (day > 28 && !XCDateTime(year, month, day).isValidDate()) --day;
  return day;
}

int YearGrid::firstWeekday(int month) const {
  return (XCDateTime(year_, month, 1).DayOfWeek() + 5) % Weekdays;
}

QPoint YearGrid::originOf(int month) const {
  const int column = (month - 1) % columns_;
  const int row = (month - 1) / columns_;
  const int rows = Months / columns_;
  return area_.topLeft() + QPoint(column * (blockWidth(area_.width(), columns_) + Gap),
                                  row * (blockWidth(area_.height(), rows) + Gap));
}

QRect YearGrid::titleOf(int month) const {
  return {originOf(month), QSize(Weekdays * cellWidth_, titleHeight_)};
}

QRect YearGrid::weekdayOf(int month, int weekday) const {
  return {originOf(month) + QPoint(weekday * cellWidth_, titleHeight_), cellSize()};
}

QRect YearGrid::cellOf(const XCDateTime& day) const {
  const int place = firstWeekday(day.Month()) + day.Day() - 1;
  return {originOf(day.Month()) + QPoint(place % Weekdays * cellWidth_,
                                         titleHeight_ + (1 + place / Weekdays) * cellHeight_),
          cellSize()};
}

std::optional<XCDateTime> YearGrid::dayAt(const QPoint& point) const {
  if (cellWidth_ <= 0 || cellHeight_ <= 0) return std::nullopt;
  for (int month = 1; month <= Months; ++month) {
    const QPoint inside = point - originOf(month) - QPoint(0, titleHeight_ + cellHeight_);
    if (inside.x() < 0 || inside.y() < 0 || inside.x() >= Weekdays * cellWidth_) continue;
    const int week = inside.y() / cellHeight_;
    const int day = week * Weekdays + inside.x() / cellWidth_ - firstWeekday(month) + 1;
    if (week < Lines - 1 && day >= 1 && day <= daysIn(year_, month))
      return XCDateTime(year_, month, day);
  }
  return std::nullopt;
}

}  // namespace editor
