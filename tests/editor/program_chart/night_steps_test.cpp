#include "editor/program_chart/night_steps.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace {

using editor::LampProgram;
using editor::NightSpan;
using editor::NightSteps;
using editor::ProgramStep;
using editor::ProgramTimes;
using editor::SelectedPrograms;
using editor::ValueRange;

constexpr int Noon = 720;
constexpr int Day = 1440;
constexpr std::int16_t None = ProgramStep::Unusable;

constexpr std::int16_t at(int hour, int minute = 0) {
  return static_cast<std::int16_t>(60 * hour + minute);
}

/// Where a time of day stands on the axis from noon to noon.
int axis(int hour, int minute = 0) {
  return (at(hour, minute) + Day - Noon) % Day;
}

SelectedPrograms select(ProgramTimes times, std::initializer_list<LampProgram> programs) {
  SelectedPrograms selected;
  selected.clear(times);
  for (const LampProgram& program : programs) selected.add(program);
  selected.seal();
  return selected;
}
NightSteps clockNight(std::initializer_list<LampProgram> programs) {
  return NightSteps(select(ProgramTimes::clock, programs));
}
NightSteps intervalNight(std::initializer_list<LampProgram> programs) {
  return NightSteps(select(ProgramTimes::interval, programs));
}
NightSpan span(int from, int to, int power) {
  return {from, to, ValueRange{power, power}};
}
NightSpan band(int from, int to, int least, int most) {
  return {from, to, ValueRange{least, most}};
}
using Spans = std::vector<NightSpan>;

const LampProgram Usual = {{{None, 100}, {at(22, 30), 70}, {at(0, 30), 40}, {at(5, 30), 80}}};

TEST(NightSteps, WithoutRowsThereIsNothing) {
  EXPECT_TRUE(clockNight({}).empty());
  EXPECT_TRUE(intervalNight({}).empty());
  EXPECT_EQ(clockNight({}).spanAt(0), nullptr);
}

TEST(NightSteps, AClockProgramRunsFromNoonOverMidnightToNoon) {
  const NightSteps night = clockNight({Usual});
  EXPECT_EQ(night.length(), Day);
  EXPECT_EQ(night.spans(), (Spans{span(0, axis(22, 30), 100), span(axis(22, 30), axis(0, 30), 70),
                                  span(axis(0, 30), axis(5, 30), 40), span(axis(5, 30), Day, 80)}));
  EXPECT_EQ(night.spanAt(axis(0, 0))->power, (ValueRange{70, 70}));
  EXPECT_EQ(NightSteps::clockAt(0), Noon);
  EXPECT_EQ(NightSteps::clockAt(axis(0, 0)), 0);
  EXPECT_FALSE(night.differs());
  EXPECT_FALSE(night.hasUnusable());
}

TEST(NightSteps, StepsOutOfOrderHoldFromTheirStarts) {
  const LampProgram program = {{{None, 10}, {at(5), 20}, {at(23), 30}, {at(1), 40}}};
  EXPECT_EQ(clockNight({program}).spans(),
            (Spans{span(0, axis(23), 10), span(axis(23), axis(1), 30), span(axis(1), axis(5), 40),
                   span(axis(5), Day, 20)}));
}

TEST(NightSteps, OfEqualStartsTheLaterStepHolds) {
  const LampProgram midnight = {{{None, 90}, {at(0), 10}, {at(0), 20}, {at(0), 30}}};
  EXPECT_EQ(clockNight({midnight}).spans(), (Spans{span(0, axis(0), 90), span(axis(0), Day, 30)}));
  const LampProgram noon = {{{None, 90}, {at(12), 10}, {at(22), 20}, {at(23), 20}}};
  EXPECT_EQ(clockNight({noon}).spans(), (Spans{span(0, axis(22), 10), span(axis(22), Day, 20)}));
}

TEST(NightSteps, AClockStepWithoutUsableStartIsLeftOut) {
  LampProgram program = Usual;
  program[2].minutes = None;
  const NightSteps night = clockNight({program});
  EXPECT_EQ(night.spans(), (Spans{span(0, axis(22, 30), 100), span(axis(22, 30), axis(5, 30), 70),
                                  span(axis(5, 30), Day, 80)}));
  EXPECT_TRUE(night.step(3).someTimeUnusable);
  EXPECT_EQ(night.step(3).time, std::nullopt);
  EXPECT_FALSE(night.step(1).someTimeUnusable) << "the first step has no start of its own";
}

TEST(NightSteps, AStepWithoutUsablePowerLeavesAGap) {
  LampProgram program = Usual;
  program[1].power = None;
  const NightSteps night = clockNight({program});
  ASSERT_EQ(night.spans().size(), 4U);
  EXPECT_EQ(night.spans()[1], (NightSpan{axis(22, 30), axis(0, 30), std::nullopt}));
  EXPECT_TRUE(night.step(2).somePowerUnusable);
  EXPECT_TRUE(night.hasUnusable());
}

TEST(NightSteps, RowsThatDifferInPowerMakeABand) {
  LampProgram other = Usual;
  other[2].power = 20;
  const NightSteps night = clockNight({Usual, other});
  EXPECT_EQ(night.spans()[2], band(axis(0, 30), axis(5, 30), 20, 40));
  EXPECT_EQ(night.step(3).power, (ValueRange{20, 40}));
  EXPECT_TRUE(night.differs());
}

