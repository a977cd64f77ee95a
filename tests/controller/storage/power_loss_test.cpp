#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "controller/storage/state_keeper.h"
#include "tests/controller/support/controller_rig.h"
#include "tests/controller/support/memory_disk.h"
#include "tests/controller/support/tar_maker.h"

namespace lamp::controller::test {
namespace {

using namespace std::chrono_literals;
using Survivor = MemoryDisk::Survivor;

constexpr const char* kState = "kept/s.xml";
const std::string kArchive = makeTar({{"version", "4.0.0"}});

// A controller with its keeper on a disk; begins or goes on.
struct KeptRig {
  explicit KeptRig(Disk& disk) : keeper(rig.controller, kState, disk) {
    rig.controller.setDataFolder("kept", disk);
    fault = keeper.restore(found);
    if (fault.empty()) fault = keeper.begin();
    if (fault.empty()) fault = rig.controller.tidyDataFolder();
  }
  ControllerRig rig;
  StateKeeper keeper;
  bool found = false;
  std::string fault;
};

// A step of the story; true when it was confirmed.
using Step = std::function<bool(KeptRig& kept)>;

Step writes(const std::string& section) {
  return [section](KeptRig& kept) { return kept.rig.write(section) == 200; };
}

Step uploads(const std::string& name, const std::string& archive = kArchive) {
  return [name, archive](KeptRig& kept) {
    return kept.rig.send(52, "<deviceCfg><firmwareFile>" + encodeBase64(archive) +
                                 "</firmwareFile><E03 Firmware=\"" + name +
                                 "\" ActDate=\"20250401000000S\"/></deviceCfg>") == 200;
  };
}

bool compacts(KeptRig& kept) {
  return kept.keeper.compact().empty();
}

// Every kind of change, with the state written as a whole in between. Steps that change nothing
// (a compaction) leave the same state behind.
std::vector<Step> story() {
  const std::string task =
      "<TP TpTar=\"9\" TpHi=\"20250315120000W\" TpPer=\"00000000010000\" TpCompl=\"Y\" "
      "TpPrio=\"1\"><TpPro TpReq=\"L03\" TpSend=\"Y\" TpStore=\"Y\"/></TP>";
  return {
      writes("<E01 name=\"One\" mailPassword=\"secret &amp; &#13;&#10;lines\"/>"),
      writes("<E04><Node nodeId=\"4100007\" Reference=\"A\"/></E04>"),
      writes("<E02>" + task + "</E02>"),
      [](KeptRig& kept) { return kept.rig.controller.advance(); },
      compacts,
      writes("<E05 ActDate=\"20250315121000W\"><Node nodeId=\"4100007\"><Interval time=\"9\" "
             "power=\"33\"/></Node></E05>"),
      uploads("C:\\new.tar"),
      writes("<E10 a=\"b\"><x> </x><y>text&#13;more</y></E10>"),
      [](KeptRig& kept) {
        return kept.rig.send(9, "<deviceCfg><C06 date=\"20250315123000W\"/></deviceCfg>") == 200;
      },
      compacts,
      uploads("C:\\new.tar"),
      [](KeptRig& kept) { return kept.rig.controller.setInputState(2, true).empty(); },
      writes("<E09><Node nodeId=\"4100007\"/></E09>"),
      writes("<E02><TP TpTar=\"9\" TpPer=\"\"/></E02>"),
      compacts,
  };
}

// What the state is after each step of a story without any trouble: 0 before the first.
std::vector<std::string> statesOfTheStory() {
  MemoryDisk disk;
  KeptRig kept(disk);
  std::vector<std::string> states = {kept.rig.state()};
  for (const Step& step : story()) {
    EXPECT_TRUE(step(kept));
    states.push_back(kept.rig.state());
  }
  return states;
}

// Tells the story on a disk until it is over or the disk goes dark; how many steps were confirmed.
std::size_t tell(MemoryDisk& disk) {
  KeptRig kept(disk);
  if (!kept.fault.empty()) return 0;
  std::size_t confirmed = 0;
  for (const Step& step : story()) {
    if (disk.isDark() || !step(kept)) break;
    ++confirmed;
  }
  return confirmed;
}

void expectNothingLeftOver(const MemoryDisk& disk) {
  for (const auto& [path, content] : disk.files()) {
    EXPECT_FALSE(path.ends_with(".new") || path.ends_with(".part")) << path;
  }
}

class PowerLoss : public testing::TestWithParam<Survivor> {};

TEST_P(PowerLoss, AtAnyFileOperationLeavesEveryConfirmedCommandAndNoHalfOne) {
  const std::vector<std::string> states = statesOfTheStory();
  int operations = 0;
  {
    MemoryDisk disk;
    ASSERT_EQ(tell(disk), story().size());
    operations = disk.operations();
  }
  ASSERT_GT(operations, 100);
  for (int last = 1; last <= operations; ++last) {
    SCOPED_TRACE("the last operation is " + std::to_string(last));
    MemoryDisk before;
    before.goDarkAt(last);
    const std::size_t confirmed = tell(before);
    MemoryDisk after(before, GetParam());
    KeptRig kept(after);
    ASSERT_EQ(kept.fault, "");
    const std::string state = kept.rig.state();
    const bool whole = state == states[confirmed];
    const bool oneMore = confirmed + 1 < states.size() && state == states[confirmed + 1];
    EXPECT_TRUE(whole || oneMore) << "after " << confirmed << " steps:\n" << state;
    expectNothingLeftOver(after);
    EXPECT_EQ(kept.rig.write("<E01 name=\"goes on\"/>"), 200);
    if (confirmed >= 7) {
      EXPECT_EQ(after.content("kept/firmware/new.tar"), kArchive);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Survivors, PowerLoss,
                         testing::Values(Survivor::Everything, Survivor::Half, Survivor::Flushed),
                         [](const auto& param) {
                           return std::string(param.param == Survivor::Everything ? "Everything"
                                              : param.param == Survivor::Half     ? "Half"
                                                                                  : "Flushed");
                         });

// An image that was cut off never takes the place of the one that was confirmed before it.
TEST(PowerLossDuringAnUpload, LeavesTheImageThatWasConfirmed) {
  const std::string other = makeTar({{"version", "5.0.0"}});
  MemoryDisk first;
  {
    KeptRig kept(first);
    ASSERT_TRUE(uploads("new.tar")(kept));
  }
  for (const Survivor survivor : {Survivor::Everything, Survivor::Half, Survivor::Flushed}) {
    bool over = false;
    for (int last = 1; !over; ++last) {
      SCOPED_TRACE("the last operation is " + std::to_string(last));
      MemoryDisk second(first, Survivor::Everything);
      second.goDarkAt(last);
      bool confirmed = false;
      {
        KeptRig kept(second);
        confirmed = kept.fault.empty() && uploads("new.tar", other)(kept);
      }
      over = !second.isDark();
      MemoryDisk third(second, survivor);
      KeptRig kept(third);
      ASSERT_EQ(kept.fault, "");
      const bool replaced = third.content("kept/firmware/new.tar") == other;
      EXPECT_TRUE(replaced || third.content("kept/firmware/new.tar") == kArchive);
      EXPECT_EQ(kept.rig.controller.settings().pending().size(), replaced ? 2U : 1U);
      EXPECT_TRUE(replaced || !confirmed);
      expectNothingLeftOver(third);
    }
  }
}

TEST(DiskTrouble, AtAnyFileOperationRefusesTheCommandAndChangesNothing) {
  const std::vector<std::string> states = statesOfTheStory();
  int operations = 0;
  {
    MemoryDisk disk;
    tell(disk);
    operations = disk.operations();
  }
  MemoryDisk untroubled;
  { const KeptRig kept(untroubled); }
  const int begun = untroubled.operations();
  for (int failing = begun + 1; failing <= operations; ++failing) {
    for (const int count : {1, 2, 5}) {
      SCOPED_TRACE("operation " + std::to_string(failing) +
                   " and so many: " + std::to_string(count));
      MemoryDisk disk;
      disk.failAt(failing, count);
      KeptRig kept(disk);
      ASSERT_EQ(kept.fault, "");
      std::size_t done = 0;
      for (const Step& step : story()) {
        // A step that is refused leaves everything as it was and succeeds when it is tried again.
        for (int attempt = 0; !step(kept); ++attempt) {
          ASSERT_LT(attempt, 6);
          EXPECT_EQ(kept.rig.state(), states[done]);
        }
        ++done;
        EXPECT_EQ(kept.rig.state(), states[done]);
      }
      kept.rig.controller.advance();
      if (count == 1) expectNothingLeftOver(disk);
      EXPECT_EQ(disk.content("kept/firmware/new.tar"), kArchive);
      MemoryDisk after(disk, Survivor::Flushed);
      KeptRig again(after);
      ASSERT_EQ(again.fault, "");
      EXPECT_EQ(again.rig.state(), states.back());
      expectNothingLeftOver(after);
    }
  }
}

TEST(DiskTrouble, AFullDiskRefusesEveryWriteAndLetsReadsPass) {
  MemoryDisk disk;
  KeptRig kept(disk);
  ASSERT_EQ(kept.rig.write("<E01 name=\"before\"/>"), 200);
  const std::string state = kept.rig.state();
  disk.failAt(disk.operations() + 1, 1000000);
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(kept.rig.write("<E01 name=\"after\"/>"), 500);
    EXPECT_EQ(kept.rig.refusal,
              "The state could not be kept: the disk does not work. Nothing was changed.");
    EXPECT_NE(kept.rig.controller.setInputState(1, true), "");
    EXPECT_STREQ(kept.rig.read("L01").attribute("name").value(), "before");
  }
  EXPECT_EQ(kept.rig.state(), state);
  disk.failAt(0, 0);
  EXPECT_EQ(kept.rig.write("<E01 name=\"after\"/>"), 200);
  MemoryDisk later(disk, Survivor::Flushed);
  KeptRig again(later);
  EXPECT_STREQ(again.rig.read("L01").attribute("name").value(), "after");
}

TEST(DiskTrouble, AnActivationThatCannotBeKeptHoldsUpWritesOnly) {
  MemoryDisk disk;
  KeptRig kept(disk);
  ASSERT_EQ(kept.rig.write("<E05 ActDate=\"20250315121000W\"><Node nodeId=\"4100007\"><Interval "
                           "time=\"9\" power=\"33\"/></Node></E05>"),
            200);
  kept.rig.time.pass(1h);
  disk.failAt(disk.operations() + 1, 1000000);
  EXPECT_EQ(kept.rig.ofFirstNode("L05", "power"), "33");
  EXPECT_EQ(kept.rig.write("<E01 name=\"x\"/>"), 500);
  kept.rig.controller.advance();
  EXPECT_EQ(kept.rig.controller.takeFault(), "the disk does not work");
  EXPECT_EQ(kept.rig.controller.settings().pending().size(), 1U);
  disk.failAt(0, 0);
  EXPECT_TRUE(kept.rig.controller.advance());
  EXPECT_EQ(kept.rig.controller.takeFault(), "");
  EXPECT_TRUE(kept.rig.controller.settings().pending().empty());
}

TEST(DiskTrouble, AReportThatCannotBeKeptIsMadeAgain) {
  MemoryDisk disk;
  KeptRig kept(disk);
  ASSERT_EQ(kept.rig.write("<E02><TP TpTar=\"9\" TpHi=\"20250315121000W\" "
                           "TpPer=\"00000000010000\" TpCompl=\"N\" TpPrio=\"1\"><TpPro "
                           "TpReq=\"L03\" TpSend=\"N\" TpStore=\"Y\"/></TP></E02>"),
            200);
  kept.rig.time.pass(10min);
  disk.failAt(disk.operations() + 1, 1000000);
  kept.rig.controller.advance();
  EXPECT_NE(kept.rig.controller.takeFault().find("a report can't be kept"), std::string::npos);
  disk.failAt(0, 0);
  kept.rig.time.pass(5s);
  kept.rig.controller.advance();
  EXPECT_EQ(kept.rig.controller.takeFault(), "");
  EXPECT_TRUE(disk.has("kept/reports/20250315121000-task9-L03.xml"));
}

}  // namespace
}  // namespace lamp::controller::test
