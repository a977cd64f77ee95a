#include "workbench/send_journal.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <set>

#include "tests/support/temp_folder.h"

namespace {

using workbench::JournalEntry;
using workbench::JournalLimits;
using workbench::SendJournal;

JournalEntry entryOf(int command) {
  JournalEntry entry;
  entry.when = "2025-03-15T10:00:00.000Z";
  entry.who = "someone";
  entry.command = command;
  return entry;
}

std::vector<int> commandsOf(const SendJournal& journal) {
  std::vector<int> commands;
  for (const JournalEntry& entry : journal.entries([](const auto&) { return true; }, 10'000))
    commands.push_back(entry.command);
  return commands;
}

unsigned modeOf(const std::filesystem::path& path) {
  struct stat found {};
  return ::stat(path.c_str(), &found) == 0 ? found.st_mode & 0777U : 0;
}

class SendJournalTest : public testing::Test {
 protected:
  void append(const SendJournal& target, const JournalEntry& entry) {
    std::string cause;
    ASSERT_TRUE(target.append(entry, cause)) << cause;
  }

  support::TempFolder folder;
  SendJournal journal{folder / "state/journal"};
};

TEST_F(SendJournalTest, AnEntryComesBackAsItWas) {
  JournalEntry entry = entryOf(52);
  entry.program = "lamp-editor";
  entry.deviceId = "{A}";
  entry.deviceName = "Av. de la Constitución \"3\"";
  entry.address = "127.0.0.1:8080";
  entry.section = "E03";
  entry.document = "<a b=\"c\"/>\n";
  entry.before = "<b/>";
  entry.upload = {"new.tar", 5'000'000'000, "abc"};
  entry.error = "no";
  entry.milliseconds = 1234;
  append(journal, entry);
  const auto read = journal.entries([](const auto&) { return true; }, 10);
  ASSERT_EQ(read.size(), 1U);
  EXPECT_EQ(read[0].line(), entry.line());
  EXPECT_EQ(read[0].deviceName, entry.deviceName);
  EXPECT_EQ(read[0].upload->bytes, 5'000'000'000U);
  EXPECT_FALSE(read[0].ok);
}

TEST_F(SendJournalTest, FolderAndFileAreForTheirOwnerAlone) {
  append(journal, entryOf(2));
  EXPECT_EQ(modeOf(folder / "state"), 0700U);
  EXPECT_EQ(modeOf(folder / "state/journal"), 0700U);
  EXPECT_EQ(modeOf(folder / "state/journal/sends.jsonl"), 0600U);
}

TEST_F(SendJournalTest, AnOpenFolderAndFileAreClosedToOthers) {
  append(journal, entryOf(2));
  ::chmod((folder / "state/journal").c_str(), 0755);
  ::chmod((folder / "state/journal/sends.jsonl").c_str(), 0644);
  append(journal, entryOf(3));
  EXPECT_EQ(modeOf(folder / "state/journal"), 0700U);
  EXPECT_EQ(modeOf(folder / "state/journal/sends.jsonl"), 0600U);
}

TEST_F(SendJournalTest, DamagedLinesArePassedOver) {
  append(journal, entryOf(1));
  std::ofstream(folder / "state/journal/sends.jsonl", std::ios::app)
      << "no JSON\n{\"when\":1,\"who\":\"x\",\"command\":2,\"ok\":true}\n[1,2]\n\n{\"when\":\"half";
  append(journal, entryOf(2));
  EXPECT_EQ(commandsOf(journal), (std::vector{2, 1})) << "half a line must not swallow the next";
}

TEST_F(SendJournalTest, FullFilesMoveOnAndTheOldestGoes) {
  const std::size_t line = entryOf(10).line().size();
  const SendJournal small(folder / "small",
                          {.files = 3, .fileBytes = 2 * line, .entryBytes = 1000});
  for (int command = 10; command < 18; ++command) append(small, entryOf(command));
  EXPECT_EQ(commandsOf(small), (std::vector{17, 16, 15, 14, 13, 12}));
  append(small, entryOf(18));
  EXPECT_EQ(commandsOf(small), (std::vector{18, 17, 16, 15, 14}));
  EXPECT_FALSE(std::filesystem::exists(folder / "small/sends.3.jsonl"));
}

TEST_F(SendJournalTest, AnEntryLongerThanAFileGetsOneOfItsOwn) {
  const SendJournal small(folder / "small", {.files = 3, .fileBytes = 500, .entryBytes = 10'000});
  append(small, entryOf(1));
  JournalEntry longOne = entryOf(2);
  longOne.document.assign(5'000, 'x');
  append(small, longOne);
  append(small, entryOf(3));
  EXPECT_EQ(commandsOf(small), (std::vector{3, 2, 1}));
}

TEST_F(SendJournalTest, TheLatestThatAreWantedComeFirst) {
  for (int command = 1; command <= 9; ++command) append(journal, entryOf(command));
  const auto even =
      journal.entries([](const JournalEntry& entry) { return entry.command % 2 == 0; }, 3);
  ASSERT_EQ(even.size(), 3U);
  EXPECT_EQ(even[0].command, 8);
  EXPECT_EQ(even[2].command, 4);
}

TEST_F(SendJournalTest, SeveralProgramsWriteWholeLinesThroughRotations) {
  constexpr int Programs = 4;
  constexpr int Lines = 60;
  const SendJournal shared(folder / "shared",
                           {.files = 100, .fileBytes = 3'000, .entryBytes = 10'000});
  std::vector<pid_t> children;
  for (int program = 0; program < Programs; ++program) {
    const pid_t child = ::fork();
    if (child == 0) {
      std::string cause;
      bool good = true;
      for (int line = 0; line < Lines; ++line)
        good = shared.append(entryOf(program * Lines + line), cause) && good;
      ::_exit(good ? 0 : 1);
    }
    children.push_back(child);
  }
  for (const pid_t child : children) {
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
  }
  const std::vector<int> commands = commandsOf(shared);
  EXPECT_EQ(commands.size(), static_cast<std::size_t>(Programs * Lines));
  EXPECT_EQ(std::set<int>(commands.begin(), commands.end()).size(), commands.size());
}

TEST_F(SendJournalTest, WhatCantBeWrittenIsToldWithItsPlace) {
  folder.write("file", "");
  std::string cause;
  EXPECT_FALSE(SendJournal(folder / "file/journal").append(entryOf(1), cause));
  EXPECT_TRUE(cause.starts_with((folder / "file/journal").string())) << cause;
  std::filesystem::create_directories(folder / "odd/sends.jsonl");
  EXPECT_FALSE(SendJournal(folder / "odd").append(entryOf(1), cause));
}

TEST_F(SendJournalTest, ALinkInTheFilesPlaceIsNotFollowed) {
  append(journal, entryOf(1));
  const auto target = folder.write("other", "");
  std::filesystem::remove(folder / "state/journal/sends.jsonl");
  std::filesystem::create_symlink(target, folder / "state/journal/sends.jsonl");
  std::string cause;
  EXPECT_FALSE(journal.append(entryOf(2), cause));
  EXPECT_EQ(folder.read("other"), "");
}

}  // namespace
