#include "editor/program_chart/lamp_program.h"

#include <gtest/gtest.h>

#include "host/text/basic_string.h"

namespace {

using editor::ProgramStep;

constexpr int Unusable = ProgramStep::Unusable;

TEST(LampProgram, AClockTimeIsMinutesAfterMidnight) {
  EXPECT_EQ(editor::readClockTime(u"00:00"), 0);
  EXPECT_EQ(editor::readClockTime(u"22:30"), 1350);
  EXPECT_EQ(editor::readClockTime(u"23:59"), 1439);
}

TEST(LampProgram, AClockTimeOutOfRangeOrUnfinishedIsUnusable) {
  for (const char16_t* text : {u"", u"24:00", u"23:60", u"99:99", u"2:30", u"22:3", u"22:300",
                               u"2230", u"__:__", u"2_:30", u"22.30", u"-1:30", u" 2:30"})
    EXPECT_EQ(editor::readClockTime(text), Unusable) << XCBasicString(text).ToUtf8();
}

TEST(LampProgram, ADurationHasUpToThreeDigits) {
  EXPECT_EQ(editor::readDuration(u"0"), 0);
  EXPECT_EQ(editor::readDuration(u"007"), 7);
  EXPECT_EQ(editor::readDuration(u"999"), 999);
  for (const char16_t* text : {u"", u"1000", u"-1", u"1a", u" 1", u"１"})
    EXPECT_EQ(editor::readDuration(text), Unusable) << XCBasicString(text).ToUtf8();
}

TEST(LampProgram, APowerIsAPercentage) {
  EXPECT_EQ(editor::readPower(u"0"), 0);
  EXPECT_EQ(editor::readPower(u"100"), 100);
  for (const char16_t* text : {u"", u"101", u"999", u"1000", u"5%", u"x"})
    EXPECT_EQ(editor::readPower(text), Unusable) << XCBasicString(text).ToUtf8();
}

}  // namespace
