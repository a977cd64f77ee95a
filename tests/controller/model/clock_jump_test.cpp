#include <gtest/gtest.h>

#include "controller/storage/disk.h"
#include "tests/controller/support/controller_rig.h"
#include "tests/controller/support/scratch_folder.h"

namespace lamp::controller::test {
namespace {

using namespace std::chrono_literals;
using std::chrono::days;

// A controller with nothing but an hourly task, which keeps a report each time.
class ClockJump : public testing::Test {
 protected:
  void SetUp() override {
    rig.controller.setDataFolder(folder.path());
    ASSERT_EQ(rig.write("<E02><TP TpTar=\"1\" TpPer=\"\"/><TP TpTar=\"2\" TpPer=\"\"/>"
                        "<TP TpTar=\"3\" TpPer=\"\"/></E02>"),
              200);
    keepHourly("N");
  }
  void keepHourly(const std::string& fillHoles) {
    ASSERT_EQ(rig.write("<E02><TP TpTar=\"8\" TpHi=\"20240101000000W\" TpPer=\"00000000010000\" "
                        "TpCompl=\"" +
                        fillHoles +
                        "\" TpPrio=\"1\"><TpPro TpReq=\"L03\" TpSend=\"N\" "
                        "TpStore=\"Y\"/></TP></E02>"),
              200)
        << rig.refusal;
    rig.controller.advance();
    forget();
  }
  void jump(std::chrono::seconds by) {
    rig.clock.jump(by);
    rig.controller.advance();
  }
  void pass(std::chrono::seconds time) {
    rig.time.pass(time);
    rig.controller.advance();
  }
  // The reports since they were last forgotten.
  std::vector<std::string> reports() {
    std::vector<std::string> names;
    EXPECT_EQ(machineDisk().list(folder.path() / "reports", names), "");
    return names;
  }
  void forget() { std::filesystem::remove_all(folder.path() / "reports"); }

  ScratchFolder folder;
  ControllerRig rig;
};

TEST_F(ClockJump, ForwardsATaskMakesUpForTheLatestRunOnly) {
  jump(days{30} + 30min);
  EXPECT_EQ(reports(), std::vector<std::string>{"20250414130000-task8-L03.xml"});
  forget();
  pass(1h);
  EXPECT_EQ(reports(), std::vector<std::string>{"20250414140000-task8-L03.xml"});
}

TEST_F(ClockJump, ForwardsATaskThatFillsHolesMakesUpForAHundredRuns) {
  keepHourly("Y");
  jump(3h);
  EXPECT_EQ(reports().size(), 3U);
  forget();
  jump(days{365});
  EXPECT_EQ(reports().size(), 100U);
}

TEST_F(ClockJump, BackwardsATaskGoesOnFromThere) {
  jump(-days{365});
  EXPECT_TRUE(reports().empty());
  pass(1h);
  EXPECT_EQ(reports(), std::vector<std::string>{"20240315130000-task8-L03.xml"});
  pass(1h);
  EXPECT_EQ(reports().size(), 2U);
}

TEST_F(ClockJump, BackwardsByAnHourNothingIsDoneTwice) {
  pass(1h);
  EXPECT_EQ(reports().size(), 1U);
  forget();
  jump(-1h);
  pass(59min);
  pass(1min);
  EXPECT_TRUE(reports().empty());
  pass(1h);
  EXPECT_EQ(reports(), std::vector<std::string>{"20250315140000-task8-L03.xml"});
}

TEST_F(ClockJump, TheHourThatHappensTwiceIsWorkedOnce) {
  ASSERT_EQ(rig.send(9, "<deviceCfg><C06 date=\"20251026015500S\"/></deviceCfg>"), 200);
  rig.controller.advance();
  forget();
  // Through 02:00 twice, and on to 03:00.
  for (int i = 0; i < 13; ++i) pass(10min);
  EXPECT_EQ(reports(), (std::vector<std::string>{"20251026020000-task8-L03.xml",
                                                 "20251026030000-task8-L03.xml"}));
}

TEST_F(ClockJump, ForwardsBringsIntoForceWhatIsDueAndBackwardsLeavesItThere) {
  const auto power = [this] {
    const NodeRows* node = rig.controller.settings().inForce().find("4100007");
    return std::string(node->row(Family::Power).attribute("power").value());
  };
  ASSERT_EQ(rig.write("<E05 ActDate=\"20250401000000S\"><Node nodeId=\"4100007\"><Interval "
                      "time=\"9\" power=\"33\"/></Node></E05>"),
            200);
  jump(days{10});
  EXPECT_EQ(power(), "100");
  jump(days{10});
  EXPECT_EQ(power(), "33");
  jump(-days{20});
  EXPECT_EQ(power(), "33");
  EXPECT_EQ(rig.ofFirstNode("L05", "power"), "33");
}

TEST_F(ClockJump, IsNoTimeInWhichLampsBurned) {
  jump(8h);
  ASSERT_EQ(rig.ofFirstNode("L15", "power"), "100");
  jump(2h);
  jump(-2h);
  EXPECT_EQ(rig.ofFirstNode("L15", "hours"), "0.00");
  pass(30min);
  EXPECT_EQ(rig.ofFirstNode("L15", "hours"), "0.50");
}

TEST_F(ClockJump, IsNotWhatAFastClockDoes) {
  jump(8h);
  rig.clock.setSpeed(86400);
  rig.time.pass(100ms);
  EXPECT_EQ(rig.ofFirstNode("L15", "hours"), "2.40");
}

TEST_F(ClockJump, BackwardsHoldsNoAlarmOff) {
  ASSERT_EQ(rig.controller.setLampCondition("4100007", LampCondition::Broken), "");
  jump(8h);
  pass(10min);
  EXPECT_TRUE(rig.read("L09").first_child());
  jump(-days{365});
  EXPECT_FALSE(rig.read("L09").first_child()) << "as if it had been lit then";
  pass(10min);
  EXPECT_TRUE(rig.read("L09").first_child());
}

}  // namespace
}  // namespace lamp::controller::test
