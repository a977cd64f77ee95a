#include "editor/program_chart/selected_programs.h"

#include <gtest/gtest.h>

namespace {

using editor::LampProgram;
using editor::ProgramTimes;
using editor::SelectedPrograms;

const LampProgram First = {{{10, 100}, {20, 70}, {30, 40}, {40, 80}}};
const LampProgram Second = {{{10, 100}, {20, 50}, {30, 40}, {40, 80}}};

TEST(SelectedPrograms, EqualProgramsStandOnce) {
  SelectedPrograms selected;
  selected.clear(ProgramTimes::interval);
  for (int row = 0; row < 1000; ++row) selected.add(row % 2 == 0 ? First : Second);
  selected.seal();
  EXPECT_EQ(selected.different().size(), 2U);
}

TEST(SelectedPrograms, WhatIsTypedGoesToAllRows) {
  SelectedPrograms selected;
  selected.clear(ProgramTimes::interval);
  selected.add(First);
  selected.add(Second);
  selected.seal();
  selected.setTime(3, u"7");
  for (const LampProgram& program : selected.different()) EXPECT_EQ(program[2].minutes, 7);
  EXPECT_EQ(selected.different().size(), 2U);
  selected.setPower(2, u"55");
  ASSERT_EQ(selected.different().size(), 1U) << "they differed in nothing else";
  EXPECT_EQ(selected.different()[0][1].power, 55);
  selected.setPower(2, u"");
  EXPECT_EQ(selected.different()[0][1].power, editor::ProgramStep::Unusable);
}

TEST(SelectedPrograms, TimesAreReadAsTheProgramStatesThem) {
  SelectedPrograms selected;
  selected.clear(ProgramTimes::clock);
  selected.add(First);
  selected.setTime(2, u"01:30");
  EXPECT_EQ(selected.different()[0][1].minutes, 90);
  selected.setTime(2, u"90");
  EXPECT_EQ(selected.different()[0][1].minutes, editor::ProgramStep::Unusable);
  selected.clear(ProgramTimes::interval);
  EXPECT_TRUE(selected.empty());
}

}  // namespace