TEST(NightSteps, RowsThatDifferInTimeMakeABandBetweenTheirStarts) {
  LampProgram other = Usual;
  other[1].minutes = at(23, 15);
  const NightSteps night = clockNight({Usual, other});
  EXPECT_EQ(night.spans(),
            (Spans{span(0, axis(22, 30), 100), band(axis(22, 30), axis(23, 15), 70, 100),
                   span(axis(23, 15), axis(0, 30), 70), span(axis(0, 30), axis(5, 30), 40),
                   span(axis(5, 30), Day, 80)}));
  EXPECT_EQ(night.step(2).time, (ValueRange{at(22, 30), at(23, 15)}));
}

TEST(NightSteps, StartsOnBothSidesOfMidnightAreInTheOrderOfTheNight) {
  LampProgram other = Usual;
  other[2].minutes = at(23, 50);
  const NightSteps night = clockNight({Usual, other});
  EXPECT_EQ(night.step(3).time->least, at(23, 50));
  EXPECT_EQ(night.step(3).time->most, at(0, 30));
}

TEST(NightSteps, WhereOneRowCanTellItsPowerIsDrawn) {
  LampProgram other = Usual;
  other[1].power = None;
  const NightSteps night = clockNight({Usual, other});
  EXPECT_EQ(night.spanAt(axis(23))->power, (ValueRange{70, 70}));
  EXPECT_TRUE(night.step(2).somePowerUnusable);
  EXPECT_EQ(night.step(2).power, (ValueRange{70, 70}));
}

TEST(NightSteps, AnIntervalProgramRunsFromSwitchOnAndItsLastStepHolds) {
  const LampProgram program = {{{120, 100}, {90, 70}, {240, 40}, {60, 80}}};
  const NightSteps night = intervalNight({program});
  EXPECT_EQ(night.length(), Day / 2) << "a long night, also where the steps are over soon";
  EXPECT_EQ(night.spans(), (Spans{span(0, 120, 100), span(120, 210, 70), span(210, 450, 40),
                                  span(450, night.length(), 80)}));
  EXPECT_EQ(night.step(3).start, (ValueRange{210, 210}));
  EXPECT_EQ(night.step(3).time, (ValueRange{240, 240}));
}

TEST(NightSteps, AnIntervalAxisHoldsTheLongestProgram) {
  const LampProgram longest = {{{999, 1}, {999, 2}, {999, 3}, {999, 4}}};
  const LampProgram shortest = {{{0, 1}, {0, 2}, {0, 3}, {0, 4}}};
  const NightSteps night = intervalNight({longest, shortest});
  EXPECT_EQ(night.length() % 60, 0);
  EXPECT_GT(night.length(), 4 * 999);
  EXPECT_EQ(night.spans(), (Spans{band(0, 999, 1, 4), band(999, 1998, 2, 4), band(1998, 2997, 3, 4),
                                  span(2997, night.length(), 4)}));
  EXPECT_EQ(intervalNight({shortest}).spans(),
            (Spans{span(0, intervalNight({shortest}).length(), 4)}));
}

TEST(NightSteps, NothingIsDrawnBehindAnIntervalThatIsNotUsable) {
  const LampProgram program = {{{120, 100}, {None, 70}, {240, 40}, {60, 80}}};
  const NightSteps night = intervalNight({program});
  EXPECT_EQ(night.spans(),
            (Spans{span(0, 120, 100), NightSpan{120, night.length(), std::nullopt}}));
  EXPECT_TRUE(night.step(2).someTimeUnusable);
  EXPECT_EQ(night.step(3).start, std::nullopt);
}

TEST(NightSteps, TheLastIntervalMattersToNothing) {
  const LampProgram program = {{{120, 100}, {60, 70}, {60, 40}, {None, 80}}};
  const NightSteps night = intervalNight({program});
  EXPECT_EQ(night.spans().back(), span(240, night.length(), 80));
  EXPECT_TRUE(night.step(4).someTimeUnusable);
}

/// The power of one program at a minute of the axis, step by step: independent of how spans are
/// made.
int powerAt(const LampProgram& program, ProgramTimes times, int minute) {
  int power = program[0].power;
  int latest = 0;
  int end = 0;
  for (std::size_t step = 1; step < program.size(); ++step) {
    end += program[step - 1].minutes;
    const int start =
        times == ProgramTimes::clock ? (program[step].minutes + Day - Noon) % Day : end;
    if (start > minute || start < latest) continue;
    latest = start;
    power = program[step].power;
  }
  return power;
}

LampProgram randomProgram(std::mt19937& random, int longest) {
  LampProgram program;
  for (ProgramStep& step : program) {
    step.minutes = static_cast<std::int16_t>(random() % static_cast<unsigned>(longest));
    step.power = static_cast<std::int16_t>(random() % 101);
  }
  return program;
}

TEST(NightSteps, EveryMinuteShowsTheLeastAndTheMostOfAllRows) {
  std::mt19937 random(20250315);  // NOLINT: the same programs in every run
  for (const ProgramTimes times : {ProgramTimes::clock, ProgramTimes::interval}) {
    for (int round = 0; round < 60; ++round) {
      SelectedPrograms selected;
      selected.clear(times);
      for (int row = 0; row <= round % 7; ++row)
        selected.add(randomProgram(random, times == ProgramTimes::clock ? Day : 400));
      selected.seal();
      const NightSteps night(selected);
      int before = 0;
      for (const NightSpan& part : night.spans()) {
        ASSERT_EQ(part.from, before) << "parts lie side by side";
        before = part.to;
      }
      ASSERT_EQ(before, night.length());
      for (int minute = 0; minute < night.length(); ++minute) {
        int least = 100;
        int most = 0;
        for (const LampProgram& program : selected.different()) {
          least = std::min(least, powerAt(program, times, minute));
          most = std::max(most, powerAt(program, times, minute));
        }
        ASSERT_EQ(night.spanAt(minute)->power, (ValueRange{least, most})) << minute;
      }
    }
  }
}

}  // namespace
