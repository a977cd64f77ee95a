#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "host/services/files.h"
#include "host/services/setup.h"
#include "tests/support/odd_file.h"
#include "tests/support/temp_folder.h"
#include "tests/support/texts.h"
#include "workbench/configuration_store.h"
#include "workbench/draft_store.h"
#include "workbench/send_journal.h"
#include "workbench/trusted_certificates.h"

// Each kind of file that the programs open, with each odd thing in its place: nothing is waited
// for, nothing of a stranger's is changed, and what can't be used is told with its name and why.

namespace {

namespace fs = std::filesystem;
using host::NamedBy;
using support::Odd;
using support::OddFile;
using support::TempFolder;
using testing::HasSubstr;
using workbench::ConfigurationStore;

constexpr const char* Good =
    "<configuration><commSystem><device><name>North</name></device></commSystem></configuration>";

class OddFiles : public testing::Test {
 protected:
  OddFiles() { support::texts(); }
  ~OddFiles() override { XCMainCfg::Get().Document().Clear(); }

  void expectTold(const fs::path& file, const std::string& why) const {
    EXPECT_THAT(cause, HasSubstr(file.string()));
    EXPECT_THAT(cause, HasSubstr(why));
  }
  // Changes what is loaded and saves it.
  bool changeAndSave(ConfigurationStore& store) {
    XCMainCfg::Get().Root()->NewChild("changed");
    return store.saveIfDifferent(cause);
  }

