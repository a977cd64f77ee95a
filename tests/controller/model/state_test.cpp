#include "controller/model/state_file.h"

#include <gtest/gtest.h>

#include <fstream>

#include "controller/model/state_keeper.h"
#include "tests/controller/support/controller_rig.h"
#include "tests/controller/support/scratch_folder.h"
#include "tests/controller/support/tar_maker.h"

namespace lamp::controller::test {
namespace {

std::string contentOf(const std::filesystem::path& path) {
  std::string text;
  EXPECT_EQ(readWholeFile(path, text), "");
  return text;
}

TEST(StateKeeper, GoesOnWhereTheLastOneEnded) {
  const ScratchFolder folder;
  ControllerRig rig;
  StateKeeper keeper(rig.controller, folder.path() / "s.xml");
  ASSERT_EQ(rig.write("<E01 name=\"Kept &amp; found\"/>"), 200);
  ASSERT_EQ(keeper.keep(), "");
  ControllerRig again;
  StateKeeper second(again.controller, folder.path() / "s.xml");
  bool found = false;
  ASSERT_EQ(second.restore(found), "");
  EXPECT_TRUE(found);
  EXPECT_STREQ(again.read("L01").attribute("name").value(), "Kept & found");
  EXPECT_EQ(again.controller.id(), "LM-TEST");
}

TEST(StateKeeper, LeavesOnlyTheStateInItsFolder) {
  const ScratchFolder folder;
  ControllerRig rig;
  StateKeeper keeper(rig.controller, folder.path() / "s.xml");
  ASSERT_EQ(keeper.keep(), "");
  ASSERT_EQ(rig.write("<E01 name=\"x\"/>"), 200);
  ASSERT_EQ(keeper.keep(), "");
  const std::filesystem::directory_iterator files(folder.path());
  EXPECT_EQ(std::distance(begin(files), end(files)), 1);
}

TEST(StateKeeper, RefusesAFileThatItCannotReadAndLeavesIt) {
  const std::string good = ControllerRig().state();
  const std::string bad[] = {"",
                             "no xml",
                             "<other/>",
                             good.substr(0, good.size() / 2),
                             "<lampController format=\"2\" id=\"x\"/>",
                             "<lampController format=\"1\" id=\"x\"/>",
                             "<lampController format=\"1\"/>"};
  for (const std::string& text : bad) {
    const ScratchFolder folder;
    std::ofstream(folder.path() / "s.xml") << text;
    ControllerRig rig;
    StateKeeper keeper(rig.controller, folder.path() / "s.xml");
    bool found = false;
    EXPECT_NE(keeper.restore(found), "") << text;
    EXPECT_TRUE(found);
    EXPECT_EQ(contentOf(folder.path() / "s.xml"), text);
  }
}

TEST(StateKeeper, SaysWhenTheFolderCannotBeWritten) {
  ControllerRig rig;
  StateKeeper keeper(rig.controller, "/nonexistent-folder/s.xml");
  EXPECT_NE(keeper.keep().find("/nonexistent-folder/s.xml"), std::string::npos);
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

}  // namespace
}  // namespace lamp::controller::test
