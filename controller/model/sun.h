#pragma once

#include <optional>

#include "controller/model/civil_time.h"

namespace lamp::controller {

/// A place on the Earth, in degrees; north and east are positive.
struct Place {
  double latitude = 0;
  double longitude = 0;
};

/// The sun at one place on one day.
struct SunDay {
  Moment noon;                    ///< when it stands highest
  std::optional<Moment> sunrise;  ///< before noon; none in the polar day or night
  std::optional<Moment> sunset;   ///< after noon; none in the polar day or night
  bool upAtNoon = false;          ///< it stands above the horizon at noon
};

/// Sunrise and sunset of the day `date` as the sun counts days at `place` (from one midnight of the
/// sun to the next, which is the calendar's day within the equation of time and the time zone).
///
/// Low-accuracy solar coordinates of J. Meeus, "Astronomical Algorithms", 2nd edition, chapters 25
/// (position), 28 (equation of time) and 15 (rising and setting), as in the solar calculator of
/// NOAA: the upper limb at the horizon, with 34 minutes of refraction, is 90.833 degrees from the
/// zenith. Within a minute of the almanac between the polar circles in our centuries.
SunDay sunDay(std::chrono::sys_days date, const Place& place);

/// The date at `place` by the sun at that moment.
std::chrono::sys_days solarDate(Moment moment, const Place& place);

}  // namespace lamp::controller
