#pragma once

#include <array>
#include <cstdint>
#include <pugixml.hpp>

#include "controller/model/civil_time.h"
#include "controller/model/night.h"

namespace lamp::controller {

/// Four steps, each with a duration in minutes and a power in percent. When the fourth has passed
/// the lamp stays at its power until the night ends: a street never goes dark early.
struct IntervalProgram {
  std::array<std::uint16_t, 4> minutes{};
  std::array<std::uint8_t, 4> power{};

  static IntervalProgram read(pugi::xml_node row);
  /// The power at so many minutes after the beginning of the night.
  int powerAfter(long minutesOfNight) const;
};

/// Four steps, of which the first begins with the night and the others at a time of day.
struct ClockProgram {
  std::array<std::uint16_t, 3> start{};  ///< minutes after the noon before the night, steps 2 to 4
  std::array<std::uint8_t, 4> power{};

  static ClockProgram read(pugi::xml_node row);
  /// The power at so many minutes after the noon before the night: that of the step that began
  /// last, also when it began before the lamps were lit.
  int powerAt(long minutesAfterNoon) const;
};

/// The date of the evening on which `night` begins, by the wall clock.
std::chrono::local_days eveningOf(const Night& night, const ZoneRule& zone);

/// Whole minutes from the noon before `night` to `now`, as the wall clock counts them.
long minutesAfterNoon(const Night& night, Moment now, const ZoneRule& zone);

}  // namespace lamp::controller
