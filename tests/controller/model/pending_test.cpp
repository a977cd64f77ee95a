#include <gtest/gtest.h>

#include "tests/controller/support/controller_rig.h"

namespace lamp::controller::test {
namespace {

using namespace std::chrono_literals;

std::string power(const char* date, const char* value) {
  return std::string("<E05 ActDate=\"") + date +
         "\"><Node nodeId=\"4100007\"><Interval time=\"10\" power=\"" + value + "\"/></Node></E05>";
}

std::string inForce(ControllerRig& rig) {
  return rig.controller.settings()
      .inForce()
      .find("4100007")
      ->row(Family::Power)
      .attribute("power")
      .value();
}

TEST(PendingWrites, ADateThatHasComeTakesEffectAtOnce) {
  for (const char* date : {"20250315120000W", "20250315115959W", "20200101000000W"}) {
    ControllerRig rig;
    ASSERT_EQ(rig.write(power(date, "33")), 200);
    EXPECT_EQ(inForce(rig), "33") << date;
    EXPECT_TRUE(rig.controller.settings().pending().empty());
  }
}

TEST(PendingWrites, ALaterDateIsShownAtOnceAndTakesEffectThen) {
  ControllerRig rig;
  ASSERT_EQ(rig.write(power("20250315120001W", "33")), 200);
  EXPECT_EQ(rig.ofFirstNode("L05", "power"), "33");
  EXPECT_EQ(inForce(rig), "100");
  rig.time.pass(1s);
  EXPECT_TRUE(rig.controller.advance());
  EXPECT_EQ(inForce(rig), "33");
  EXPECT_EQ(rig.ofFirstNode("L05", "power"), "33");
  EXPECT_FALSE(rig.controller.advance());
}

TEST(PendingWrites, TakeEffectInTheOrderOfTheirDates) {
  ControllerRig rig;
  ASSERT_EQ(rig.write(power("20250317000000W", "70")), 200);
  ASSERT_EQ(rig.write(power("20250316000000W", "60")), 200);
  EXPECT_EQ(rig.ofFirstNode("L05", "power"), "60");
  rig.time.pass(24h);
  rig.controller.advance();
  EXPECT_EQ(inForce(rig), "60");
  EXPECT_EQ(rig.ofFirstNode("L05", "power"), "60") << "it was sent last";
  rig.time.pass(24h);
  rig.controller.advance();
  EXPECT_EQ(inForce(rig), "70");
}

TEST(PendingWrites, AWriteThatTakesEffectAtOnceIsShownOverAPendingOne) {
  ControllerRig rig;
  ASSERT_EQ(rig.write(power("20250316000000W", "60")), 200);
  ASSERT_EQ(rig.write(power("20250101000000W", "20")), 200);
  EXPECT_EQ(rig.ofFirstNode("L05", "power"), "20");
  EXPECT_EQ(inForce(rig), "20");
  rig.time.pass(24h);
  rig.controller.advance();
  EXPECT_EQ(rig.ofFirstNode("L05", "power"), "60");
}

TEST(PendingWrites, SettingTheClockForwardBringsThemIntoForce) {
  ControllerRig rig;
  ASSERT_EQ(rig.write(power("20260101000000W", "60")), 200);
  ASSERT_EQ(rig.send(9, "<deviceCfg><C06 date=\"20260101000000W\"/></deviceCfg>"), 200);
  EXPECT_EQ(inForce(rig), "60");
}

TEST(PendingWrites, APendingBlacklistIsShownButTheNodeStaysInForce) {
  ControllerRig rig;
  ASSERT_EQ(rig.write("<E09 ActDate=\"20250316000000W\"><Node nodeId=\"4100007\"/></E09>"), 200);
  EXPECT_EQ(rig.nodeIds().size(), 2U);
  const SectionStore& store = rig.controller.settings().inForce();
  EXPECT_FALSE(store.isBlacklisted(*store.find("4100007")));
  rig.time.pass(24h);
  rig.controller.advance();
  EXPECT_TRUE(store.isBlacklisted(*store.find("4100007")));
  EXPECT_EQ(rig.nodeIds().size(), 2U);
}

TEST(PendingWrites, OutliveARestart) {
  ControllerRig rig;
  ASSERT_EQ(rig.write(power("20250316000000W", "60")), 200);
  ASSERT_EQ(rig.send(9, "<deviceCfg><C06 date=\"20250315130000W\"/></deviceCfg>"), 200);
  ControllerRig again;
  ASSERT_EQ(again.controller.loadState(rig.state()), "");
  EXPECT_EQ(again.state(), rig.state());
  EXPECT_EQ(again.ofFirstNode("L05", "power"), "60");
  EXPECT_EQ(inForce(again), "100");
  EXPECT_STREQ(again.read("L01").attribute("Fh").value(), "20250315130000");
  again.time.pass(11h);
  again.controller.advance();
  EXPECT_EQ(inForce(again), "60");
}

TEST(PendingWrites, ARowSentAgainUnchangedKeepsItsBeginning) {
  ControllerRig rig;
  const SectionStore& store = rig.controller.settings().inForce();
  ASSERT_EQ(rig.write(power("20250315120000W", "33")), 200);
  const long long first = SectionStore::powerSince(*store.find("4100007"));
  rig.time.pass(60s);
  ASSERT_EQ(rig.write(power("20250315120000W", "33")), 200);
  EXPECT_EQ(SectionStore::powerSince(*store.find("4100007")), first);
  ASSERT_EQ(rig.write(power("20250315120000W", "34")), 200);
  EXPECT_EQ(SectionStore::powerSince(*store.find("4100007")), first + 60);
}

}  // namespace
}  // namespace lamp::controller::test
