#include "editor/program_chart/night_words.h"

#include <gtest/gtest.h>

#include "host/resources/texts.h"
#include "tests/support/texts.h"

namespace {

using editor::LampProgram;
using editor::NightSteps;
using editor::ProgramTimes;

class NightWords : public testing::Test {
 protected:
  NightWords() {
    std::string cause;
    EXPECT_TRUE(host::loadTexts(support::textsFolder(), "en", cause)) << cause;
  }
  ~NightWords() override { support::texts(); }

  static NightSteps night(ProgramTimes times, std::initializer_list<LampProgram> programs) {
    editor::SelectedPrograms selected;
    selected.clear(times);
    for (const LampProgram& program : programs) selected.add(program);
    selected.seal();
    return NightSteps(selected);
  }
  static std::string words(const NightSteps& night) {
    return editor::nightWords(night).toStdString();
  }
};

TEST_F(NightWords, TellEveryStepOfAClockProgram) {
  EXPECT_EQ(words(night(ProgramTimes::clock, {{{{-1, 100}, {1350, 70}, {30, 40}, {330, 80}}}})),
            "Period 1: from switch-on, Power 100 %\n"
            "Period 2: Start time 22:30, Power 70 %\n"
            "Period 3: Start time 00:30, Power 40 %\n"
            "Period 4: Start time 05:30, Power 80 %");
}

TEST_F(NightWords, TellFromWhereToWhereRowsDiffer) {
  const NightSteps differing = night(
      ProgramTimes::interval,
      {{{{60, 100}, {90, 70}, {30, 40}, {0, 80}}}, {{{60, 100}, {120, 50}, {30, 40}, {0, 80}}}});
  EXPECT_EQ(editor::stepWords(differing, 2).toStdString(),
            "Period 2: Time 90 to 120 min, Power 50 to 70 %");
}

TEST_F(NightWords, TellWhatCanNotBeUsed) {
  const NightSteps one = night(ProgramTimes::clock, {{{{-1, 100}, {-1, 70}, {30, -1}, {330, 80}}}});
  EXPECT_EQ(editor::stepWords(one, 2).toStdString(),
            "Period 2: Start time (missing or out of range), Power 70 %");
  EXPECT_EQ(editor::stepWords(one, 3).toStdString(),
            "Period 3: Start time 00:30, Power (missing or out of range)");
  EXPECT_EQ(editor::unusableWords(one).toStdString(),
            "Period 2: Start time (missing or out of range)");
  const NightSteps two = night(ProgramTimes::clock, {{{{-1, 100}, {0, 70}, {30, 40}, {330, 80}}},
                                                     {{{-1, -1}, {0, 70}, {30, 40}, {330, 80}}}});
  EXPECT_EQ(editor::unusableWords(two).toStdString(),
            "Period 1: Power 100 % (in some rows missing or out of range)");
}

TEST_F(NightWords, TellTheMomentUnderThePointer) {
  const NightSteps clock =
      night(ProgramTimes::clock, {{{{-1, 100}, {1350, 70}, {30, -1}, {330, 80}}}});
  EXPECT_EQ(editor::momentWords(clock, 645).toStdString(), "22:45 · 70 %");
  EXPECT_EQ(editor::momentWords(clock, 760).toStdString(), "00:40 · missing or out of range");
  const NightSteps interval =
      night(ProgramTimes::interval, {{{{60, 100}, {60, 70}, {60, 40}, {0, 80}}}});
  EXPECT_EQ(editor::momentWords(interval, 61).toStdString(), "01:01 · 70 %");
}

TEST_F(NightWords, AskForASelectionWhereThereIsNone) {
  EXPECT_EQ(words(NightSteps()), "Select rows to see their night.");
}

}  // namespace
