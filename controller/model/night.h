#pragma once

#include <optional>

#include "controller/model/sun.h"

namespace lamp::controller {

/// The time in which lamps burn: from `begin` up to, but not at, `end`.
struct Night {
  Moment begin;
  Moment end;
};

/// The controller's astronomical clock: where it stands, and by how many minutes the switching
/// comes after sunset and after sunrise.
struct NightClock {
  Place place;
  int minutesAfterSunset = 0;
  int minutesAfterSunrise = 0;

  /// The night that begins on this day by the sun; none where the sun does not set. Where it does
  /// not rise the night lasts from noon to noon.
  std::optional<Night> beginningOn(std::chrono::sys_days date) const;

  /// The night that holds at this moment; none by day.
  std::optional<Night> at(Moment moment) const;

  /// The night that holds or the next one to come within a day.
  std::optional<Night> atOrAfter(Moment moment) const;
};

}  // namespace lamp::controller
