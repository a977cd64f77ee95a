#include "controller/model/night.h"

namespace lamp::controller {

using std::chrono::days;
using std::chrono::minutes;

std::optional<Night> NightClock::beginningOn(std::chrono::sys_days date) const {
  const SunDay today = sunDay(date, place);
  const SunDay tomorrow = sunDay(date + days{1}, place);
  // A sun that does not set is up all day; one that does not rise is down all day.
  if (!today.sunset && today.upAtNoon) return std::nullopt;
  Night night;
  night.begin = today.sunset ? *today.sunset + minutes{minutesAfterSunset} : today.noon;
  night.end = tomorrow.sunrise ? *tomorrow.sunrise + minutes{minutesAfterSunrise} : tomorrow.noon;
  if (night.end <= night.begin) return std::nullopt;
  return night;
}

std::optional<Night> NightClock::at(Moment moment) const {
  const auto date = solarDate(moment, place);
  for (const int back : {0, 1}) {
    const auto night = beginningOn(date - days{back});
    if (night && night->begin <= moment && moment < night->end) return night;
  }
  return std::nullopt;
}

std::optional<Night> NightClock::atOrAfter(Moment moment) const {
  if (const auto night = at(moment)) return night;
  const auto date = solarDate(moment, place);
  for (const int ahead : {0, 1}) {
    const auto night = beginningOn(date + days{ahead});
    if (night && night->begin > moment) return night;
  }
  return std::nullopt;
}

}  // namespace lamp::controller
