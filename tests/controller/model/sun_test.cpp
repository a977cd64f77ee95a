#include "controller/model/sun.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace lamp::controller {
namespace {

using namespace std::chrono;

// Tables "Rise and Set for the Sun" of the Astronomical Applications Department, U.S. Naval
// Observatory: 60 N 0 E, 60 S 150 W and 29 N 81 W for 2019 in universal time, and San Francisco
// (37 46 N, 122 26 W) for 2012 in Pacific standard time, here with its eight hours added.
struct TableRow {
  unsigned month, day;
  int rise, set;  // hours and minutes of universal time as in the table, "1435" is 14:35
};

struct Table {
  const char* name;
  Place place;
  int year;
  TableRow rows[8];
};

const Table kTables[] = {
    {"60 N 0 E",
     {60.0, 0.0},
     2019,
     {{1, 1, 902, 1505},
      {2, 10, 752, 1637},
      {3, 20, 603, 1814},
      {5, 5, 348, 2007},
      {6, 21, 236, 2128},
      {8, 8, 357, 2013},
      {9, 22, 543, 1801},
      {12, 21, 902, 1454}}},
    {"60 S 150 W",
     {-60.0, -150.0},
     2019,
     {{1, 1, 1243, 724},
      {2, 10, 1422, 608},
      {3, 20, 1600, 416},
      {5, 5, 1751, 204},
      {6, 21, 1906, 58},
      {8, 8, 1758, 212},
      {9, 22, 1548, 356},
      {12, 21, 1232, 724}}},
    {"29 N 81 W",
     {29.0, -81.0},
     2019,
     {{1, 1, 1218, 2238},
      {2, 10, 1207, 2310},
      {3, 20, 1128, 2335},
      {5, 5, 1040, 2},
      {6, 21, 1026, 26},
      {8, 8, 1049, 11},
      {9, 22, 1112, 2321},
      {12, 21, 1213, 2231}}},
    {"San Francisco",
     {37.0 + 46.0 / 60, -(122.0 + 26.0 / 60)},
     2012,
     {{1, 1, 1525, 101},
      {2, 10, 1505, 143},
      {3, 20, 1412, 222},
      {5, 5, 1309, 304},
      {6, 21, 1248, 335},
      {8, 8, 1320, 310},
      {9, 22, 1358, 206},
      {12, 21, 1522, 55}}},
};

// The sunrise or sunset that is nearest to a moment.
Moment nearest(Moment moment, const Place& place, std::optional<Moment> SunDay::*event) {
  Moment best{};
  for (int offset = -1; offset <= 1; ++offset) {
    const auto found = sunDay(floor<days>(moment) + days{offset}, place).*event;
    if (found && abs(*found - moment) < abs(best - moment)) best = *found;
  }
  return best;
}

TEST(Sun, IsWithinTwoMinutesOfTheAlmanac) {
  for (const Table& table : kTables) {
    for (const TableRow& row : table.rows) {
      const sys_days date{year{table.year} / month{row.month} / day{row.day}};
      const Moment rise = date + hours{row.rise / 100} + minutes{row.rise % 100};
      const Moment set = date + hours{row.set / 100} + minutes{row.set % 100};
      const auto late = nearest(rise, table.place, &SunDay::sunrise) - rise;
      const auto later = nearest(set, table.place, &SunDay::sunset) - set;
      EXPECT_LE(abs(late), minutes{2}) << table.name << " " << row.month << "/" << row.day;
      EXPECT_LE(abs(later), minutes{2}) << table.name << " " << row.month << "/" << row.day;
    }
  }
}

double sine(double degrees) {
  return std::sin(degrees * std::numbers::pi / 180);
}
double cosine(double degrees) {
  return std::cos(degrees * std::numbers::pi / 180);
}

// The sun's altitude in degrees by the low-precision formulas of the Astronomical Almanac (page
// C24) and Greenwich sidereal time: another way to the same sky.
double altitudeOf(Moment moment, const Place& place) {
  const double n = static_cast<double>(moment.time_since_epoch().count()) / 86400.0 - 10957.5;
  const double longitude = 280.460 + 0.9856474 * n;
  const double anomaly = 357.528 + 0.9856003 * n;
  const double ecliptic = longitude + 1.915 * sine(anomaly) + 0.020 * sine(2 * anomaly);
  const double obliquity = 23.439 - 0.0000004 * n;
  const double ascension =
      std::atan2(cosine(obliquity) * sine(ecliptic), cosine(ecliptic)) * 180 / std::numbers::pi;
  const double declination = std::asin(sine(obliquity) * sine(ecliptic)) * 180 / std::numbers::pi;
  const double sidereal = 280.46062 + 360.98564737 * n + place.longitude;
  const double hourAngle = sidereal - ascension;
  return std::asin(sine(place.latitude) * sine(declination) +
                   cosine(place.latitude) * cosine(declination) * cosine(hourAngle)) *
         180 / std::numbers::pi;
}

TEST(Sun, StandsAtTheHorizonByAnotherAlgorithmOnEveryDayOfFourYears) {
  const Place places[] = {{41.5, 2.1}, {-33.87, 151.2}, {0.0, -78.5}, {60.0, 25.0}, {-54.8, -68.3}};
  for (const Place& place : places) {
    for (sys_days date{2023y / January / 1}; date < sys_days{2027y / January / 1};
         date += days{1}) {
      const SunDay day = sunDay(date, place);
      ASSERT_TRUE(day.sunrise && day.sunset);
      // A tenth of a degree is at most half a minute of time at the equator and one at 60 degrees.
      ASSERT_NEAR(altitudeOf(*day.sunrise, place), -0.833, 0.05) << place.latitude;
      ASSERT_NEAR(altitudeOf(*day.sunset, place), -0.833, 0.05) << place.latitude;
      ASSERT_LT(*day.sunrise, day.noon);
      ASSERT_GT(*day.sunset, day.noon);
    }
  }
}

TEST(Sun, DoesNotSetInAPolarSummerNorRiseInAPolarWinter) {
  const Place tromso{69.65, 18.96};
  const SunDay summer = sunDay(sys_days{2025y / June / 21}, tromso);
  EXPECT_FALSE(summer.sunset);
  EXPECT_TRUE(summer.upAtNoon);
  const SunDay winter = sunDay(sys_days{2025y / December / 21}, tromso);
  EXPECT_FALSE(winter.sunrise);
  EXPECT_FALSE(winter.upAtNoon);
}

}  // namespace
}  // namespace lamp::controller
