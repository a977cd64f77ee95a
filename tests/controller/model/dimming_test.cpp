#include "controller/model/dimming.h"

#include <gtest/gtest.h>

#include "controller/model/day_calendar.h"
#include "controller/model/night.h"

namespace lamp::controller {
namespace {

using namespace std::chrono;

pugi::xml_document row(const char* text) {
  pugi::xml_document document;
  document.load_string(text);
  return document;
}

TEST(IntervalProgram, GoesThroughItsStepsAndStaysAtTheLast) {
  const auto document =
      row("<N time1='60' power1='100' time2='0' power2='5' time3='30' power3='40' "
          "time4='10' power4='80'/>");
  const IntervalProgram program = IntervalProgram::read(document.first_child());
  const std::pair<long, int> cases[] = {{0, 100}, {59, 100}, {60, 40}, {89, 40},
                                        {90, 80}, {99, 80},  {500, 80}};
  for (const auto& [minute, power] : cases) EXPECT_EQ(program.powerAfter(minute), power) << minute;
}

TEST(ClockProgram, FollowsTheStepThatBeganLast) {
  const auto document =
      row("<N power1='100' hour2='22' min2='30' power2='70' hour3='00' min3='30' "
          "power3='40' hour4='05' min4='30' power4='80'/>");
  const ClockProgram program = ClockProgram::read(document.first_child());
  const auto at = [](int hour, int minute) { return (hour * 60 + minute + 720) % 1440; };
  const std::tuple<int, int, int> cases[] = {{18, 0, 100}, {22, 29, 100}, {22, 30, 70}, {0, 29, 70},
                                             {0, 30, 40},  {5, 29, 40},   {5, 30, 80},  {8, 0, 80}};
  for (const auto& [hour, minute, power] : cases) {
    EXPECT_EQ(program.powerAt(at(hour, minute)), power) << hour << ":" << minute;
  }
}

TEST(ClockProgram, AStepBeforeTheLampsAreLitHoldsFromTheBeginning) {
  const auto document =
      row("<N power1='100' hour2='18' min2='00' power2='70' hour3='23' min3='00' "
          "power3='40' hour4='05' min4='00' power4='80'/>");
  const ClockProgram program = ClockProgram::read(document.first_child());
  EXPECT_EQ(program.powerAt(21 * 60 - 720), 70);
}

std::string calendarText(const char* module, const char* interval, const std::string& year) {
  return std::string("<calendar><hasIOmodule>") + module +
         "</hasIOmodule><days><day><num>0</num><Interval time1='0' power1='0'/></day>"
         "<day><num>3</num><Interval " +
         interval + "/></day></days><year>" + year + "</year></calendar>";
}

TEST(DayCalendar, FindsTheDayTypeOfADateWithFebruaryOfTwentyNineDays) {
  std::string year(366, '0');
  year[58] = '1';   // 28 February
  year[59] = '2';   // 29 February
  year[60] = '3';   // 1 March
  year[100] = 'x';  // 10 April
  year[365] = '9';  // 31 December
  DayCalendar calendar;
  ASSERT_EQ(calendar.load(calendarText("T", "power1='50'", year)), "");
  const std::pair<local_days, int> cases[] = {
      {local_days{2025y / February / 28}, 1}, {local_days{2028y / February / 29}, 2},
      {local_days{2025y / March / 1}, 3},     {local_days{2028y / March / 1}, 3},
      {local_days{2025y / April / 10}, 0},    {local_days{2025y / December / 31}, 9},
      {local_days{2025y / January / 1}, 0}};
  for (const auto& [date, type] : cases) EXPECT_EQ(calendar.typeOf(date), type);
}

TEST(DayCalendar, HasAProgramOnlyForItsKindAndForDayTypesThatSaySomething) {
  DayCalendar calendar;
  ASSERT_EQ(calendar.load(calendarText("F", "time1='60' power1='50'", std::string(60, '3'))), "");
  const local_days third{2025y / January / 1};
  ASSERT_NE(calendar.programFor(third, false), nullptr);
  EXPECT_EQ(calendar.programFor(third, false)->interval.powerAfter(30), 50);
  EXPECT_EQ(calendar.programFor(third, true), nullptr);
  EXPECT_EQ(calendar.programFor(local_days{2025y / July / 1}, false), nullptr);
}

TEST(DayCalendar, RefusesWhatIsNoCalendar) {
  DayCalendar calendar;
  EXPECT_NE(calendar.load("<other/>").find("root"), std::string::npos);
  EXPECT_NE(calendar.load("<calendar>").find("line 1"), std::string::npos);
}

TEST(Night, RunsFromSunsetToSunriseWithTheOffsets) {
  const NightClock clock{{41.5, 2.1}, 15, 10};
  const NightClock plain{{41.5, 2.1}, 0, 0};
  const sys_days date{2025y / March / 15};
  const Night night = *clock.beginningOn(date);
  EXPECT_EQ(night.begin - plain.beginningOn(date)->begin, 15min);
  EXPECT_EQ(night.end - plain.beginningOn(date)->end, 10min);
  EXPECT_FALSE(clock.at(night.begin - 1s));
  EXPECT_TRUE(clock.at(night.begin));
  EXPECT_TRUE(clock.at(night.end - 1s));
  EXPECT_FALSE(clock.at(night.end));
  EXPECT_EQ(clock.atOrAfter(sys_days{date} + 12h)->begin, night.begin);
}

TEST(Night, HoldsAllOverTheEarth) {
  for (const double longitude : {-179.0, -120.0, 0.0, 90.0, 179.0}) {
    const NightClock clock{{-33.0, longitude}, 0, 0};
    seconds dark{0};
    const Moment start = sys_days{2025y / March / 20};
    for (Moment m = start; m < start + 24h; m += 60s) dark += clock.at(m) ? 60s : 0s;
    EXPECT_NEAR(duration<double>(dark) / 1h, 11.9, 0.2) << longitude;
  }
}

TEST(Night, LastsAllDayInThePolarWinterAndNeverInThePolarSummer) {
  const NightClock clock{{69.65, 18.96}, 0, 0};
  for (int hour = 0; hour < 24; ++hour) {
    EXPECT_TRUE(clock.at(sys_days{2025y / December / 21} + hours{hour})) << hour;
    EXPECT_FALSE(clock.at(sys_days{2025y / June / 21} + hours{hour})) << hour;
  }
}

}  // namespace
}  // namespace lamp::controller
