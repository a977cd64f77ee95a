#include "workbench/configuration_store.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "host/services/files.h"
#include "host/services/setup.h"
#include "tests/support/temp_folder.h"

namespace {

namespace fs = std::filesystem;
using workbench::ConfigurationStore;

class ConfigurationStoreTest : public testing::Test {
 protected:
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
  EXPECT_NE(cause.find(file().string()), std::string::npos) << cause;
  EXPECT_NE(cause.find("line 3"), std::string::npos) << cause;
  EXPECT_FALSE(store.saveIfDifferent(cause));
  EXPECT_EQ(onDisk(), broken);
}

TEST_F(ConfigurationStoreTest, AnotherRootElementIsNoConfiguration) {
  write("<calendar/>");
  ConfigurationStore store(folder.path());
  EXPECT_FALSE(store.open(cause));
  EXPECT_NE(cause.find("\"calendar\""), std::string::npos) << cause;
}

TEST_F(ConfigurationStoreTest, TheSecondOpenerReadsAndDoesNotWrite) {
  ConfigurationStore first(folder.path());
  ASSERT_TRUE(first.open(cause));
  EXPECT_FALSE(first.isReadOnly());
  {
    ConfigurationStore second(folder.path(), std::chrono::milliseconds(0));
    ASSERT_TRUE(second.open(cause)) << cause;
    EXPECT_TRUE(second.isReadOnly());
    EXPECT_NE(second.readOnlyReason().find("process " + std::to_string(::getpid())),
              std::string::npos)
        << second.readOnlyReason();
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

TEST_F(ConfigurationStoreTest, AFailedSaveIsTriedAgain) {
  ConfigurationStore store(folder.path());
  ASSERT_TRUE(store.open(cause));
  root().NewChild("x");
  fs::create_directory(file());  // a folder in the file's place can't be replaced
  EXPECT_FALSE(store.saveIfDifferent(cause));
  EXPECT_NE(cause.find("configuration.xml"), std::string::npos) << cause;
  fs::remove(file());
  EXPECT_TRUE(store.saveIfDifferent(cause)) << cause;
  EXPECT_NE(onDisk().find("<x/>"), std::string::npos);
}

}  // namespace
