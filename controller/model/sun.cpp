#include "controller/model/sun.h"

#include <cmath>
#include <numbers>

namespace lamp::controller {
namespace {

using namespace std::chrono;

constexpr double kRadians = std::numbers::pi / 180.0;
constexpr double kHorizonZenith = 90.833;
constexpr double kJulianDayOfUnixEpoch = 2440587.5;
constexpr double kJulianDayOfJ2000 = 2451545.0;
constexpr double kSecondsPerDay = 86400.0;
constexpr double kSecondsPerDegree = 240.0;
// Each round moves the event by a tenth of what the last one did.
constexpr int kRounds = 4;

double sine(double degrees) {
  return std::sin(degrees * kRadians);
}
double cosine(double degrees) {
  return std::cos(degrees * kRadians);
}

struct SolarPosition {
  double declination;     // degrees
  double equationOfTime;  // minutes, sundial minus clock
};

SolarPosition positionAt(double unixSeconds) {
  const double day = unixSeconds / kSecondsPerDay + kJulianDayOfUnixEpoch;
  const double t = (day - kJulianDayOfJ2000) / 36525.0;
  const double meanLongitude = 280.46646 + t * (36000.76983 + t * 0.0003032);
  const double meanAnomaly = 357.52911 + t * (35999.05029 - t * 0.0001537);
  const double eccentricity = 0.016708634 - t * (0.000042037 + t * 0.0000001267);
  const double centre = sine(meanAnomaly) * (1.914602 - t * (0.004817 + t * 0.000014)) +
                        sine(2 * meanAnomaly) * (0.019993 - t * 0.000101) +
                        sine(3 * meanAnomaly) * 0.000289;
  const double node = 125.04 - 1934.136 * t;
  const double apparentLongitude = meanLongitude + centre - 0.00569 - 0.00478 * sine(node);
  const double meanObliquity =
      23.0 + (26.0 + (21.448 - t * (46.815 + t * (0.00059 - t * 0.001813))) / 60.0) / 60.0;
  const double obliquity = meanObliquity + 0.00256 * cosine(node);
  const double y = std::pow(std::tan(obliquity / 2 * kRadians), 2);
  const double equation = y * sine(2 * meanLongitude) - 2 * eccentricity * sine(meanAnomaly) +
                          4 * eccentricity * y * sine(meanAnomaly) * cosine(2 * meanLongitude) -
                          0.5 * y * y * sine(4 * meanLongitude) -
                          1.25 * eccentricity * eccentricity * sine(2 * meanAnomaly);
  return SolarPosition{std::asin(sine(obliquity) * sine(apparentLongitude)) / kRadians,
                       4 * equation / kRadians};
}

Moment rounded(double unixSeconds) {
  return Moment{seconds{static_cast<seconds::rep>(std::lround(unixSeconds))}};
}

double noonNear(double meanNoon) {
  double noon = meanNoon;
  for (int round = 0; round < kRounds; ++round) {
    noon = meanNoon - positionAt(noon).equationOfTime * 60.0;
  }
  return noon;
}

// Cosine of the hour angle at the horizon; beyond 1 the sun stays down, beyond -1 it stays up.
double horizonCosine(double declination, double latitude) {
  return (cosine(kHorizonZenith) - sine(latitude) * sine(declination)) /
         (cosine(latitude) * cosine(declination));
}

// `direction` is -1 for the rising and 1 for the setting.
std::optional<Moment> horizonEvent(double meanNoon, const Place& place, int direction) {
  double moment = meanNoon;
  for (int round = 0; round < kRounds; ++round) {
    const SolarPosition sun = positionAt(moment);
    const double angle = horizonCosine(sun.declination, place.latitude);
    if (angle > 1.0 || angle < -1.0) return std::nullopt;
    moment = meanNoon - sun.equationOfTime * 60.0 +
             direction * std::acos(angle) / kRadians * kSecondsPerDegree;
  }
  return rounded(moment);
}

}  // namespace

SunDay sunDay(sys_days date, const Place& place) {
  const double midnight = static_cast<double>(sys_seconds{date}.time_since_epoch().count());
  const double meanNoon = midnight + kSecondsPerDay / 2 - place.longitude * kSecondsPerDegree;
  const double noon = noonNear(meanNoon);
  SunDay day;
  day.noon = rounded(noon);
  day.sunrise = horizonEvent(meanNoon, place, -1);
  day.sunset = horizonEvent(meanNoon, place, 1);
  const double altitude = 90.0 - std::abs(place.latitude - positionAt(noon).declination);
  day.upAtNoon = altitude > 90.0 - kHorizonZenith;
  return day;
}

sys_days solarDate(Moment moment, const Place& place) {
  return floor<days>(moment + seconds{static_cast<seconds::rep>(
                                  std::lround(place.longitude * kSecondsPerDegree))});
}

}  // namespace lamp::controller
