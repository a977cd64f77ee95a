#include "controller/storage/state_keeper.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>
#include <thread>

#include "tests/controller/support/controller_rig.h"
#include "tests/controller/support/scratch_folder.h"
#include "tests/controller/support/tar_maker.h"

namespace lamp::controller::test {
namespace {

std::string contentOf(const std::filesystem::path& path) {
  std::string text;
  EXPECT_EQ(machineDisk().read(path, text), "");
  return text;
}

// A controller whose state is kept in a file: begins or goes on.
struct KeptRig {
  explicit KeptRig(const std::filesystem::path& file) : keeper(rig.controller, file) {
    fault = keeper.restore(found);
    if (fault.empty()) fault = keeper.begin();
  }
  ControllerRig rig;
  StateKeeper keeper;
  bool found = false;
  std::string fault;
};

TEST(StateKeeper, GoesOnWhereTheLastOneEnded) {
  const ScratchFolder folder;
  {
    KeptRig kept(folder.path() / "s.xml");
    ASSERT_EQ(kept.fault, "");
    EXPECT_FALSE(kept.found);
    ASSERT_EQ(kept.rig.write("<E01 name=\"Kept &amp; found\"/>"), 200);
  }
  KeptRig again(folder.path() / "s.xml");
  ASSERT_EQ(again.fault, "");
  EXPECT_TRUE(again.found);
  EXPECT_STREQ(again.rig.read("L01").attribute("name").value(), "Kept & found");
  EXPECT_EQ(again.rig.controller.id(), "LM-TEST");
}

TEST(StateKeeper, AChangeCostsWhatItIsLong) {
  const ScratchFolder folder;
  KeptRig kept(folder.path() / "s.xml");
  const std::string state = contentOf(folder.path() / "s.xml");
  const auto before = std::filesystem::file_size(folder.path() / "s.xml.journal-1");
  ASSERT_EQ(kept.rig.write("<E01 name=\"x\"/>"), 200);
  EXPECT_LT(std::filesystem::file_size(folder.path() / "s.xml.journal-1") - before, 150U);
  EXPECT_EQ(contentOf(folder.path() / "s.xml"), state);
}

TEST(StateKeeper, WritesTheStateAsAWholeWhenTheJournalHasGrownLongerThanIt) {
  const ScratchFolder folder;
  KeptRig kept(folder.path() / "s.xml");
  ASSERT_EQ(kept.rig.write("<E10 a=\"" + std::string(600000, 'x') + "\"/>"), 200);
  ASSERT_EQ(kept.keeper.compactWhenDue(), "");
  EXPECT_TRUE(std::filesystem::exists(folder.path() / "s.xml.journal-1"));
  ASSERT_EQ(kept.rig.write("<E10 a=\"" + std::string(600000, 'y') + "\"/>"), 200);
  ASSERT_EQ(kept.keeper.compactWhenDue(), "");
  EXPECT_FALSE(std::filesystem::exists(folder.path() / "s.xml.journal-1"));
  EXPECT_LT(std::filesystem::file_size(folder.path() / "s.xml.journal-2"), 150U);
  EXPECT_NE(contentOf(folder.path() / "s.xml").find("yyyyy"), std::string::npos);
}

TEST(StateKeeper, LeavesOnlyTheStateAndItsJournalInItsFolder) {
  const ScratchFolder folder;
  KeptRig kept(folder.path() / "s.xml");
  ASSERT_EQ(kept.rig.write("<E01 name=\"x\"/>"), 200);
  ASSERT_EQ(kept.keeper.compact(), "");
  std::vector<std::string> names;
  ASSERT_EQ(machineDisk().list(folder.path(), names), "");
  EXPECT_EQ(names, (std::vector<std::string>{"s.xml", "s.xml.journal-2", "s.xml.lock"}));
}

TEST(StateKeeper, OnlyTheOwnerCanReadWhatIsKept) {
  const mode_t mask = ::umask(0);
  const ScratchFolder folder;
  KeptRig kept(folder.path() / "s.xml");
  kept.rig.controller.setDataFolder(folder.path());
  ASSERT_EQ(kept.rig.write("<E01 mailPassword=\"secret\"/>"), 200);
  ASSERT_EQ(kept.rig.send(52, "<deviceCfg><firmwareFile>" +
                                  encodeBase64(makeTar({{"version", "4.0.0"}})) +
                                  "</firmwareFile><E03 Firmware=\"a.tar\" "
                                  "ActDate=\"20250315123000W\"/></deviceCfg>"),
            200);
  ::umask(mask);
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.path())) {
    if (!entry.is_regular_file()) continue;
    EXPECT_EQ(static_cast<unsigned>(entry.status().permissions()), 0600U) << entry.path();
  }
}

