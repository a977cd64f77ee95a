#include "host/dialogs/fast_selection_dlg.h"

#include <gtest/gtest.h>

#include "tests/support/dialog_driver.h"
#include "tests/support/xml_compare.h"

namespace {

class FastSelection : public testing::Test {
 protected:
  CDlgFastSelection& open(int firstMonth = 1, int lastMonth = 12, int chosen = -1) {
    return driver.show<CDlgFastSelection>(nullptr, types, 2025, firstMonth, lastMonth, chosen);
  }
  static std::string month(int number) { return "month" + std::to_string(number); }

  XmlDocument types = support::parsedXml(
      "<dayTypes><day><name>Work</name><color>FF0000</color></day>"
      "<day><name>Feast</name><color>00FF00</color></day></dayTypes>");
  support::DialogDriver driver;
};

TEST_F(FastSelection, NamesTheYearTheMonthsAndTheWeekdays) {
  open();
  EXPECT_EQ(driver.title(), "[433] - 2025");
  EXPECT_EQ(driver.text("month1"), "[436]");
  EXPECT_EQ(driver.text("month12"), "[447]");
  EXPECT_EQ(driver.text("monday"), "[34857]");
  EXPECT_EQ(driver.text("sunday"), "[34863]");
  EXPECT_EQ(driver.items("dayType"), (std::vector<std::string>{"Work", "Feast"}));
  EXPECT_EQ(driver.selectedIndex("dayType"), std::nullopt);
  EXPECT_EQ(driver.image("dayTypeColour"), "");
}

TEST_F(FastSelection, NothingIsChosenToBeginWith) {
  auto& dialog = open();
  driver.click("ok");
  EXPECT_EQ(driver.result(), IDOK);
  EXPECT_EQ(dialog.MonthMask(), 0U);
  EXPECT_EQ(dialog.WeekdayMask(), 0U);
  EXPECT_EQ(dialog.DayTypeIndex(), -1);
}

TEST_F(FastSelection, EveryMonthAndWeekdayHasItsBit) {
  const char* const weekdays[] = {"monday", "tuesday",  "wednesday", "thursday",
                                  "friday", "saturday", "sunday"};
  for (int at = 0; at < 12; ++at) {
    auto& dialog = open();
    driver.check(month(at + 1), true);
    if (at < 7) driver.check(weekdays[at], true);
    driver.click("ok");
    EXPECT_EQ(dialog.MonthMask(), 1U << at);
    EXPECT_EQ(dialog.WeekdayMask(), at < 7 ? 1U << at : 0U);
  }
}

TEST_F(FastSelection, OnlyTheMonthsOfTheRangeAreOffered) {
  open(3, 5);
  for (int number = 1; number <= 12; ++number) {
    EXPECT_EQ(driver.enabled(month(number)), number >= 3 && number <= 5);
    EXPECT_EQ(driver.control(month(number)).disabledReason().ToUtf8(),
              number >= 3 && number <= 5 ? "" : "[60089]");
  }
  EXPECT_FALSE(driver.tryCheck("month2", true));
}

TEST_F(FastSelection, TheChosenDayTypeIsAnsweredAndItsColourShown) {
  auto& dialog = open(1, 12, 0);
  EXPECT_EQ(driver.selectedItem("dayType"), "Work");
  EXPECT_EQ(driver.image("dayTypeColour"), "#FF0000");
  driver.choose("dayType", "Feast");
  EXPECT_EQ(driver.image("dayTypeColour"), "#00FF00");
  driver.click("ok");
  EXPECT_EQ(dialog.DayTypeIndex(), 1);
}

TEST_F(FastSelection, ADayTypeThatDoesNotExistIsNotChosen) {
  auto& dialog = open(1, 12, 5);
  driver.click("ok");
  EXPECT_EQ(dialog.DayTypeIndex(), -1);
}

}  // namespace