  std::string cause;
};

// Runs a test over every odd thing at a name in a folder of its own.
void forEachOdd(const std::string& name, std::string_view good,
                const std::function<void(const TempFolder&, Odd, const OddFile&)>& test) {
  for (const Odd odd : support::AllOdd) {
    SCOPED_TRACE(nameOf(odd) + " in place of " + name);
    const TempFolder folder;
    fs::create_directories((folder / name).parent_path());
    fs::permissions(folder.path(), fs::perms(0711));
    const OddFile thing(folder / name, odd, good);
    test(folder, odd, thing);
  }
}

bool isGoodFile(Odd odd) {
  return odd == Odd::secondName || odd == Odd::linkToStranger;
}

TEST_F(OddFiles, InPlaceOfTheConfiguration) {
  forEachOdd("configuration.xml", Good,
             [&](const TempFolder& folder, Odd odd, const OddFile& thing) {
               cause.clear();
               ConfigurationStore store(folder.path());
               EXPECT_EQ(store.open(cause), isGoodFile(odd));
               EXPECT_TRUE(thing.isUntouched());
               if (!isGoodFile(odd)) {
                 expectTold(folder / "configuration.xml", thing.refusal(NamedBy::person));
                 EXPECT_FALSE(store.saveIfDifferent(cause));
                 EXPECT_TRUE(thing.isUntouched());
                 return;
               }
               ASSERT_TRUE(changeAndSave(store)) << cause;
               EXPECT_EQ(folder.read("configuration.xml.previous"), Good);
               EXPECT_THAT(folder.read("configuration.xml"), HasSubstr("<changed/>"));
               // A link is the person's wish that the file it leads to is the configuration.
               EXPECT_EQ(thing.isStrangerUntouched(), odd == Odd::secondName);
               EXPECT_EQ(fs::is_symlink(folder / "configuration.xml"), odd == Odd::linkToStranger);
             });
}

TEST_F(OddFiles, InPlaceOfTheVersionBeforeWhenItIsToBeRead) {
  forEachOdd("configuration.xml.previous", Good,
             [&](const TempFolder& folder, Odd odd, const OddFile& thing) {
               folder.write("configuration.xml", "<configuration>");
               ConfigurationStore store(folder.path());
               ASSERT_FALSE(store.open(cause));
               EXPECT_EQ(store.keptCopyOpens(), odd == Odd::secondName);
               cause.clear();
               EXPECT_EQ(store.openKeptCopy(cause), odd == Odd::secondName);
               if (odd != Odd::secondName)
                 expectTold(folder / "configuration.xml.previous", thing.refusal(NamedBy::program));
               EXPECT_TRUE(thing.isUntouched());
             });
}

TEST_F(OddFiles, InPlaceOfTheVersionBeforeWhenItIsToBeKept) {
  forEachOdd("configuration.xml.previous", Good,
             [&](const TempFolder& folder, Odd odd, const OddFile& thing) {
               folder.write("configuration.xml", Good);
               ConfigurationStore store(folder.path());
               ASSERT_TRUE(store.open(cause)) << cause;
               const std::string refusal = thing.refusal(NamedBy::program);
               const bool isFile = refusal.empty() || odd == Odd::huge || odd == Odd::unreadable;
               EXPECT_EQ(changeAndSave(store), isFile) << cause;
               EXPECT_TRUE(thing.isStrangerUntouched());
               if (isFile) return;
               expectTold("configuration.xml.previous", refusal);
               EXPECT_TRUE(thing.isUntouched());
               EXPECT_EQ(folder.read("configuration.xml"), Good);
             });
}

// A sparse file holds zeros, which no lock does.
std::string refusalOfLock(const OddFile& thing, Odd odd) {
  return odd == Odd::huge ? "It holds something else than a lock" : thing.refusalToChange();
}

TEST_F(OddFiles, InPlaceOfTheLockOfTheConfiguration) {
  forEachOdd("configuration.lock", "1234\n",
             [&](const TempFolder& folder, Odd odd, const OddFile& thing) {
               ConfigurationStore store(folder.path(), std::chrono::milliseconds(0));
               EXPECT_TRUE(store.open(cause)) << cause;
               const std::string refusal = refusalOfLock(thing, odd);
               EXPECT_EQ(store.isReadOnly(), !refusal.empty());
               EXPECT_TRUE(thing.isStrangerUntouched());
               if (refusal.empty()) return;
               cause = store.readOnlyReason();
               expectTold(folder / "configuration.lock", refusal);
               EXPECT_TRUE(thing.isUntouched());
             });
}

TEST_F(OddFiles, AFileThatIsNoLockIsNotEmptied) {
  const TempFolder folder;
  folder.write("configuration.lock", "my notes");
  ConfigurationStore store(folder.path(), std::chrono::milliseconds(0));
  EXPECT_TRUE(store.open(cause));
  cause = store.readOnlyReason();
  expectTold(folder / "configuration.lock", "It holds something else than a lock");
  EXPECT_EQ(folder.read("configuration.lock"), "my notes");
}

workbench::JournalEntry entryOf(int command) {
  workbench::JournalEntry entry;
  entry.when = "2025-03-15T10:00:00.000Z";
  entry.command = command;
  return entry;
}

std::size_t countOf(const workbench::SendJournal& journal, std::string& problem) {
  return journal.entries([](const auto&) { return true; }, 100, &problem).size();
}

TEST_F(OddFiles, InPlaceOfTheJournal) {
  const std::string good = entryOf(1).line();
  forEachOdd("journal/sends.jsonl", good,
             [&](const TempFolder& folder, Odd odd, const OddFile& thing) {
               const workbench::SendJournal journal(folder / "journal");
               std::string problem;
               countOf(journal, problem);
               const std::string unread = thing.refusal(NamedBy::program);
               EXPECT_EQ(problem.empty(), unread.empty()) << problem;
               EXPECT_THAT(problem, HasSubstr(unread));

               cause.clear();
               const std::string refusal = thing.refusalToChange();
               EXPECT_EQ(journal.append(entryOf(2), cause), refusal.empty()) << cause;
               EXPECT_TRUE(thing.isStrangerUntouched());
               if (!refusal.empty()) {
                 expectTold(folder / "journal/sends.jsonl", refusal);
                 EXPECT_TRUE(thing.isUntouched());
                 return;
               }
               EXPECT_THAT(folder.read("journal/sends.jsonl"), HasSubstr("\"command\":2"));
               // A huge one has made room for a new one, and is told of when it is read.
               EXPECT_EQ(countOf(journal, problem), 1U);
               EXPECT_EQ(problem.empty(), odd != Odd::huge) << problem;
             });
}

TEST_F(OddFiles, InPlaceOfTheLockOfTheJournal) {
  forEachOdd("journal/sends.lock", "1234\n",
             [&](const TempFolder& folder, Odd odd, const OddFile& thing) {
               const workbench::SendJournal journal(folder / "journal");
               EXPECT_TRUE(journal.append(entryOf(2), cause)) << "what was sent is kept";
               const std::string refusal = refusalOfLock(thing, odd);
               EXPECT_EQ(cause.empty(), refusal.empty()) << cause;
               if (!refusal.empty()) expectTold(folder / "journal/sends.lock", refusal);
               EXPECT_TRUE(thing.isStrangerUntouched());
               std::string problem;
               EXPECT_EQ(countOf(journal, problem), 1U);
             });
}

TEST_F(OddFiles, InPlaceOfADraft) {
  const workbench::Draft draft{"2025-03-15T10:00:00.000Z", {{{"name", u"typed"}}, {}, {}}};
  const TempFolder model;
  workbench::DraftStore writer(model.path(), "{A}", "E01");
  ASSERT_TRUE(writer.save(draft));
  const std::string name = writer.file().filename().string();
  forEachOdd(name, model.read(name), [&](const TempFolder& folder, Odd odd, const OddFile& thing) {
    workbench::DraftStore store(folder.path(), "{A}", "E01");
    const std::string refusal = thing.refusal(NamedBy::program);
    const bool isDamaged = odd == Odd::empty || odd == Odd::truncated;
    EXPECT_EQ(store.load().has_value(), odd == Odd::secondName);
    cause = store.problem();
    EXPECT_EQ(cause.empty(), odd == Odd::secondName) << cause;
    if (!cause.empty()) expectTold(folder / name, isDamaged ? "It is damaged" : refusal);
    EXPECT_EQ(fs::exists(folder / (name + ".damaged")), isDamaged);
    // What could not be read is neither written over nor taken away.
    EXPECT_EQ(store.save(draft), refusal.empty());
    store.drop();
    EXPECT_EQ(thing.isUntouched(), !refusal.empty());
    EXPECT_TRUE(thing.isStrangerUntouched());
  });
}

TEST_F(OddFiles, InPlaceOfTheLockOfADraft) {
  const TempFolder model;
  const workbench::DraftStore names(model.path(), "{A}", "E01");
  const std::string name = names.file().stem().string() + ".lock";
  forEachOdd(name, "1234\n", [&](const TempFolder& folder, Odd odd, const OddFile& thing) {
    workbench::DraftStore store(folder.path(), "{A}", "E01");
    const std::string refusal = refusalOfLock(thing, odd);
    EXPECT_EQ(store.isHeld(), refusal.empty());
    cause = store.problem();
    EXPECT_EQ(cause.empty(), refusal.empty()) << cause;
    if (!refusal.empty()) expectTold(folder / name, refusal);
    EXPECT_TRUE(thing.isStrangerUntouched());
  });
}

TEST_F(OddFiles, InPlaceOfTheTrustedCertificates) {
  const std::string print(64, 'a');
  forEachOdd("trust/certificates.json", "{\"a:1\":\"" + print + "\"}\n",
             [&](const TempFolder& folder, Odd odd, const OddFile& thing) {
               const fs::path file = folder / "trust/certificates.json";
               const workbench::TrustedCertificates trust(file);
               const bool isGood = odd == Odd::secondName;
               std::string problem;
               EXPECT_EQ(trust.find("a:1", &problem).has_value(), isGood);
               EXPECT_EQ(problem.empty(), isGood) << problem;
               EXPECT_EQ(trust.trust("b:1", print, cause), isGood);
               EXPECT_EQ(trust.forget("a:1", cause), isGood);
               EXPECT_TRUE(thing.isStrangerUntouched());
               if (isGood) return;
               cause = problem;
               expectTold(file, thing.refusal(NamedBy::program));
               EXPECT_TRUE(thing.isUntouched()) << "what can't be read is not replaced";
             });
}

}  // namespace
