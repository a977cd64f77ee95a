#include "programs/day_types_dialog.h"

#include "tests/programs/calendar_fixture.h"

namespace {

using lamp::ProgramKind;
using support::TopKind;
using Cells = std::vector<std::string>;
using Selection = std::vector<std::size_t>;

class DayTypesDialog : public support::Calendars {
 protected:
  void open(const std::string& content, ProgramKind kind) {
    days = support::parsedXml(content);
    driver.show<XCDeviceCalendarDayTypesZelLAMPManager>(nullptr, days.Root(), kind);
    ASSERT_EQ(driver.top(), TopKind::dialog);
  }
  void openClock() { open(emptyDays("T"), ProgramKind::clock); }
  void openInterval() { open(emptyDays("F"), ProgramKind::interval); }
  void expectRefused(const std::string& message, std::size_t row, const std::string& focus) {
    driver.click("ok");
    ASSERT_EQ(driver.top(), TopKind::message);
    EXPECT_EQ(driver.message().text, message);
    driver.answer(host::MessageAnswer::ok);
    EXPECT_EQ(driver.selection("days"), Selection{row});
    EXPECT_EQ(driver.focus(), focus);
    EXPECT_EQ(driver.result(), std::nullopt);
  }

  XmlDocument days;
};

TEST_F(DayTypesDialog, ShowsTheTenDayTypesWithTheirSwatches) {
  openClock();
  EXPECT_EQ(driver.columns("days"),
            (Cells{"[24516]", "T1", "P1", "T2", "P2", "T3", "P3", "T4", "P4"}));
  const auto rows = driver.rows("days");
  ASSERT_EQ(rows.size(), 10U);
  EXPECT_EQ(rows[0], (Cells{"[455] - 1", "00:00", "0", "00:00", "0", "00:00", "0", "00:00", "0"}));
  EXPECT_EQ(rows[9][0], "[455] - 10");
  auto& list = driver.as<host::ListControl>("days");
  EXPECT_EQ(list.swatch(0), (host::Colour{0xFF, 0, 0}));
  EXPECT_EQ(list.swatch(9), (host::Colour{0x80, 0x80, 0}));
  EXPECT_EQ(driver.text("step2"), "[232] 2");
  EXPECT_EQ(driver.text("timeLabel2"), "[38404]");
  EXPECT_EQ(driver.text("powerLabel2"), "[24534] (%)");
  EXPECT_FALSE(driver.enabled("time1"));
  EXPECT_EQ(driver.selection("days"), Selection{});
}

TEST_F(DayTypesDialog, WithoutAModuleStepsHaveDurations) {
  openInterval();
  EXPECT_EQ(driver.rows("days")[3], (Cells{"[455] - 4", "0", "0", "0", "0", "0", "0", "0", "0"}));
  EXPECT_EQ(driver.text("timeLabel1"), "[666] ([34979])");
  EXPECT_TRUE(driver.enabled("time1"));
}

TEST_F(DayTypesDialog, AMissingDayTypeIsMadeBeforeTheListIsFilled) {
  std::string content = "<days>";
  for (const char* number : {"0", "1", "2", "3", "5", "6", "7", "8", "9", "10"})
    content += "<day><num>" + std::string(number) + "</num>" + emptyProgram("F") + "</day>";
  open(content + "</days>", ProgramKind::interval);
  EXPECT_EQ(driver.rows("days").size(), 10U);
  EXPECT_EQ(driver.rows("days")[4][0], "[455] - 5");
  driver.click("ok");
  EXPECT_EQ(driver.result(), IDOK);
  EXPECT_XML_EQ(content + "<day><num>4</num>" + emptyProgram("F") + "</day></days>", days);
}

TEST_F(DayTypesDialog, TypingSetsAllSelectedDayTypes) {
  openClock();
  driver.select("days", {1, 3});
  driver.type("time2", "22:15");
  driver.type("power2", "55");
  driver.type("power1", "100");
  EXPECT_EQ(driver.rows("days")[3],
            (Cells{"[455] - 4", "00:00", "100", "22:15", "55", "00:00", "0", "00:00", "0"}));
  driver.select("days", {0, 1});
  EXPECT_EQ(driver.text("power2"), "");
  EXPECT_EQ(driver.text("time3"), "00:00");
  driver.click("ok");
  EXPECT_EQ(driver.result(), IDOK);
  EXPECT_XML_EQ(
      "<Interval power1='100' hour2='22' min2='15' power2='55' hour3='0' min3='0' power3='0' "
      "hour4='0' min4='0' power4='0'/>",
      days.Root()->Node("day?num=%d?/Interval", 3));
  EXPECT_XML_EQ(emptyProgram("T"), days.Root()->Node("day?num=%d?/Interval", 2));
}

TEST_F(DayTypesDialog, ChangedAndChangedBackClosesAsCancel) {
  openInterval();
  driver.select("days", {2});
  driver.type("time1", "5");
  driver.type("time1", "0");
  driver.click("ok");
  EXPECT_EQ(driver.result(), IDCANCEL);
  EXPECT_XML_EQ(emptyDays("F"), days);
}

TEST_F(DayTypesDialog, CancelLeavesTheCalendarAsItWas) {
  open("<days><day><num>7</num></day></days>", ProgramKind::interval);
  driver.select("days", {2});
  driver.type("time1", "5");
  driver.click("cancel");
  EXPECT_EQ(driver.result(), IDCANCEL);
  EXPECT_XML_EQ("<days><day><num>7</num></day></days>", days);
}

TEST_F(DayTypesDialog, ForeignContentOfAProgramStays) {
  std::string content = emptyDays("T");
  content.replace(content.find("<Interval"), 9, "<Interval colour='warm' time1='9'");
  content.replace(content.find("<days>"), 6, "<days v='2'><!-- gone --><more>x</more>");
  open(content, ProgramKind::clock);
  driver.select("days", {9});
  driver.type("power4", "9");
  driver.click("ok");
  content.replace(content.rfind("power4='0'"), 10, "power4='9'");
  content.replace(content.find("<!-- gone -->"), 13, "");
  EXPECT_XML_EQ(content, days);
}

TEST_F(DayTypesDialog, FaultsAreRefusedAsOnTheGroupSchedulesPage) {
  openClock();
  driver.select("days", {4});
  driver.type("time3", "24:00");
  driver.select("days", {0});
  expectRefused("[38265]([38404],0,23)", 4, "time3");
  driver.type("time3", "23:60");
  expectRefused("[38265]([38404],0,59)", 4, "time3");
  driver.type("time3", "23:59");
  driver.type("power3", "101");
  expectRefused("[38265]([24534] (%),0,100)", 4, "power3");
  driver.type("power3", "");
  expectRefused("[38265]([24534] (%),0,100)", 4, "power3");
  driver.type("power3", "100");
  driver.click("ok");
  EXPECT_EQ(driver.result(), IDOK);
}

TEST_F(DayTypesDialog, AnEmptyDurationIsRefused) {
  openInterval();
  driver.select("days", {9});
  driver.type("time4", "");
  expectRefused("[38408]", 9, "time4");
}

TEST_F(DayTypesDialog, TheFirstColumnKeepsTheOrderAndTheOthersSort) {
  openInterval();
  driver.select("days", {0});
  driver.type("power1", "50");
  driver.select("days", {1});
  driver.type("power1", "100");
  driver.sort("days", 0);
  driver.sort("days", 0);
  EXPECT_EQ(driver.column("days", 0).front(), "[455] - 1");
  EXPECT_EQ(driver.column("days", 0).back(), "[455] - 10");
  driver.sort("days", 2);
  EXPECT_EQ(driver.column("days", 0).front(), "[455] - 3");
  EXPECT_EQ(driver.column("days", 0).back(), "[455] - 2");
  EXPECT_EQ(driver.as<host::ListControl>("days").swatch(9), (host::Colour{0, 0xFF, 0}));
}

}  // namespace
