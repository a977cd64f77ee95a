#include <gtest/gtest.h>

#include "controller/storage/disk.h"
#include "tests/controller/support/controller_rig.h"
#include "tests/controller/support/scratch_folder.h"

namespace lamp::controller::test {
namespace {

using namespace std::chrono_literals;

// Sets the clock of the rig and answers the power of the first node.
int powerAt(ControllerRig& rig, const std::string& stamp) {
  EXPECT_EQ(rig.send(9, "<deviceCfg><C06 date=\"" + stamp + "\"/></deviceCfg>"), 200);
  return rig.read("L15").first_child().attribute("power").as_int();
}

// Sunset on 15 March 2025 is 18:57 at the rig's place; lamps are lit 15 minutes later.
constexpr StreetPlan kWithoutInputs{3, 7, false};
constexpr StreetPlan kWithInputs{3, 7, true};

TEST(Street, BurnsByTheIntervalProgramWithoutInputs) {
  ControllerRig rig(kWithoutInputs);
  EXPECT_EQ(powerAt(rig, "20250315190500W"), 0);
  EXPECT_EQ(powerAt(rig, "20250315193000W"), 100);
  EXPECT_EQ(powerAt(rig, "20250315230000W"), 70);
  EXPECT_EQ(powerAt(rig, "20250316030000W"), 40);
  EXPECT_EQ(powerAt(rig, "20250316063000W"), 80);
  EXPECT_EQ(powerAt(rig, "20250316073000W"), 0);
}

TEST(Street, BurnsByTheClockProgramWithInputs) {
  ControllerRig rig(kWithInputs);
  EXPECT_EQ(powerAt(rig, "20250315222900W"), 100);
  EXPECT_EQ(powerAt(rig, "20250315223000W"), 70);
  EXPECT_EQ(powerAt(rig, "20250316003000W"), 40);
  EXPECT_EQ(powerAt(rig, "20250316053000W"), 80);
  EXPECT_EQ(powerAt(rig, "20250316120000W"), 0);
}

TEST(Street, AProgramTakesEffectAtItsActivationDate) {
  ControllerRig rig(kWithInputs);
  ASSERT_EQ(rig.write("<E17 ActDate=\"20250315230000W\"><Node nodeId=\"4100007\"><Interval "
                      "power2=\"12\"/></Node></E17>"),
            200);
  EXPECT_EQ(powerAt(rig, "20250315225959W"), 70);
  EXPECT_EQ(powerAt(rig, "20250315230000W"), 12);
}

TEST(Street, AnOverrideHoldsForItsTimeByDayAndByNight) {
  ControllerRig rig(kWithInputs);
  ASSERT_EQ(rig.write("<E05 ActDate=\"20250315140000W\"><Node nodeId=\"4100007\"><Interval "
                      "time=\"30\" power=\"55\"/></Node></E05>"),
            200);
  EXPECT_EQ(powerAt(rig, "20250315135959W"), 0);
  EXPECT_EQ(powerAt(rig, "20250315140000W"), 55);
  EXPECT_EQ(powerAt(rig, "20250315142959W"), 55);
  EXPECT_EQ(powerAt(rig, "20250315143000W"), 0);
}

TEST(Street, ADayTypeOfTheCalendarGoesBeforeTheProgramsOfTheLamps) {
  ControllerRig rig(kWithInputs);
  DayCalendar calendar;
  std::string year(366, '0');
  year[74] = '3';  // 15 March
  ASSERT_EQ(calendar.load("<calendar><hasIOmodule>T</hasIOmodule><days><day><num>3</num><Interval "
                          "power1='11' hour2='01' min2='00' power2='22' power3='22' hour3='02' "
                          "power4='22' hour4='03'/></day></days><year>" +
                          year + "</year></calendar>"),
            "");
  rig.controller.followCalendar(calendar);
  EXPECT_EQ(powerAt(rig, "20250315230000W"), 11);
  EXPECT_EQ(powerAt(rig, "20250316013000W"), 22);
  EXPECT_EQ(powerAt(rig, "20250316230000W"), 70);
}

TEST(Street, ABlacklistedLampStaysDark) {
  ControllerRig rig(kWithInputs);
  ASSERT_EQ(rig.write("<E09><Node nodeId=\"4100007\"/></E09>"), 200);
  EXPECT_EQ(rig.send(9, "<deviceCfg><C06 date=\"20250315230000W\"/></deviceCfg>"), 200);
  const pugi::xml_node usage = rig.read("L15");
  EXPECT_FALSE(usage.find_child_by_attribute("Node", "nodeId", "4100007"));
  EXPECT_EQ(usage.first_child().attribute("power").as_int(), 70);
}

TEST(Street, CountsHoursAndEnergyAndKeepsThemOverARestart) {
  ControllerRig rig(kWithInputs);
  ASSERT_EQ(powerAt(rig, "20250315200000W"), 100);
  for (int minute = 0; minute < 120; ++minute) {
    rig.time.pass(1min);
    rig.controller.advance();
  }
  EXPECT_EQ(rig.ofFirstNode("L15", "hours"), "2.00");
  EXPECT_EQ(rig.ofFirstNode("L15", "energy"), "0.140");  // 70 W for two hours
  ControllerRig again;
  ASSERT_EQ(again.controller.loadState(rig.state()), "");
  EXPECT_EQ(again.ofFirstNode("L15", "hours"), "2.00");
  EXPECT_EQ(again.ofFirstNode("L15", "energy"), "0.140");
}

TEST(Street, FaultyLampsAreReportedWhileTheyBurn) {
  ControllerRig rig(StreetPlan{400, 7, true});
  EXPECT_FALSE(rig.read("L09").first_child());
  ASSERT_EQ(powerAt(rig, "20250315200000W"), 100);
  rig.controller.advance();
  EXPECT_FALSE(rig.read("L09").first_child()) << "thresholds have a time";
  rig.time.pass(10min);
  const pugi::xml_node report = rig.read("L09");
  const auto count = std::distance(report.children().begin(), report.children().end());
  EXPECT_GT(count, 1);
  EXPECT_LT(count, 40);
  const std::string node = report.first_child().attribute("nodeId").value();
  EXPECT_STREQ(report.first_child().attribute("since").value(), "20250315200200");
  ASSERT_EQ(rig.write("<E07><Node nodeId=\"" + node +
                      "\"><Alarms brokenActive=\"\" percentageAlarm=\"\"/></Node></E07>"),
            200);
  EXPECT_FALSE(rig.read("L09").find_child_by_attribute("Alarm", "nodeId", node.c_str()));
}

std::string alarmOf(ControllerRig& rig, const std::string& node) {
  return rig.read("L09")
      .find_child_by_attribute("Alarm", "nodeId", node.c_str())
      .attribute("since")
      .value();
}

TEST(Street, ALampThatIsMadeFaultyRaisesItsAlarmAfterTheTimeOfItsThresholds) {
  ControllerRig rig(kWithInputs);
  const std::string node = rig.nodeIds()[0];
  ASSERT_EQ(powerAt(rig, "20250315200000W"), 100);
  rig.time.pass(1h);
  ASSERT_EQ(rig.controller.setLampCondition(node, LampCondition::Ageing), "");
  EXPECT_EQ(alarmOf(rig, node), "");
  EXPECT_NEAR(rig.controller.lampView(node)->measuredWatts, 49, 0.01);
  rig.time.pass(119s);
  EXPECT_EQ(alarmOf(rig, node), "");
  rig.time.pass(1s);
  EXPECT_EQ(alarmOf(rig, node), "20250315210200");
  EXPECT_EQ(rig.controller.lampView(node)->alarm, "power");
  ASSERT_EQ(rig.controller.setLampCondition(node, LampCondition::Good), "");
  EXPECT_EQ(alarmOf(rig, node), "");
  EXPECT_NE(rig.controller.setLampCondition("nobody", LampCondition::Good), "");
  EXPECT_FALSE(rig.controller.lampView("nobody"));
}

bool outputIsOn(ControllerRig& rig, int number) {
  return std::string_view(
             rig.read("L13")
                 .find_child_by_attribute("Output", "Dir", std::to_string(number).c_str())
                 .attribute("Value")
                 .value()) == "1";
}

TEST(Outputs, FollowSunInputsNodesAndTheirMode) {
  ControllerRig rig(kWithInputs);
  // Of the generated street: 1 by night, 3 by day, 4 by input 1, 5 with the nodes.
  EXPECT_FALSE(outputIsOn(rig, 1));
  EXPECT_TRUE(outputIsOn(rig, 3));
  EXPECT_FALSE(outputIsOn(rig, 4));
  EXPECT_FALSE(outputIsOn(rig, 5));
  powerAt(rig, "20250315230000W");
  EXPECT_TRUE(outputIsOn(rig, 1));
  EXPECT_FALSE(outputIsOn(rig, 3));
  EXPECT_TRUE(outputIsOn(rig, 5));
  ASSERT_EQ(rig.controller.setInputState(1, true), "");
  EXPECT_TRUE(outputIsOn(rig, 4));
  EXPECT_NE(rig.controller.setInputState(9, true), "");
  ASSERT_EQ(rig.write("<E13><Output Dir=\"4\" On=\"N\" Off=\"Y\"/><Output Dir=\"8\" On=\"Y\" "
                      "Off=\"Y\"/></E13>"),
            200);
  EXPECT_FALSE(outputIsOn(rig, 4));
  EXPECT_TRUE(outputIsOn(rig, 8)) << "forced on goes before forced off";
}

TEST(Outputs, WaitForTheActivationDate) {
  ControllerRig rig(kWithInputs);
  ASSERT_EQ(rig.write("<E13 ActDate=\"20250315130000W\"><Output Dir=\"8\" On=\"Y\"/></E13>"), 200);
  EXPECT_FALSE(outputIsOn(rig, 8));
  rig.time.pass(1h);
  EXPECT_TRUE(outputIsOn(rig, 8));
}

std::vector<std::string> filesOf(const std::filesystem::path& folder) {
  std::vector<std::string> names;
  if (!std::filesystem::exists(folder)) return names;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    names.push_back(entry.path().filename());
  }
  std::sort(names.begin(), names.end());
  return names;
}

class TaskTest : public testing::Test {
 protected:
  void SetUp() override {
    rig.controller.setDataFolder(folder.path());
    ASSERT_EQ(rig.write("<E02><TP TpTar=\"1\" TpPer=\"\"/><TP TpTar=\"2\" TpPer=\"\"/>"
                        "<TP TpTar=\"3\" TpPer=\"\"/></E02>"),
              200);
  }
  void addTask(const std::string& start, const std::string& period, const std::string& fillHoles,
               const std::string& actions) {
    ASSERT_EQ(rig.write("<E02><TP TpTar=\"1\" TpHi=\"" + start + "\" TpPer=\"" + period +
                        "\" TpCompl=\"" + fillHoles + "\" TpPrio=\"2\">" + actions + "</TP></E02>"),
              200)
        << rig.refusal;
    rig.controller.advance();
  }
  std::vector<std::string> reports() { return filesOf(folder.path() / "reports"); }

