#include "host/dialogs/extension_module.h"
#include "tests/programs/group_schedules_fixture.h"
#include "tests/support/edited_page.h"
#include "workbench/pages/page_put.h"
#include "workbench/pages/row_edit.h"
#include "workbench/pages/row_filter.h"
#include "workbench/table/list_table.h"

namespace {

using lamp::ProgramKind;
using support::Cells;
using support::changesOn;
using support::faultsOn;
using support::GroupSchedules;
using support::Selection;

constexpr const char* Duration = "[666] ([34979])";
constexpr const char* Start = "[38404]";
constexpr const char* Power = "[24534] (%)";

/// One value of the first node of a page, what is typed into its edit and the line that tells it.
struct Value {
  std::string name;
  std::string label;
  std::string before;
  std::string typed = "9";
};

std::string lineOf(const Value& value) {
  return "1 " + value.name + " [232] " + value.name.back() + ": " + value.label + ": " +
         value.before + " -> " + value.typed;
}

const std::vector<Value> Intervals = {{"time1", Duration, "10"}, {"power1", Power, "100"},
                                      {"time2", Duration, "20"}, {"power2", Power, "80"},
                                      {"time3", Duration, "30"}, {"power3", Power, "60"},
                                      {"time4", Duration, "40"}, {"power4", Power, "40"}};
const std::vector<Value> Clocks = {{"power1", Power, "100"}, {"time2", Start, "22:15", "23:59"},
                                   {"power2", Power, "80"},  {"time3", Start, "01:00", "02:07"},
                                   {"power3", Power, "60"},  {"time4", Start, "05:45", "00:00"},
                                   {"power4", Power, "40"}};

// --- tables and filters

std::string namesOf(XCBaseDlg& dialog, host::ListControl& list) {
  const host::RowSet& rows = *workbench::rowsShownIn(*dialog.Edits(), list);
  const std::string table = workbench::exportTable(dialog, rows, list);
  return table.substr(0, table.find('\n'));
}

TEST_F(GroupSchedules, TheColumnsOfATableStandInTheOrderOfTheList) {
  open();
  auto& intervals = driver.as<host::ListControl>("nodes");
  EXPECT_EQ(namesOf(driver.dialog(), intervals),
            "Id,time1,power1,time2,power2,time3,power3,time4,power4");
  driver.click("cancel");
  openClock();
  auto& clocks = driver.as<host::ListControl>("nodes");
  EXPECT_EQ(namesOf(driver.dialog(), clocks), "Id,power1,time2,power2,time3,power3,time4,power4");
}

TEST_F(GroupSchedules, AFilterKnowsTimesByTheirName) {
  openClock();
  const auto& list = driver.as<host::ListControl>("nodes");
  const auto source = workbench::filterSourceOf(driver.dialog(), list);
  const workbench::RowFilter none(u"time2>23:59", list, source);
  EXPECT_EQ(none.rows(), Selection{});
  const workbench::RowFilter all(u"time2<=23:59 T2<=23:59", list, source);
  EXPECT_EQ(all.rows().size(), list.rowCount());
}

// --- changes

TEST_F(GroupSchedules, NothingTypedIsNoChangeAndNoFault) {
  open();
  EXPECT_EQ(changesOn(driver.dialog()), Cells{});
  EXPECT_EQ(faultsOn(driver.dialog()), Cells{});
  driver.type("activation", "01/12/2025 00:00:00");
  EXPECT_EQ(changesOn(driver.dialog()), Cells{});
  driver.click("cancel");
  openClock();
  EXPECT_EQ(changesOn(driver.dialog()), Cells{});
  EXPECT_EQ(faultsOn(driver.dialog()), Cells{});
}

TEST_F(GroupSchedules, EachValueOfAnIntervalProgramIsAChangeUnderItsNameAndStep) {
  for (const Value& value : Intervals) {
    open();
    driver.select("nodes", {0});
    driver.type(value.name, value.typed);
    EXPECT_EQ(changesOn(driver.dialog()), Cells{lineOf(value)});
    driver.click("cancel");
  }
}

TEST_F(GroupSchedules, EachValueOfAClockProgramIsAChangeUnderItsNameAndStep) {
  for (const Value& value : Clocks) {
    openClock();
    driver.select("nodes", {0});
    driver.type(value.name, value.typed);
    EXPECT_EQ(changesOn(driver.dialog()), Cells{lineOf(value)});
    driver.click("cancel");
  }
}

TEST_F(GroupSchedules, ChangesStandInTheOrderOfTheDocumentAlsoInASortedList) {
  configureUsualGroups();
  open();
  driver.sort("nodes", 0);
  driver.sort("nodes", 0);
  driver.select("groups", {0});
  driver.type("power4", "41");
  driver.type("time1", "7");
  EXPECT_EQ(changesOn(driver.dialog()), (Cells{"1 time1 [232] 1: [666] ([34979]): 10 -> 7",
                                               "1 power4 [232] 4: [24534] (%): 40 -> 41",
                                               "2 time1 [232] 1: [666] ([34979]): 11 -> 7"}));
}

TEST_F(GroupSchedules, AValueChangedBackIsNoChange) {
  openClock();
  driver.select("nodes", {0});
  driver.type("time2", "21:00");
  driver.type("time2", "22:15");
  EXPECT_EQ(changesOn(driver.dialog()), Cells{});
}

TEST_F(GroupSchedules, AStartThatReadsTheSameIsToldByItsAttributes) {
  openClock();
  driver.select("nodes", {0});
  driver.type("time3", "02:00");
  driver.type("time3", "01:00");
  EXPECT_EQ(changesOn(driver.dialog()), Cells{"1 time3 [232] 3: [38404]: 1:0 -> 01:00"});
  driver.click("ok");
  EXPECT_EQ(driver.channel().count(), 1U) << "it is sent";
}

TEST_F(GroupSchedules, WhatNodesLackGoesEmptyAsSoonAsSomethingIsSent) {
  open(R"(<Node Id="1" time1="1" power1="2" time2="3" power2="4" time3="5" power3="6" time4="7"
            power4="8"/><Node Id="2" time1="1" time2="3" power2="4" time3="5" power3="6"
            power4="8"/>)");
  EXPECT_EQ(changesOn(driver.dialog()), Cells{});
  driver.select("nodes", {0});
  driver.type("time1", "9");
  EXPECT_EQ(changesOn(driver.dialog()), (Cells{"1 time1 [232] 1: [666] ([34979]): 1 -> 9",
                                               "2 power1 [232] 1: [24534] (%): null -> ",
                                               "2 time4 [232] 4: [666] ([34979]): null -> "}));
}

TEST_F(GroupSchedules, AMissingStartGoesAsTheEditShowsItAndNoneOfTheFirstStep) {
  openClock(R"(<Node Id="1" power1="1" hour2="2" min2="2" power2="2" hour3="3" power3="3" hour4="4"
                 min4="4" power4="4"/><Node Id="2" power1="1" power2="2" hour3="3" min3="3"
                 power3="3" hour4="4" min4="4" power4="4"/>)");
  driver.select("nodes", {0});
  driver.type("power1", "9");
  EXPECT_EQ(changesOn(driver.dialog()), (Cells{"1 power1 [232] 1: [24534] (%): 1 -> 9",
                                               "2 time2 [232] 2: [38404]: null -> 00:00"}));
}

TEST_F(GroupSchedules, AReplyWithoutTheSectionHasNeitherChangesNorFaults) {
  openReply("<deviceCfg/>");
  EXPECT_EQ(changesOn(driver.dialog()), Cells{});
  EXPECT_EQ(faultsOn(driver.dialog()), Cells{});
}

TEST_F(GroupSchedules, EachKindIsFoundByTheSectionThatItSends) {
  EXPECT_EQ(host::findPage("E06"), &CDlgE06CfgZelLampManager::PageTable(ProgramKind::interval));
  EXPECT_EQ(host::findPage("E17"), &CDlgE06CfgZelLampManager::PageTable(ProgramKind::clock));
}

TEST_F(GroupSchedules, TakesTheProgramsOfASectionThroughItsEdits) {
  openClock();
  const XmlDocument section = support::parsedXml(
      R"(<L17><Node Id="2" hour1="9" min1="9" power1="100" hour2="21" min2="5" power2="80" hour3="01"
           min3="0" power3="7" hour4="6" min4="0" power4="40"/></L17>)");
  workbench::PutReport report;
  driver.perform([&](host::UserInput&, XCBaseDlg& page) {
    report = workbench::putSection(page, *page.Edits(), *section.Root());
    return host::Outcome();
  });
  EXPECT_EQ(report.put, 2U);
  EXPECT_EQ(changesOn(driver.dialog()), (Cells{"2 time2 [232] 2: [38404]: 22:15 -> 21:05",
                                               "2 power3 [232] 3: [24534] (%): 60 -> 7"}));
}

// --- faults

TEST_F(GroupSchedules, EachValueOfAnIntervalProgramThatOkRefusesIsAFault) {
  for (const Value& value : Intervals) {
    std::string node = "<Node Id='1'";
    for (const Value& other : Intervals)
      node += " " + other.name + "='" + (other.name == value.name ? "" : other.before) + "'";
    open(node + "/>");
    EXPECT_EQ(faultsOn(driver.dialog()),
              Cells{"1 " + value.name +
                    (value.label == Power ? ": [38265]([24534] (%),0,100)" : ": [38408]")});
    driver.click("cancel");
  }
}

TEST_F(GroupSchedules, EachStartBeyondTheDayIsAFaultWithTheBoundThatOkTells) {
  for (const char* step : {"2", "3", "4"})
    for (const auto& [start, bound] : {std::pair("24:60", 23), std::pair("23:60", 59)}) {
      openClock();
      driver.select("nodes", {1});
      driver.type("time" + std::string(step), start);
      EXPECT_EQ(faultsOn(driver.dialog()),
                Cells{"2 time" + std::string(step) + ": [38265]([38404],0," +
                      std::to_string(bound) + ")"});
      driver.click("cancel");
    }
}

TEST_F(GroupSchedules, EachPowerOfAClockProgramOverTheBoundIsAFault) {
  for (const char* step : {"1", "2", "3", "4"}) {
    openClockWith("");
    driver.select("nodes", {0});
    driver.type("power" + std::string(step), "101");
    EXPECT_EQ(faultsOn(driver.dialog()),
              Cells{"1 power" + std::string(step) + ": [38265]([24534] (%),0,100)"});
    driver.click("cancel");
  }
}

TEST_F(GroupSchedules, TheFirstStepOfAClockProgramHasNoFault) {
  openClockWith("hour1='99' min1='99'");
  EXPECT_EQ(faultsOn(driver.dialog()), Cells{});
}

TEST_F(GroupSchedules, FaultsStandInTheOrderOfTheListAndMoveNothing) {
  configureUsualGroups();
  open(R"(<Node Id="1" time1="1" power1="101" time2="" power2="2" time3="3" power3="3" time4="4"
            power4=""/><Node Id="2" time1="" power1="1" time2="2" power2="2" time3="3" power3="3"
            time4="4" power4="4"/>)");
  driver.sort("nodes", 0);
  driver.sort("nodes", 0);
  driver.select("groups", {0});
  const std::string focus = driver.focus();
  const std::string power = ": [38265]([24534] (%),0,100)";
  EXPECT_EQ(faultsOn(driver.dialog()), (Cells{"2 time1: [38408]", "1 power1" + power,
                                              "1 time2: [38408]", "1 power4" + power}));
  EXPECT_EQ(driver.selection("nodes"), (Selection{0, 1}));
  EXPECT_EQ(driver.selection("groups"), Selection{0});
  EXPECT_EQ(driver.focus(), focus);
}

TEST_F(GroupSchedules, ABadDateIsAFaultOnlyWhileThereIsSomethingToSend) {
  open();
  driver.type("activation", "31/02/2025 00:00:00");
  EXPECT_EQ(faultsOn(driver.dialog()), Cells{});
  driver.select("nodes", {0});
  driver.type("time1", "9");
  EXPECT_EQ(faultsOn(driver.dialog()), Cells{"null ActDate: [38408]"});
}

}  // namespace
