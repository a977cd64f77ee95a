#include "controller/storage/state_storage.h"

#include <gtest/gtest.h>

#include "controller/storage/checksum.h"
#include "controller/storage/journal_frame.h"
#include "tests/controller/support/memory_disk.h"

namespace lamp::controller::test {
namespace {

constexpr const char* kState = "d/s";
constexpr const char* kFirst = "d/s.journal-1";
constexpr const char* kSecond = "d/s.journal-2";

// A storage that has kept the state "base" and, since then, "one", "two" and "three".
class StateStorageTest : public testing::Test {
 protected:
  void SetUp() override {
    StateStorage storage(disk, kState);
    begin(storage, "base");
    for (const char* change : {"one\n", "two\n", "three\n"}) EXPECT_EQ(storage.append(change), "");
  }
  static void begin(StateStorage& storage, const std::string& state) {
    ASSERT_EQ(storage.beginJournal(), "");
    ASSERT_EQ(storage.writeState(state, storage.journal()), "");
  }
  // What the storage finds, as one text: the state without its head, and the changes.
  std::string found() {
    KeptState kept;
    StateStorage storage(disk, kState);
    fault = storage.load(kept);
    notice = kept.notice;
    if (!fault.empty()) return "fault";
    std::string text = kept.state.substr(kept.state.find('\n') + 1) + ":";
    for (const std::string_view change : kept.journal.changes) text += change;
    return text;
  }

