#include "programs/day_types_dialog.h"
#include "tests/programs/calendar_fixture.h"
#include "tests/support/edited_page.h"

namespace {

using lamp::ProgramKind;
using support::changesOn;
using support::faultsOn;
using Texts = std::vector<std::string>;
using Selection = std::vector<std::size_t>;

constexpr const char* PowerRefused = ": [38265]([24534] (%),0,100)";

class DayTypesChanges : public support::Calendars {
 protected:
  void open(const std::string& content, ProgramKind kind) {
    days = support::parsedXml(content);
    driver.show<XCDeviceCalendarDayTypesZelLAMPManager>(nullptr, days.Root(), kind);
    ASSERT_EQ(driver.top(), support::TopKind::dialog);
  }
  void openOf(ProgramKind kind) { open(emptyDays(kind == ProgramKind::clock ? "T" : "F"), kind); }
  Texts changes() { return changesOn(driver.dialog()); }
  Texts faults() { return faultsOn(driver.dialog()); }

  XmlDocument days;
};

TEST_F(DayTypesChanges, NothingTypedIsNoChangeAndNoFault) {
  for (const ProgramKind kind : {ProgramKind::interval, ProgramKind::clock}) {
    openOf(kind);
    EXPECT_EQ(changes(), Texts{});
    EXPECT_EQ(faults(), Texts{});
    driver.click("cancel");
  }
}

TEST_F(DayTypesChanges, EachValueOfAnIntervalProgramIsAChangeOfItsDayType) {
  for (const std::string step : {"1", "2", "3", "4"})
    for (const auto& [name, label] :
         {std::pair("time", "[666] ([34979])"), std::pair("power", "[24534] (%)")}) {
      openOf(ProgramKind::interval);
      driver.select("days", {3});
      driver.type(name + step, "7");
      EXPECT_EQ(changes(),
                Texts{"3 " + (name + step) + " [232] " + step + ": " + label + ": 0 -> 7"});
      driver.click("cancel");
    }
}

TEST_F(DayTypesChanges, EachValueOfAClockProgramIsAChangeOfItsDayType) {
  for (const std::string step : {"1", "2", "3", "4"}) {
    openOf(ProgramKind::clock);
    driver.select("days", {9});
    driver.type("power" + step, "7");
    Texts expected{"9 power" + step + " [232] " + step + ": [24534] (%): 0 -> 7"};
    if (step != "1") {
      driver.type("time" + step, "22:15");
      expected.insert(expected.begin(),
                      "9 time" + step + " [232] " + step + ": [38404]: 00:00 -> 22:15");
    }
    EXPECT_EQ(changes(), expected);
    driver.click("cancel");
  }
}

TEST_F(DayTypesChanges, AreWhatOkKeepsAndGoneWhenTheValueIsChangedBack) {
  openOf(ProgramKind::interval);
  driver.select("days", {1, 2});
  driver.type("power4", "70");
  EXPECT_EQ(changes(), (Texts{"1 power4 [232] 4: [24534] (%): 0 -> 70",
                              "2 power4 [232] 4: [24534] (%): 0 -> 70"}));
  driver.type("power4", "0");
  EXPECT_EQ(changes(), Texts{});
  driver.click("ok");
  EXPECT_EQ(driver.result(), IDCANCEL);
}

TEST_F(DayTypesChanges, AStartThatReadsTheSameIsToldByItsAttributes) {
  openOf(ProgramKind::clock);
  driver.select("days", {0});
  driver.type("time2", "01:00");
  driver.type("time2", "00:00");
  EXPECT_EQ(changes(), Texts{"0 time2 [232] 2: [38404]: 0:0 -> 00:00"});
  driver.click("ok");
  EXPECT_EQ(driver.result(), IDOK) << "it is kept";
}

TEST_F(DayTypesChanges, AProgramThatTheCalendarLacksIsANewRowOfEveryValue) {
  std::string content = "<days>";
  for (int number = 0; number < 9; ++number)
    content += "<day><num>" + std::to_string(number) + "</num>" + emptyProgram("T") + "</day>";
  open(content + "</days>", ProgramKind::clock);
  EXPECT_EQ(
      changes(),
      (Texts{"9 power1 [232] 1: [24534] (%): null -> 0", "9 time2 [232] 2: [38404]: null -> 00:00",
             "9 power2 [232] 2: [24534] (%): null -> 0", "9 time3 [232] 3: [38404]: null -> 00:00",
             "9 power3 [232] 3: [24534] (%): null -> 0", "9 time4 [232] 4: [38404]: null -> 00:00",
             "9 power4 [232] 4: [24534] (%): null -> 0"}));
  driver.click("ok");
  EXPECT_EQ(driver.result(), IDOK) << "it is kept";
}

TEST_F(DayTypesChanges, OfACalendarWithoutDayTypesAreTenNewPrograms) {
  open("<days/>", ProgramKind::interval);
  const Texts all = changes();
  ASSERT_EQ(all.size(), 80U);
  EXPECT_EQ(all.front(), "0 time1 [232] 1: [666] ([34979]): null -> 0");
  EXPECT_EQ(all.back(), "9 power4 [232] 4: [24534] (%): null -> 0");
}

TEST_F(DayTypesChanges, ASecondProgramOfADayTypeIsNotAmongThem) {
  std::string content = emptyDays("F");
  const std::string second = "<day><num>3</num><Interval time1='5'/></day>";
  content.insert(content.find("</days>"), second + "<day><num>10</num><Interval/></day>");
  open(content, ProgramKind::interval);
  driver.select("days", {3});
  driver.type("time1", "8");
  EXPECT_EQ(changes(), Texts{"3 time1 [232] 1: [666] ([34979]): 0 -> 8"});
}

TEST_F(DayTypesChanges, EachValueThatOkRefusesIsAFaultWithItsMessage) {
  for (const std::string step : {"1", "2", "3", "4"}) {
    openOf(ProgramKind::interval);
    driver.select("days", {4});
    driver.type("time" + step, "");
    driver.type("power" + step, "101");
    EXPECT_EQ(faults(), (Texts{"4 time" + step + ": [38408]", "4 power" + step + PowerRefused}));
    driver.click("cancel");
  }
}

TEST_F(DayTypesChanges, AStartBeyondTheDayIsAFaultWithTheBoundThatOkTells) {
  for (const std::string step : {"2", "3", "4"})
    for (const auto& [start, bound] : {std::pair("24:60", "23"), std::pair("23:60", "59")}) {
      openOf(ProgramKind::clock);
      driver.select("days", {8});
      driver.type("time" + step, start);
      EXPECT_EQ(faults(),
                Texts{"8 time" + step + ": [38265]([38404],0," + std::string(bound) + ")"});
      driver.click("cancel");
    }
}

TEST_F(DayTypesChanges, FaultsStandInTheOrderOfTheListAndMoveNothing) {
  openOf(ProgramKind::interval);
  driver.select("days", {1, 2});
  driver.type("power1", "");
  driver.select("days", {2});
  driver.type("time1", "9");
  driver.sort("days", 1);
  driver.sort("days", 1);
  const Selection selected = driver.selection("days");
  const std::string focus = driver.focus();
  EXPECT_EQ(faults(), (Texts{std::string("2 power1") + PowerRefused,
                             std::string("1 power1") + PowerRefused}));
  EXPECT_EQ(driver.selection("days"), selected);
  EXPECT_EQ(driver.focus(), focus);
}

}  // namespace