TEST(StateKeeper, TwoProgramsDoNotWorkWithOneState) {
  const ScratchFolder folder;
  const KeptRig first(folder.path() / "s.xml");
  ASSERT_EQ(first.fault, "");
  const KeptRig second(folder.path() / "s.xml");
  EXPECT_NE(second.fault.find("another program works with it"), std::string::npos) << second.fault;
  const KeptRig beside(folder.path() / "other.xml");
  EXPECT_EQ(beside.fault, "");
}

TEST(StateKeeper, ReadsAStateThatWasWrittenWithoutAJournal) {
  const ScratchFolder folder;
  ControllerRig old;
  ASSERT_EQ(old.write("<E01 name=\"Old\"/>"), 200);
  std::string text = old.state();
  text.replace(text.find("format=\"3\""), 10, "format=\"1\"");
  std::ofstream(folder.path() / "s.xml") << text;
  {
    KeptRig kept(folder.path() / "s.xml");
    ASSERT_EQ(kept.fault, "");
    EXPECT_EQ(kept.rig.state(), old.state());
    ASSERT_EQ(kept.rig.write("<E01 name=\"New\"/>"), 200);
  }
  KeptRig again(folder.path() / "s.xml");
  EXPECT_STREQ(again.rig.read("L01").attribute("name").value(), "New");
}

TEST(StateKeeper, RefusesAFileThatItCannotReadAndLeavesIt) {
  const std::string good = ControllerRig().state();
  const std::string bad[] = {"",
                             "no xml",
                             "<other/>",
                             good.substr(0, good.size() / 2),
                             "<lampController format=\"9\" id=\"x\"/>",
                             "<lampController format=\"1\" id=\"x\"/>",
                             "<lampController format=\"1\"/>"};
  for (const std::string& text : bad) {
    const ScratchFolder folder;
    std::ofstream(folder.path() / "s.xml") << text;
    const KeptRig kept(folder.path() / "s.xml");
    EXPECT_NE(kept.fault, "") << text;
    EXPECT_TRUE(kept.found);
    EXPECT_EQ(contentOf(folder.path() / "s.xml"), text);
  }
}

// Appends a change that is whole on the disk, but not one of this controller.
void appendForeign(const std::filesystem::path& state, const std::string& change) {
  StateStorage storage(machineDisk(), state);
  KeptState found;
  ASSERT_EQ(storage.load(found), "");
  ASSERT_EQ(storage.resume(found), "");
  ASSERT_EQ(storage.append(change), "");
}

TEST(StateKeeper, RefusesAChangeThatDoesNotFitTheState) {
  const std::string bad[] = {"<write now=\"0\" due=\"0\"><E04><Node nodeId=\"1\"/></E04></write>\n",
                             "<write now=\"0\" due=\"0\"><E77/></write>\n",
                             "<write now=\"0\" due=\"0\"/>\n",
                             "<firmware><E04/></firmware>\n",
                             "<bogus/>\n",
                             "<"};
  for (const std::string& change : bad) {
    const ScratchFolder folder;
    { const KeptRig kept(folder.path() / "s.xml"); }
    appendForeign(folder.path() / "s.xml", change);
    const std::string journal = contentOf(folder.path() / "s.xml.journal-1");
    const KeptRig again(folder.path() / "s.xml");
    EXPECT_NE(again.fault.find("the change 1 after"), std::string::npos) << again.fault;
    EXPECT_EQ(contentOf(folder.path() / "s.xml.journal-1"), journal);
  }
}

TEST(StateKeeper, ChangesOfManyThreadsAreAllKept) {
  constexpr int kThreads = 8;
  constexpr int kRounds = 20;
  const ScratchFolder folder;
  std::string state;
  {
    KeptRig kept(folder.path() / "s.xml");
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
      threads.emplace_back([&kept, thread] {
        for (int round = 0; round < kRounds; ++round) {
          const std::string name = "c" + std::to_string(thread) + "x" + std::to_string(round);
          const Reply reply =
              kept.rig.controller.perform(2, "<deviceCfg><E10 last=\"" + name + "\"/></deviceCfg>");
          EXPECT_EQ(reply.status, 200) << reply.body;
          kept.rig.controller.perform(2, "<deviceCfg><E01 " + name + "=\"y\"/></deviceCfg>");
          if (round == kRounds / 2) {
            EXPECT_EQ(kept.keeper.compact(), "");
          }
        }
      });
    }
    for (std::thread& thread : threads) thread.join();
    state = kept.rig.state();
  }
  KeptRig again(folder.path() / "s.xml");
  ASSERT_EQ(again.fault, "");
  EXPECT_EQ(again.rig.state(), state) << "in the same order, too";
  const pugi::xml_node general = again.rig.read("L01");
  for (int thread = 0; thread < kThreads; ++thread) {
    for (int round = 0; round < kRounds; ++round) {
      const std::string name = "c" + std::to_string(thread) + "x" + std::to_string(round);
      EXPECT_TRUE(general.attribute(name.c_str())) << name;
    }
  }
}