  const std::string kStored = "<TpPro TpReq=\"L15\" TpSend=\"N\" TpStore=\"Y\"/>";
  ScratchFolder folder;
  ControllerRig rig;
};

TEST_F(TaskTest, RunsAtItsStartAndAfterEveryPeriod) {
  addTask("20250315130000W", "00000000020000", "N", kStored);
  EXPECT_TRUE(reports().empty());
  rig.time.pass(59min);
  rig.controller.advance();
  EXPECT_TRUE(reports().empty());
  rig.time.pass(1min);
  EXPECT_TRUE(rig.controller.advance());
  EXPECT_EQ(reports(), std::vector<std::string>{"20250315130000-task1-L15.xml"});
  rig.time.pass(2h);
  rig.controller.advance();
  EXPECT_EQ(reports().size(), 2U);
}

TEST_F(TaskTest, TheReportIsTheSectionAtThatMoment) {
  addTask("20250315130000W", "00000000020000", "N", kStored);
  rig.time.pass(1h);
  rig.controller.advance();
  pugi::xml_document report;
  ASSERT_TRUE(report.load_file((folder.path() / "reports" / reports().at(0)).c_str()));
  const pugi::xml_node section = report.child("deviceCfg").child("ZelLamp").child("L15");
  EXPECT_STREQ(section.attribute("Fh").value(), "20250315130000");
  EXPECT_STREQ(section.first_child().attribute("nodeId").value(), "4100007");
}

TEST_F(TaskTest, WhatIsToBeSentGoesToTheOutbox) {
  addTask("20250315130000W", "00000001000000", "N",
          "<TpPro TpReq=\"L03\" TpSend=\"Y\" TpStore=\"N\"/>"
          "<TpPro TpReq=\"L09\" TpSend=\"N\" TpStore=\"N\"/>");
  rig.time.pass(1h);
  rig.controller.advance();
  EXPECT_TRUE(reports().empty());
  EXPECT_EQ(filesOf(folder.path() / "outbox"),
            std::vector<std::string>{"20250315130000-task1-L03.xml"});
}

TEST_F(TaskTest, CatchesUpOnMissedRunsOnlyWhereItFillsHoles) {
  addTask("20250315130000W", "00000000010000", "Y", kStored);
  rig.time.pass(5h);
  rig.controller.advance();
  EXPECT_EQ(reports().size(), 5U);
  addTask("20250315130000W", "00000000010000", "N", kStored);
  rig.time.pass(5h);
  rig.controller.advance();
  EXPECT_EQ(reports().size(), 6U);
}

TEST_F(TaskTest, DoesNotCatchUpOnTheTimeBeforeItExisted) {
  addTask("20200101003000W", "00000000010000", "Y", kStored);
  EXPECT_TRUE(reports().empty());
  rig.time.pass(1h);
  rig.controller.advance();
  EXPECT_EQ(reports().size(), 1U);
}

TEST_F(TaskTest, CatchesUpAfterARestart) {
  addTask("20250315130000W", "00000000010000", "Y", kStored);
  ControllerRig again;
  again.controller.setDataFolder(folder.path());
  ASSERT_EQ(again.controller.loadState(rig.state()), "");
  again.time.pass(3h);
  again.controller.advance();
  EXPECT_EQ(reports().size(), 3U);
}

TEST_F(TaskTest, WritesCommaSeparatedValuesInTheOtherFormat) {
  ASSERT_EQ(rig.write("<E01 ReportFormat=\"1\"/>"), 200);
  addTask("20250315130000W", "00000001000000", "N",
          "<TpPro TpReq=\"L03\" TpSend=\"N\" TpStore=\"Y\"/>");
  rig.time.pass(1h);
  rig.controller.advance();
  std::string text;
  ASSERT_EQ(machineDisk().read(folder.path() / "reports" / "20250315130000-task1-L03.csv", text),
            "");
  EXPECT_TRUE(
      text.starts_with("\"nodeId\",\"Reference\"\r\n\"4100007\",\"Harbour Street pole 1\"\r\n"))
      << text;
}

TEST(TaskPeriod, CountsMonthsByTheCalendar) {
  const CivilTime start = *parseDigits("20240131080000");
  const Period month = Period::read("00000100000000");
  EXPECT_EQ(formatDigits(repeated(start, month, 1)), "20240229080000");
  EXPECT_EQ(formatDigits(repeated(start, month, 2)), "20240331080000");
  EXPECT_EQ(formatDigits(repeated(start, month, 13)), "20250228080000");
  const Period mixed = Period::read("00010001020304");
  EXPECT_EQ(formatDigits(repeated(start, mixed, 1)), "20250201100304");
}

}  // namespace
}  // namespace lamp::controller::test
