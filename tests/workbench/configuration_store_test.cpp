#include "workbench/configuration_store.h"

#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <fstream>
#include <sstream>

#include "host/services/files.h"
#include "host/services/setup.h"
#include "tests/support/faulty_files.h"
#include "tests/support/temp_folder.h"
#include "tests/support/texts.h"

namespace {

namespace fs = std::filesystem;
using workbench::ConfigurationStore;

class ConfigurationStoreTest : public testing::Test {
 protected:
  ConfigurationStoreTest() { support::texts(); }
  void TearDown() override { XCMainCfg::Get().Document().Clear(); }

  void write(const std::string& content) { std::ofstream(file()) << content; }
  std::string onDisk() const {
    std::ostringstream out;
    out << std::ifstream(file()).rdbuf();
    return out.str();
  }
  fs::path file() const { return folder.path() / "configuration.xml"; }
  XmlDocument::XmlNode& root() { return *XCMainCfg::Get().Root(); }

  support::TempFolder folder;
  std::string cause;
};

TEST_F(ConfigurationStoreTest, AMissingFileIsAnEmptyConfigurationAndIsNotWrittenForNothing) {
  ConfigurationStore store(folder.path());
  ASSERT_TRUE(store.open(cause)) << cause;
  EXPECT_EQ(root().Tag(), "configuration");
  for (const char* part : {"commSystem", "deviceGroups", "viewSetups"})
    EXPECT_NE(root().Node(part), nullptr) << part;
  EXPECT_TRUE(store.saveIfDifferent(cause));
  EXPECT_FALSE(fs::exists(file()));
}

TEST_F(ConfigurationStoreTest, AMissingFolderIsMade) {
  ConfigurationStore store(folder.path() / "a" / "b");
  ASSERT_TRUE(store.open(cause)) << cause;
  root().NewChild("x");
  EXPECT_TRUE(store.saveIfDifferent(cause)) << cause;
  EXPECT_TRUE(fs::exists(folder.path() / "a" / "b" / "configuration.xml"));
}

TEST_F(ConfigurationStoreTest, WhatIsSavedIsLoadedAgainAndTheVersionBeforeIsKept) {
  {
    ConfigurationStore store(folder.path());
    ASSERT_TRUE(store.open(cause));
    root().Node("commSystem")->NewChild("device").SetValue("name", u"Pl\u00E4tze & Wege");
    ASSERT_TRUE(store.saveIfDifferent(cause)) << cause;
    const std::string first = onDisk();
    EXPECT_EQ(first, store.text());
    root().Node("commSystem/device")->SetValue("name", u"B");
    ASSERT_TRUE(store.saveIfDifferent(cause)) << cause;
    std::string kept;
    ASSERT_TRUE(host::readFile(host::keptCopy(file()), 10'000, kept, cause));
    EXPECT_EQ(kept, first);
  }
  ConfigurationStore store(folder.path());
  ASSERT_TRUE(store.open(cause)) << cause;
  EXPECT_EQ(root().Node("commSystem/device")->Value("name"), u"B");
}

TEST_F(ConfigurationStoreTest, ElementsThatNobodyKnowsStay) {
  write(
      "<configuration><other a=\"1\">t</other><commSystem><device><x/></device></commSystem>"
      "</configuration>");
  ConfigurationStore store(folder.path());
  ASSERT_TRUE(store.open(cause));
  root().SetValue("new", u"1");
  ASSERT_TRUE(store.saveIfDifferent(cause));
  EXPECT_NE(onDisk().find("<other a=\"1\">t</other>"), std::string::npos);
  EXPECT_NE(onDisk().find("<x/>"), std::string::npos);
}

TEST_F(ConfigurationStoreTest, AFileThatDoesNotParseIsRefusedAndNeverWritten) {
  const std::string broken = "<configuration>\n<commSystem>\n</configuration>";
  write(broken);
  ConfigurationStore store(folder.path());
  EXPECT_FALSE(store.open(cause));
  EXPECT_TRUE(cause.starts_with("[60304](" + file().string() + ",3,3,")) << cause;
  EXPECT_FALSE(store.saveIfDifferent(cause));
  EXPECT_EQ(onDisk(), broken);
}

TEST_F(ConfigurationStoreTest, AnotherRootElementIsNoConfiguration) {
  write("<calendar/>");
  ConfigurationStore store(folder.path());
  EXPECT_FALSE(store.open(cause));
  EXPECT_EQ(cause, "[60305](" + file().string() + ",calendar)");
}

TEST_F(ConfigurationStoreTest, TheSecondOpenerReadsAndDoesNotWrite) {
  ConfigurationStore first(folder.path());
  ASSERT_TRUE(first.open(cause));
  EXPECT_FALSE(first.isReadOnly());
  {
    ConfigurationStore second(folder.path(), std::chrono::milliseconds(0));
    ASSERT_TRUE(second.open(cause)) << cause;
    EXPECT_TRUE(second.isReadOnly());
    const std::string holder = "[60300](" + std::to_string(::getpid()) + ")";
    EXPECT_EQ(second.readOnlyReason(), "[60303](" + folder.path().string() + "," + holder + ")");
    root().NewChild("x");
    EXPECT_FALSE(second.saveIfDifferent(cause));
    EXPECT_EQ(cause, second.readOnlyReason());
  }
  EXPECT_FALSE(fs::exists(file()));
}

TEST_F(ConfigurationStoreTest, TheLockEndsWithItsHolder) {
  { ASSERT_TRUE(ConfigurationStore(folder.path()).open(cause)); }
  ConfigurationStore next(folder.path());
  ASSERT_TRUE(next.open(cause));
  EXPECT_FALSE(next.isReadOnly());
}

TEST_F(ConfigurationStoreTest, TheLockOfAProgramThatWasKilledLocksNobodyOut) {
  int told[2];
  ASSERT_EQ(::pipe(told), 0);
  const pid_t child = ::fork();
  if (child == 0) {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);  // it never outlives a test that failed
    ConfigurationStore store(folder.path());
    const char held = store.open(cause) && !store.isReadOnly() ? 'y' : 'n';
    static_cast<void>(::write(told[1], &held, 1));
    for (;;) ::pause();
  }
  char held = 0;
  ASSERT_EQ(::read(told[0], &held, 1), 1);
  ASSERT_EQ(held, 'y');
  {
    ConfigurationStore meanwhile(folder.path(), std::chrono::milliseconds(0));
    ASSERT_TRUE(meanwhile.open(cause));
    EXPECT_NE(meanwhile.readOnlyReason().find(std::to_string(child)), std::string::npos);
  }
  ::kill(child, SIGKILL);
  ASSERT_EQ(::waitpid(child, nullptr, 0), child);
  for (const int end : told) ::close(end);
  ASSERT_TRUE(fs::exists(folder / "configuration.lock")) << "the file stays; the lock does not";
  ConfigurationStore next(folder.path(), std::chrono::milliseconds(0));
  ASSERT_TRUE(next.open(cause));
  EXPECT_FALSE(next.isReadOnly()) << next.readOnlyReason();
}

TEST_F(ConfigurationStoreTest, OpenedAgainItMayWriteAndHasWhatTheOtherSaved) {
  auto first = std::make_unique<ConfigurationStore>(folder.path());
  ASSERT_TRUE(first->open(cause));
  ConfigurationStore second(folder.path(), std::chrono::milliseconds(0));
  ASSERT_TRUE(second.open(cause));
  ASSERT_TRUE(second.open(cause));
  EXPECT_TRUE(second.isReadOnly()) << "the other one still runs";
  write("<configuration><saved/></configuration>");
  first.reset();
  ASSERT_TRUE(second.open(cause));
  EXPECT_FALSE(second.isReadOnly());
  EXPECT_NE(root().Node("saved"), nullptr);
  root().NewChild("mine");
  EXPECT_TRUE(second.saveIfDifferent(cause)) << cause;
}

TEST_F(ConfigurationStoreTest, AFileThatBrokeMeanwhileLeavesWhatIsLoaded) {
  ConfigurationStore store(folder.path());
  ASSERT_TRUE(store.open(cause));
  root().NewChild("loaded");
  write("<configuration");
  EXPECT_FALSE(store.open(cause));
  EXPECT_NE(root().Node("loaded"), nullptr);
}

// --- links

TEST_F(ConfigurationStoreTest, ALinkStaysALinkAndItsLockLiesBesideTheFile) {
  const support::TempFolder elsewhere;
  elsewhere.write("street.xml",
                  "<configuration><commSystem><device/></commSystem></configuration>");
  fs::create_symlink(elsewhere / "street.xml", file());
  ConfigurationStore store(folder.path());
  ASSERT_TRUE(store.open(cause)) << cause;
  EXPECT_NE(root().Node("commSystem/device"), nullptr);
  root().NewChild("x");
  ASSERT_TRUE(store.saveIfDifferent(cause)) << cause;
  EXPECT_EQ(fs::read_symlink(file()), elsewhere / "street.xml");
  EXPECT_NE(elsewhere.read("street.xml").find("<x/>"), std::string::npos);
  EXPECT_EQ(elsewhere.listing(), "street.lock street.xml");
  EXPECT_EQ(folder.listing(), "configuration.xml configuration.xml.previous");
}

TEST_F(ConfigurationStoreTest, TwoFoldersWithLinksToOneFileHaveOneWriter) {
  const support::TempFolder elsewhere;
  const support::TempFolder other;
  elsewhere.write("configuration.xml", "<configuration/>");
  fs::create_symlink(elsewhere / "configuration.xml", file());
  fs::create_symlink(elsewhere / "configuration.xml", other / "configuration.xml");
  ConfigurationStore first(folder.path());
  ASSERT_TRUE(first.open(cause)) << cause;
  EXPECT_FALSE(first.isReadOnly());
  for (const fs::path& place : {other.path(), elsewhere.path()}) {
    ConfigurationStore second(place, std::chrono::milliseconds(0));
    ASSERT_TRUE(second.open(cause)) << cause;
    EXPECT_TRUE(second.isReadOnly()) << place;
  }
}

TEST_F(ConfigurationStoreTest, WhatAKilledProgramLeftBesideTheFileOfALinkIsTakenAwayToo) {
  const support::TempFolder elsewhere;
  elsewhere.write("street.xml", "<configuration/>");
  elsewhere.write("street.xml.new-123-1", "half");
  fs::create_symlink(elsewhere / "street.xml", file());
  ConfigurationStore store(folder.path());
  ASSERT_TRUE(store.open(cause)) << cause;
  EXPECT_EQ(elsewhere.listing(), "street.lock street.xml");
}

TEST_F(ConfigurationStoreTest, ALinkToAFileCalledAsALockIsNoLock) {
  const std::string content = "<configuration/>";
  folder.write("street.lock", content);
  fs::create_symlink("street.lock", file());
  ConfigurationStore store(folder.path());
  ASSERT_TRUE(store.open(cause)) << cause;
  EXPECT_FALSE(store.isReadOnly());
  EXPECT_EQ(folder.read("street.lock"), content);
}

TEST_F(ConfigurationStoreTest, AFolderThatIsALinkToNowhereIsToldAndNotMade) {
  fs::create_symlink(folder / "nothing", folder / "link");
  ConfigurationStore store(folder / "link");
  EXPECT_FALSE(store.open(cause));
  EXPECT_NE(cause.find((folder / "link").string()), std::string::npos) << cause;
  EXPECT_FALSE(fs::exists(folder / "nothing"));
}

// --- what a save loses

TEST_F(ConfigurationStoreTest, WhatTheNextSaveLosesIsKnownUntilItIsLost) {
  write("<configuration>\n<!-- north first -->\n<commSystem/>text</configuration>");
  {
    ConfigurationStore store(folder.path());
    ASSERT_TRUE(store.open(cause)) << cause;
    const std::string loss = "[60460]([60461](2), [60463](3),configuration.xml.previous)";
    EXPECT_EQ(store.lossOfNextSave(), loss);
    ASSERT_TRUE(store.saveIfDifferent(cause));
    EXPECT_EQ(store.lossOfNextSave(), loss) << "nothing was changed, nothing was saved";
    ConfigurationStore reader(folder.path(), std::chrono::milliseconds(0));
    ASSERT_TRUE(reader.open(cause));
    EXPECT_EQ(reader.lossOfNextSave(), "") << "it saves nothing";
    ASSERT_TRUE(store.open(cause));
    root().NewChild("x");
    ASSERT_TRUE(store.saveIfDifferent(cause)) << cause;
    EXPECT_EQ(store.lossOfNextSave(), "");
    EXPECT_NE(folder.read("configuration.xml.previous").find("north first"), std::string::npos);
  }
  ConfigurationStore next(folder.path());
  ASSERT_TRUE(next.open(cause));
  EXPECT_EQ(next.lossOfNextSave(), "");
}

// --- the version before

constexpr const char* Damaged = "<configuration>\n<commSystem";
constexpr const char* Before = "<configuration><commSystem><device/></commSystem></configuration>";

TEST_F(ConfigurationStoreTest, TheVersionBeforeOpensInPlaceOfADamagedFile) {
  write(Damaged);
  folder.write("configuration.xml.previous", Before);
  ConfigurationStore store(folder.path());
  ASSERT_FALSE(store.open(cause));
  ASSERT_TRUE(store.keptCopyOpens());
  ASSERT_TRUE(store.openKeptCopy(cause)) << cause;
  EXPECT_TRUE(store.isRecovered());
  EXPECT_NE(root().Node("commSystem/device"), nullptr);
  EXPECT_TRUE(store.saveIfDifferent(cause)) << cause;
  EXPECT_EQ(onDisk(), Damaged) << "nothing was changed, nothing is written";
}

TEST_F(ConfigurationStoreTest, SavingThenKeepsTheDamagedFileAndTheVersionBefore) {
  write(Damaged);
  folder.write("configuration.xml.previous", Before);
  folder.write("configuration.xml.damaged", "an older one");
  ConfigurationStore store(folder.path());
  ASSERT_FALSE(store.open(cause));
  ASSERT_TRUE(store.openKeptCopy(cause));
  EXPECT_EQ(store.damagedCopy(), folder / "configuration.xml.damaged-2");
  root().NewChild("changed");
  ASSERT_TRUE(store.saveIfDifferent(cause)) << cause;
  EXPECT_FALSE(store.isRecovered());
  EXPECT_NE(onDisk().find("<changed/>"), std::string::npos);
  EXPECT_EQ(folder.read("configuration.xml.damaged-2"), Damaged);
  EXPECT_EQ(folder.read("configuration.xml.damaged"), "an older one");
  EXPECT_EQ(folder.read("configuration.xml.previous"), Before);
  root().NewChild("again");
  ASSERT_TRUE(store.saveIfDifferent(cause));
  EXPECT_NE(folder.read("configuration.xml.previous").find("<changed/>"), std::string::npos)
      << "from then on as always";
}

TEST_F(ConfigurationStoreTest, ASaveThatFailsLeavesTheDamagedFileInItsPlace) {
  write(Damaged);
  folder.write("configuration.xml.previous", Before);
  ConfigurationStore store(folder.path());
  ASSERT_FALSE(store.open(cause));
  ASSERT_TRUE(store.openKeptCopy(cause));
  root().NewChild("changed");
  support::FaultyFiles files;
  files.fail(support::FaultyFiles::Operation::replace, "no");
  EXPECT_FALSE(store.saveIfDifferent(cause));
  EXPECT_TRUE(store.isRecovered());
  EXPECT_EQ(onDisk(), Damaged);
  EXPECT_EQ(folder.read("configuration.xml.previous"), Before);
}

TEST_F(ConfigurationStoreTest, WithoutAWholeVersionBeforeNoneIsOffered) {
  write(Damaged);
  ConfigurationStore store(folder.path());
  ASSERT_FALSE(store.open(cause));
  EXPECT_FALSE(store.keptCopyOpens()) << "there is none";
  for (const char* kept : {Damaged, "<calendar/>", ""}) {
    folder.write("configuration.xml.previous", kept);
    EXPECT_FALSE(store.keptCopyOpens()) << kept;
    EXPECT_FALSE(store.openKeptCopy(cause)) << kept;
  }
  EXPECT_FALSE(store.saveIfDifferent(cause));
  EXPECT_EQ(onDisk(), Damaged);
}

TEST_F(ConfigurationStoreTest, WhatAKilledProgramLeftIsTakenAwayByTheNextThatMayWrite) {
  const auto leave = [this] {
    folder.write("configuration.xml.new-123-1", "half");
    folder.write("configuration.xml.previous.new-123-2", "x");
    folder.write("configuration.xml.newer", "mine");
  };
  write("<configuration/>");
  leave();
  ConfigurationStore store(folder.path());
  ASSERT_TRUE(store.open(cause));
  EXPECT_EQ(folder.listing(), "configuration.lock configuration.xml configuration.xml.newer");
  leave();
  ConfigurationStore reader(folder.path(), std::chrono::milliseconds(0));
  ASSERT_TRUE(reader.open(cause));
  EXPECT_TRUE(fs::exists(folder / "configuration.xml.new-123-1")) << "it may be written right now";
}

TEST_F(ConfigurationStoreTest, AFailedSaveIsTriedAgain) {
  ConfigurationStore store(folder.path());
  ASSERT_TRUE(store.open(cause));
  root().NewChild("x");
  fs::create_directory(file());  // a folder in the file's place can't be replaced
  EXPECT_FALSE(store.saveIfDifferent(cause));
  EXPECT_EQ(cause.find(file().string()), cause.rfind(file().string())) << cause;
  EXPECT_NE(cause.find(file().string()), std::string::npos) << cause;
  fs::remove(file());
  EXPECT_TRUE(store.saveIfDifferent(cause)) << cause;
  EXPECT_NE(onDisk().find("<x/>"), std::string::npos);
}

}  // namespace