TEST(StateKeeper, AFlippedBitAnywhereIsRefusedOrWithoutEffect) {
  const ScratchFolder folder;
  const std::filesystem::path file = folder.path() / "s.xml";
  std::string state;
  {
    KeptRig kept(file);
    ASSERT_EQ(kept.rig.write("<E01 name=\"Kept\"/>"), 200);
    ASSERT_EQ(kept.rig.write("<E01 name=\"Flipped\"/>"), 200);
    state = kept.rig.state();
  }
  for (const char* name : {"s.xml", "s.xml.journal-1"}) {
    const std::filesystem::path path = folder.path() / name;
    const std::string whole = contentOf(path);
    for (std::size_t at = 0; at < whole.size(); at += name[5] == '.' ? 1 : 7) {
      std::string flipped = whole;
      flipped[at] = static_cast<char>(flipped[at] ^ (1 << at % 8));
      std::ofstream(path, std::ios::binary) << flipped;
      KeptRig again(file);
      EXPECT_TRUE(!again.fault.empty() || again.rig.state() == state) << name << " at " << at;
    }
    std::ofstream(path, std::ios::binary) << whole;
  }
}

TEST(StateKeeper, KeepsWhatTheLampsUsedWithoutACommand) {
  using namespace std::chrono_literals;
  const ScratchFolder folder;
  std::string hours;
  {
    KeptRig kept(folder.path() / "s.xml");
    ASSERT_EQ(kept.rig.send(9, "<deviceCfg><C06 date=\"20250315200000W\"/></deviceCfg>"), 200);
    kept.rig.controller.advance();
    kept.rig.time.pass(30min);
    kept.rig.controller.advance();
    ASSERT_EQ(kept.rig.controller.keepUsage(), "");
    hours = kept.rig.ofFirstNode("L15", "hours");
    EXPECT_EQ(hours, "0.50");
    const auto size = std::filesystem::file_size(folder.path() / "s.xml.journal-1");
    ASSERT_EQ(kept.rig.controller.keepUsage(), "");
    EXPECT_EQ(std::filesystem::file_size(folder.path() / "s.xml.journal-1"), size);
  }
  KeptRig again(folder.path() / "s.xml");
  EXPECT_EQ(again.rig.ofFirstNode("L15", "hours"), hours);
}

TEST(StateKeeper, KeepsLampsThatWereMadeFaultyInItsJournalAndInTheState) {
  const ScratchFolder folder;
  const auto condition = [](KeptRig& kept, const char* node) {
    return kept.rig.controller.lampView(node)->condition;
  };
  {
    KeptRig kept(folder.path() / "s.xml");
    ASSERT_EQ(kept.rig.controller.setLampCondition("4100007", LampCondition::Broken), "");
  }
  for (int start = 0; start < 2; ++start) {
    KeptRig again(folder.path() / "s.xml");
    ASSERT_EQ(again.fault, "");
    EXPECT_EQ(condition(again, "4100007"), "broken");
    EXPECT_EQ(condition(again, "4100014"), "good");
    ControllerRig copy;
    ASSERT_EQ(copy.controller.loadState(again.rig.state()), "");
    EXPECT_EQ(copy.controller.lampView("4100007")->condition, "broken");
  }
}

TEST(StateKeeper, KeepsALampThatWasBrokenRightBeforeTheStateIsWrittenWhole) {
  const ScratchFolder folder;
  {
    KeptRig kept(folder.path() / "s.xml");
    ASSERT_EQ(kept.rig.controller.setLampCondition("4100007", LampCondition::Broken), "");
    ASSERT_EQ(kept.keeper.compact(), "");
  }
  KeptRig again(folder.path() / "s.xml");
  EXPECT_EQ(again.rig.controller.lampView("4100007")->condition, "broken");
}

