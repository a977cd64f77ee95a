#pragma once

#include <QtCore/QRect>

namespace editor {

/// Where a night's minutes and powers lie in a rectangle, in whole pixels.
class NightAxis {
 public:
  /// @p area is the room between 0 and 100 %, from the first minute to the last. @p minutes is at
  /// least 1.
  NightAxis(const QRect& area, int minutes) : area_(area), minutes_(minutes) {}

  const QRect& area() const { return area_; }

  int x(int minute) const;
  int y(int power) const;
  /// The minute at a place, held within the night.
  int minuteAt(int x) const;

  /// Every how many hours a line is drawn so that two are at least @p room pixels apart.
  int hoursBetweenLines(int room) const;

 private:
  QRect area_;
  int minutes_;
};

}  // namespace editor
