#include <gtest/gtest.h>

#include "tests/controller/support/controller_rig.h"

namespace lamp::controller::test {
namespace {

using namespace std::chrono_literals;

// A street by night, with a node of each generation of thresholds that measures what it should.
class Alarm : public testing::Test {
 protected:
  void SetUp() override {
    for (const pugi::xml_node row : rig.read("L07").children()) {
      std::string& node = row.attribute("brokenActive") ? older : newer;
      if (node.empty()) node = row.attribute("Id").value();
    }
    ASSERT_FALSE(older.empty() || newer.empty());
    for (const std::string& node : {older, newer}) {
      ASSERT_EQ(rig.controller.setLampCondition(node, LampCondition::Good), "");
    }
    ASSERT_EQ(rig.send(9, "<deviceCfg><C06 date=\"20250315200000W\"/></deviceCfg>"), 200);
    rig.controller.advance();
  }
  void set(const std::string& node, const std::string& thresholds) {
    ASSERT_EQ(
        rig.write("<E07><Node nodeId=\"" + node + "\"><Alarms " + thresholds + "/></Node></E07>"),
        200)
        << rig.refusal;
  }
  void make(const std::string& node, LampCondition condition) {
    ASSERT_EQ(rig.controller.setLampCondition(node, condition), "");
    rig.time.pass(1s);
  }
  // "lamp", "power", or nothing.
  std::string of(const std::string& node) {
    return rig.read("L09")
        .find_child_by_attribute("Alarm", "nodeId", node.c_str())
        .attribute("type")
        .value();
  }

  ControllerRig rig{StreetPlan{40, 7, true}};
  std::string older;
  std::string newer;
};

TEST_F(Alarm, AnOlderNodeIsBrokenBelowItsPower) {
  // Of 100 W a broken lamp measures 5 W.
  set(older, "blinkActive=\"50\" brokenActive=\"5\" brokenTime=\"0\"");
  make(older, LampCondition::Broken);
  EXPECT_EQ(of(older), "");
  set(older, "brokenActive=\"6\"");
  EXPECT_EQ(of(older), "lamp");
  set(older, "brokenActive=\"100\"");
  EXPECT_EQ(of(older), "lamp");
  set(older, "brokenActive=\"101\"");
  EXPECT_EQ(of(older), "") << "no lamp of 100 W could ever reach it";
  set(older, "brokenActive=\"\"");
  EXPECT_EQ(of(older), "") << "not watched";
}

TEST_F(Alarm, ANewerNodeDeviatesByMoreThanItsPercentage) {
  set(newer, "powerLamp=\"100\" timeAlarm=\"0\" percentageAlarm=\"29\"");
  make(newer, LampCondition::Ageing);  // 30 % are missing
  EXPECT_EQ(of(newer), "power");
  set(newer, "percentageAlarm=\"30\"");
  EXPECT_EQ(of(newer), "");
  make(newer, LampCondition::Broken);  // 95 %
  EXPECT_EQ(of(newer), "power");
  set(newer, "percentageAlarm=\"95\"");
  EXPECT_EQ(of(newer), "");
  set(newer, "percentageAlarm=\"94\"");
  EXPECT_EQ(of(newer), "power");
  set(newer, "percentageAlarm=\"\"");
  EXPECT_EQ(of(newer), "");
}

TEST_F(Alarm, WaitsForTheTimeOfTheThresholds) {
  set(older, "blinkActive=\"50\" brokenActive=\"50\" brokenTime=\"60\"");
  set(newer, "powerLamp=\"100\" percentageAlarm=\"20\" timeAlarm=\"90\"");
  make(older, LampCondition::Broken);
  make(newer, LampCondition::Broken);
  rig.time.pass(57s);
  EXPECT_EQ(of(older) + of(newer), "");
  rig.time.pass(1s);
  EXPECT_EQ(of(older), "lamp");
  EXPECT_EQ(of(newer), "");
  rig.time.pass(31s);
  EXPECT_EQ(of(newer), "power");
}

TEST_F(Alarm, FollowsThresholdsFromTheirActivationDate) {
  set(newer, "powerLamp=\"100\" timeAlarm=\"0\" percentageAlarm=\"99\"");
  make(newer, LampCondition::Ageing);
  ASSERT_EQ(rig.write("<E07 ActDate=\"20250315203000W\"><Node nodeId=\"" + newer +
                      "\"><Alarms percentageAlarm=\"10\"/></Node></E07>"),
            200);
  EXPECT_EQ(of(newer), "");
  rig.time.pass(30min);
  EXPECT_EQ(of(newer), "power");
}

TEST_F(Alarm, EndsWithTheNightAndWithTheBlacklist) {
  set(newer, "powerLamp=\"100\" timeAlarm=\"0\" percentageAlarm=\"10\"");
  make(newer, LampCondition::Broken);
  ASSERT_EQ(of(newer), "power");
  ASSERT_EQ(rig.write("<E09><Node nodeId=\"" + newer + "\"/></E09>"), 200);
  EXPECT_EQ(of(newer), "");
  ASSERT_EQ(rig.write("<E09/>"), 200);
  rig.time.pass(1s);
  EXPECT_EQ(of(newer), "power");
  rig.time.pass(16h);
  EXPECT_EQ(of(newer), "") << "nobody misses light by day";
}

}  // namespace
}  // namespace lamp::controller::test