TEST(StateKeeper, KeepsAClockThatWasMovedFromOutside) {
  using namespace std::chrono_literals;
  const ScratchFolder folder;
  {
    KeptRig kept(folder.path() / "s.xml");
    kept.rig.clock.jump(-3600s);
    EXPECT_TRUE(kept.rig.controller.advance());
    EXPECT_FALSE(kept.rig.controller.advance());
  }
  KeptRig again(folder.path() / "s.xml");
  EXPECT_STREQ(again.rig.read("L01").attribute("Fh").value(), "20250315110000");
}

TEST(StateKeeper, SaysWhenTheFolderCannotBeWritten) {
  const KeptRig kept("/nonexistent-folder/s.xml");
  EXPECT_NE(kept.fault.find("/nonexistent-folder/s.xml"), std::string::npos) << kept.fault;
}

TEST(StateFile, AFolderOptionHoldsAFileOfItsOwn) {
  const ScratchFolder folder;
  EXPECT_EQ(stateFileOf(folder.path().string()), folder.path() / "lamp-controller.xml");
  EXPECT_EQ(stateFileOf("new/"), std::filesystem::path("new/lamp-controller.xml"));
  EXPECT_EQ(stateFileOf("a.xml"), std::filesystem::path("a.xml"));
  EXPECT_EQ(dataFolderOf("a.xml"), std::filesystem::path("a.xml.d"));
  EXPECT_EQ(stateFileOf(""), std::filesystem::path());
}

TEST(FirmwareCommand, KeepsTheImageAndReportsItsVersionAfterItsDate) {
  const ScratchFolder folder;
  ControllerRig rig;
  rig.controller.setDataFolder(folder.path());
  const std::string archive = makeTar({{"version", "4.0.0"}});
  ASSERT_EQ(rig.send(52, "<deviceCfg><firmwareFile>" + encodeBase64(archive) +
                             "</firmwareFile><E03 Firmware=\"C:\\fw\\new.tar\" "
                             "ActDate=\"20250315123000W\"/></deviceCfg>"),
            200)
      << rig.refusal;
  EXPECT_EQ(contentOf(folder.path() / "firmware" / "new.tar"), archive);
  EXPECT_STREQ(rig.read("L01").attribute("Vf").value(), "2.4.1");
  ControllerRig again;
  ASSERT_EQ(again.controller.loadState(rig.state()), "");
  again.time.pass(std::chrono::minutes{30});
  EXPECT_STREQ(again.read("L01").attribute("Vf").value(), "4.0.0");
}

TEST(FirmwareCommand, RefusesWhatIsNoFirmware) {
  ControllerRig rig;
  const std::string tar = encodeBase64(makeTar({{"version", "4.0.0"}}));
  const std::string date = "<E03 Firmware=\"a.tar\" ActDate=\"20250315123000W\"/>";
  const std::pair<std::string, const char*> bad[] = {
      {"<firmwareFile/>" + date, "empty"},
      {"<firmwareFile>!!</firmwareFile>" + date, "base64"},
      {"<firmwareFile>aGVsbG8=</firmwareFile>" + date, "tar"},
      {date, "must hold"},
      {"<firmwareFile>" + tar + "</firmwareFile>", "must hold"},
      {"<firmwareFile>" + tar + "</firmwareFile><E03 Firmware=\"a.tar\"/>", "ActDate"},
      {"<firmwareFile>" + tar + "</firmwareFile><E03 Firmware=\"a.tar\" ActDate=\"1\"/>",
       "ActDate"},
      {"<firmwareFile>" + tar + "</firmwareFile>" + date + date, "unexpected"},
  };
  for (const auto& [content, said] : bad) {
    const std::string before = rig.state();
    EXPECT_EQ(rig.send(52, "<deviceCfg>" + content + "</deviceCfg>"), 422) << content;
    EXPECT_NE(rig.refusal.find(said), std::string::npos) << rig.refusal;
    EXPECT_TRUE(rig.state() == before);
  }
  EXPECT_EQ(rig.send(52, "<main/>"), 400);
  EXPECT_EQ(rig.send(52, ""), 400);
}

TEST(StateKeeper, ALampThatWasBrokenAMomentAgoIsInTheStateThatIsWritten) {
  const ScratchFolder folder;
  {
    KeptRig kept(folder.path() / "s.xml");
    ASSERT_EQ(kept.rig.controller.setLampCondition("4100007", LampCondition::Broken), "");
    ASSERT_EQ(kept.keeper.compact(), "");  // before the lamps were looked at again
  }
  KeptRig again(folder.path() / "s.xml");
  ASSERT_EQ(again.fault, "");
  EXPECT_NE(again.rig.state().find("broken"), std::string::npos);
}

}  // namespace
}  // namespace lamp::controller::test