  MemoryDisk disk;
  std::string fault;
  std::string notice;
};

TEST(Checksum, IsTheOneOfTheStandard) {
  EXPECT_EQ(checksumOf("123456789"), 0xCBF43926U);
  EXPECT_EQ(checksumOf(""), 0U);
  const std::string text = "The checksum of a text in two parts is that of the whole.";
  for (std::size_t i = 0; i <= text.size(); ++i) {
    EXPECT_EQ(checksumOf(text.substr(i), checksumOf(text.substr(0, i))), checksumOf(text));
  }
}

TEST_F(StateStorageTest, BringsBackTheStateAndItsChanges) {
  EXPECT_EQ(found(), "base:one\ntwo\nthree\n");
  EXPECT_EQ(notice, "");
}

TEST_F(StateStorageTest, GoesOnBehindTheLastChange) {
  KeptState kept;
  StateStorage storage(disk, kState);
  ASSERT_EQ(storage.load(kept), "");
  ASSERT_EQ(storage.resume(kept), "");
  ASSERT_EQ(storage.append("four\n"), "");
  EXPECT_EQ(found(), "base:one\ntwo\nthree\nfour\n");
}

TEST_F(StateStorageTest, ANewStateBeginsANewJournalAndDropsTheOldOne) {
  KeptState kept;
  StateStorage storage(disk, kState);
  ASSERT_EQ(storage.load(kept), "");
  ASSERT_EQ(storage.resume(kept), "");
  begin(storage, "new");
  ASSERT_EQ(storage.append("four\n"), "");
  EXPECT_EQ(found(), "new:four\n");
  EXPECT_FALSE(disk.has(kFirst));
}

TEST_F(StateStorageTest, ACutTailIsRecognisedAndCutOff) {
  const std::string whole = disk.content(kFirst);
  const std::size_t last = journalFrame(3, "three\n").size();
  for (std::size_t missing = 1; missing <= last; ++missing) {
    disk.content(kFirst) = whole.substr(0, whole.size() - missing);
    EXPECT_EQ(found(), "base:one\ntwo\n") << missing;
    EXPECT_EQ(notice.empty(), missing == last) << notice;
  }
  disk.content(kFirst) = whole.substr(0, whole.size() - 1);
  KeptState kept;
  StateStorage storage(disk, kState);
  ASSERT_EQ(storage.load(kept), "");
  ASSERT_EQ(storage.resume(kept), "");
  EXPECT_EQ(disk.content(kFirst), whole.substr(0, whole.size() - last));
  ASSERT_EQ(storage.append("again\n"), "");
  EXPECT_EQ(found(), "base:one\ntwo\nagain\n");
}

TEST_F(StateStorageTest, AnyDamagedBitOfTheLastChangeIsRefused) {
  const std::string whole = disk.content(kFirst);
  for (std::size_t at = whole.size() - journalFrame(3, "three\n").size(); at < whole.size(); ++at) {
    for (int bit = 0; bit < 8; ++bit) {
      std::string damaged = whole;
      damaged[at] = static_cast<char>(damaged[at] ^ (1 << bit));
      disk.content(kFirst) = damaged;
      // A checksum is the same in letters of either case.
      if (found() == "base:one\ntwo\nthree\n") continue;
      EXPECT_EQ(found(), "fault") << at << ", bit " << bit << ": it had been confirmed";
      EXPECT_NE(fault.find("d/s.journal-1 is damaged at byte"), std::string::npos) << fault;
    }
  }
}

TEST_F(StateStorageTest, AFileThatGrewBeforeItsBytesCameWasNotConfirmed) {
  disk.content(kFirst) += std::string(100, '\0');
  EXPECT_EQ(found(), "base:one\ntwo\nthree\n");
  EXPECT_NE(notice, "");
}

TEST_F(StateStorageTest, ADamagedStateIsRefusedAndSaysSo) {
  const std::string whole = disk.content(kState);
  for (std::size_t at = whole.find('\n') + 1; at < whole.size(); ++at) {
    std::string damaged = whole;
    damaged[at] = static_cast<char>(damaged[at] ^ 1);
    disk.content(kState) = damaged;
    EXPECT_EQ(found(), "fault") << at;
    EXPECT_NE(fault.find("d/s is damaged"), std::string::npos) << fault;
  }
}

TEST_F(StateStorageTest, DamageBeforeTheTailIsRefusedAndSaysWhere) {
  const std::string whole = disk.content(kFirst);
  const std::size_t behind = whole.size() - journalFrame(3, "three\n").size();
  for (std::size_t at = 0; at < behind; ++at) {
    std::string damaged = whole;
    damaged[at] = static_cast<char>(damaged[at] ^ 4);
    disk.content(kFirst) = damaged;
    EXPECT_EQ(found(), "fault") << at;
    EXPECT_NE(fault.find("d/s.journal-1 is damaged at byte"), std::string::npos) << fault;
    EXPECT_EQ(disk.content(kFirst), damaged);
  }
}

TEST_F(StateStorageTest, AJournalThatFollowsIsReadToo) {
  KeptState kept;
  StateStorage storage(disk, kState);
  ASSERT_EQ(storage.load(kept), "");
  ASSERT_EQ(storage.resume(kept), "");
  ASSERT_EQ(storage.beginJournal(), "");  // and the state is not written any more
  EXPECT_EQ(found(), "base:one\ntwo\nthree\n");
  ASSERT_EQ(storage.append("four\n"), "");
  EXPECT_EQ(found(), "base:one\ntwo\nthree\nfour\n");
  // What was never confirmed in the first one does not come between.
  disk.content(kFirst) += "R 00000";
  EXPECT_EQ(found(), "base:one\ntwo\nthree\nfour\n");
  disk.content(kFirst).resize(disk.content(kFirst).size() - 20);
  EXPECT_EQ(found(), "fault");
  disk.erase(kFirst);
  EXPECT_EQ(found(), "fault");
  EXPECT_NE(fault.find("d/s.journal-1 is missing, but d/s.journal-2 follows it"),
            std::string::npos);
}

TEST_F(StateStorageTest, AChangeInANewJournalOutlivesTheMachineBeforeItsStateIsWritten) {
  KeptState kept;
  StateStorage storage(disk, kState);
  ASSERT_EQ(storage.load(kept), "");
  ASSERT_EQ(storage.resume(kept), "");
  ASSERT_EQ(storage.beginJournal(), "");
  ASSERT_EQ(storage.append("four\n"), "");
  MemoryDisk after(disk, MemoryDisk::Survivor::Flushed);
  KeptState later;
  ASSERT_EQ(StateStorage(after, kState).load(later), "");
  ASSERT_EQ(later.journal.changes.size(), 4U);
  EXPECT_EQ(later.journal.changes[3], "four\n");
}

TEST_F(StateStorageTest, AJournalOfAnotherStateIsRefused) {
  MemoryDisk other;
  StateStorage storage(other, kState);
  begin(storage, "other");
  ASSERT_EQ(storage.append("foreign\n"), "");
  disk.content(kFirst) = other.content(kFirst);
  EXPECT_EQ(found(), "fault");
  EXPECT_NE(fault.find("belongs to another state"), std::string::npos) << fault;
}

TEST_F(StateStorageTest, AMissingJournalIsRefused) {
  disk.erase(kFirst);
  EXPECT_EQ(found(), "fault");
  EXPECT_NE(fault.find("d/s.journal-1 is missing"), std::string::npos) << fault;
}

TEST_F(StateStorageTest, ChangesWithoutTheirStateAreRefused) {
  disk.erase(kState);
  EXPECT_EQ(found(), "fault");
  EXPECT_NE(fault.find("d/s itself is missing"), std::string::npos) << fault;
}

TEST(StateStorage, AStateWithoutAJournalIsReadAndGetsOne) {
  MemoryDisk disk;
  std::string fault;
  ASSERT_EQ(disk.create(kState, fault)->append("<old/>"), "");
  KeptState kept;
  StateStorage storage(disk, kState);
  ASSERT_EQ(storage.load(kept), "");
  EXPECT_TRUE(kept.found);
  EXPECT_EQ(kept.state, "<old/>");
  ASSERT_EQ(storage.resume(kept), "");
  EXPECT_FALSE(storage.hasJournal());
  EXPECT_NE(storage.append("x"), "");
  ASSERT_EQ(storage.beginJournal(), "");
  EXPECT_EQ(storage.append("x"), "");
}

TEST(StateStorage, FindsNothingInAnEmptyFolder) {
  MemoryDisk disk;
  KeptState kept;
  EXPECT_EQ(StateStorage(disk, kState).load(kept), "");
  EXPECT_FALSE(kept.found);
}

}  // namespace
}  // namespace lamp::controller::test
