#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <set>

#include "host/services/files.h"
#include "host/services/setup.h"
#include "tests/support/temp_folder.h"
#include "tests/support/texts.h"
#include "tests/workbench/killed/deadly_calls.h"
#include "workbench/configuration_store.h"

namespace {

namespace fs = std::filesystem;
using test::DeadlyCalls;
using workbench::ConfigurationStore;

constexpr const char* Name = "configuration.xml";
constexpr const char* Kept = "configuration.xml.previous";
constexpr const char* Aside = "configuration.xml.damaged";

constexpr int SaveFailed = 3;

/// What lies in the folder before the save, and under which name the file of that moment stays.
struct Start {
  const char* what;
  std::string file;      // empty for none
  std::string previous;  // empty for none
  const char* keptAs;
};

void PrintTo(const Start& start, std::ostream* out) {
  *out << start.what;
}

std::string configuration(std::string_view mark) {
  return "<configuration><commSystem><device><name>" + std::string(mark) +
         "</name></device></commSystem></configuration>";
}

std::string contentOf(const fs::path& file) {
  std::string content;
  std::string ignored;
  return host::readFile(file, 1'000'000, content, ignored) ? content : std::string();
}

class KilledSave : public testing::TestWithParam<Start> {
 protected:
  static void SetUpTestSuite() { support::texts(); }
  void TearDown() override { XCMainCfg::Get().Document().Clear(); }

  static bool openEither(ConfigurationStore& store) {
    std::string cause;
    return store.open(cause) || store.openKeptCopy(cause);
  }
  static void change() {
    XmlDocument::XmlNode& root = *XCMainCfg::Get().Root();
    for (int i = 0; i < 200; ++i)
      root.Node("commSystem")->NewChild("device").SetValue("name", u"new");
  }

  // What the save will write.
  static std::string newContent() {
    const support::TempFolder folder;
    prepare(folder);
    ConfigurationStore store(folder.path());
    if (!openEither(store)) return "";
    change();
    return store.text();
  }

  static void prepare(const support::TempFolder& folder) {
    if (!GetParam().file.empty()) folder.write(Name, GetParam().file);
    if (!GetParam().previous.empty()) folder.write(Kept, GetParam().previous);
  }

  // Saves in a process that dies at a moment of it; the status as waitpid gives it.
  static int saveInChild(const fs::path& folder, long fatalMoment) {
    const pid_t child = ::fork();
    if (child == 0) {
      ConfigurationStore store(folder);
      if (!openEither(store)) ::_exit(2);
      change();
      std::string cause;
      DeadlyCalls::arm(fatalMoment);
      const bool saved = store.saveIfDifferent(cause);
      ::_exit(saved ? 0 : SaveFailed);
    }
    int status = -1;
    ::waitpid(child, &status, 0);
    return status;
  }
};

TEST_P(KilledSave, LeavesTheOldOrTheNewConfigurationWholeWhereverItIsKilled) {
  const Start& start = GetParam();
  const std::string wanted = newContent();
  ASSERT_FALSE(wanted.empty());
  std::set<std::string> seen;
  bool isNew = false;
  long moment = 1;
  for (;; ++moment) {
    ASSERT_LT(moment, 500) << "the save never goes through";
    SCOPED_TRACE("killed at moment " + std::to_string(moment));
    const support::TempFolder folder;
    prepare(folder);
    const int status = saveInChild(folder.path(), moment);
    const std::string file = contentOf(folder / Name);
    const std::string previous = contentOf(folder / Kept);
    const std::string kept = contentOf(folder / start.keptAs);

    EXPECT_TRUE(file == start.file || file == wanted) << file;
    EXPECT_FALSE(isNew && file == start.file) << "once new it stays new";
    isNew = file == wanted;
    EXPECT_TRUE(previous == start.previous || previous == start.file) << previous;
    EXPECT_EQ(isNew ? kept : start.file, start.file) << "the file of before is not lost";
    seen.insert(file == wanted ? "new" : "old");

    // The next program goes on as if nothing had happened.
    ConfigurationStore next(folder.path(), std::chrono::milliseconds(0));
    ASSERT_TRUE(openEither(next));
    EXPECT_FALSE(next.isReadOnly()) << "the lock of the dead";
    EXPECT_EQ(folder.listing().find(".new"), std::string::npos) << folder.listing();
    XCMainCfg::Get().Root()->NewChild("more");
    std::string cause;
    EXPECT_TRUE(next.saveIfDifferent(cause)) << cause;
    EXPECT_EQ(contentOf(folder / Name), next.text());

    if (WIFEXITED(status)) {
      EXPECT_EQ(WEXITSTATUS(status), 0);
      break;
    }
    ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << status;
  }
  EXPECT_TRUE(isNew);
  EXPECT_EQ(seen.size(), 2U) << "killed both before and after the file got its name";

  // That each of these operations was a moment of the last round, which died at none.
  const auto counted = DeadlyCalls::counted();
  EXPECT_GE(counted.at("open"), 2) << "the new file, and the folder";
  EXPECT_GE(counted.at("write"), 2);
  EXPECT_EQ(counted.at("fsync"), 2) << "the new file, and the folder";
  EXPECT_EQ(counted.at("rename"), start.file.empty() ? 1 : 2);
  EXPECT_EQ(counted.count("link"), start.file.empty() ? 0U : 1U);
  EXPECT_GE(moment, 8);
}

INSTANTIATE_TEST_SUITE_P(
    From, KilledSave,
    testing::Values(Start{"Nothing", "", "", Kept},
                    Start{"OneVersion", configuration("old"), "", Kept},
                    Start{"TwoVersions", configuration("old"), configuration("older"), Kept},
                    Start{"ADamagedFile", "<configuration><comm", configuration("older"), Aside}),
    [](const auto& start) { return std::string(start.param.what); });

}  // namespace
