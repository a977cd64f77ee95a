#include "host/services/files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/support/faulty_files.h"
#include "tests/support/odd_file.h"
#include "tests/support/temp_folder.h"

using Operation = support::FaultyFiles::Operation;
using support::FaultyFiles;
using support::TempFolder;
using testing::Each;
using testing::EndsWith;
using testing::HasSubstr;

namespace {

namespace fs = std::filesystem;

class Files : public testing::Test {
 protected:
  TempFolder folder;
  std::string cause;
  std::string content;
};

// --- reading

TEST_F(Files, AFileIsReadWhole) {
  using namespace std::string_literals;
  const std::string bytes = "a\0b\xFF\r\n"s + std::string(200000, 'x');
  EXPECT_TRUE(host::readFile(folder.write("x", bytes), 1000000, content, cause)) << cause;
  EXPECT_EQ(content, bytes);
  EXPECT_TRUE(host::readFile(folder.write("empty", ""), 0, content, cause)) << cause;
  EXPECT_EQ(content, "");
}

TEST_F(Files, TheLimitIsExact) {
  const auto file = folder.write("x", "12345");
  EXPECT_TRUE(host::readFile(file, 5, content, cause));
  EXPECT_FALSE(host::readFile(file, 4, content, cause));
  EXPECT_EQ(cause, "File too large");
}

TEST_F(Files, WhatCantBeReadIsTold) {
  EXPECT_FALSE(host::readFile(folder / "none", 10, content, cause));
  EXPECT_EQ(cause, "No such file or directory");
  EXPECT_FALSE(host::readFile(folder.path(), 10, content, cause)) << "a folder";
  EXPECT_FALSE(host::readFile("", 10, content, cause));
}

// --- saving

TEST_F(Files, SavingMakesAFileForItsOwnerAlone) {
  ASSERT_TRUE(host::saveWhole(folder / "x", "content", cause)) << cause;
  EXPECT_EQ(folder.read("x"), "content");
  EXPECT_EQ(folder.listing(), "x") << "no copy where nothing was before, no file left behind";
  struct stat status {};
  ASSERT_EQ(::stat((folder / "x").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777U, 0600U);
}

TEST_F(Files, SavingKeepsTheVersionBefore) {
  ASSERT_TRUE(host::saveWhole(folder / "x", "one", cause));
  ASSERT_TRUE(host::saveWhole(folder / "x", "two", cause));
  EXPECT_EQ(folder.read("x"), "two");
  EXPECT_EQ(folder.read("x.previous"), "one");
  ASSERT_TRUE(host::saveWhole(folder / "x", "three", cause));
  EXPECT_EQ(folder.read("x"), "three");
  EXPECT_EQ(folder.read("x.previous"), "two");
  EXPECT_EQ(folder.listing(), "x x.previous");
  EXPECT_EQ(host::keptCopy(folder / "x"), folder / "x.previous");
}

TEST_F(Files, TheVersionBeforeMayBeKeptUnderAnotherName) {
  folder.write("x", "damaged");
  folder.write("x.previous", "good");
  ASSERT_TRUE(host::saveWholeKeeping(folder / "x", "new", folder / "x.damaged", cause)) << cause;
  EXPECT_EQ(folder.read("x"), "new");
  EXPECT_EQ(folder.read("x.damaged"), "damaged");
  EXPECT_EQ(folder.read("x.previous"), "good");
}

TEST_F(Files, TheKeptCopyIsNotTheSavedFile) {
  ASSERT_TRUE(host::saveWhole(folder / "x", "one", cause));
  ASSERT_TRUE(host::saveWhole(folder / "x", "two", cause));
  EXPECT_FALSE(std::filesystem::equivalent(folder / "x", folder / "x.previous"));
}

TEST_F(Files, AtEveryFailureTheOldContentStays) {
  struct Row {
    Operation operation;
    const char* what;
  };
  const Row rows[] = {{Operation::writeNew, "writing"},
                      {Operation::keep, "keeping the old one"},
                      {Operation::replace, "renaming"}};
  for (const Row& row : rows) {
    const TempFolder place;
    place.write("x", "old");
    FaultyFiles files;
    files.fail(row.operation, "the disk is on fire");
    EXPECT_FALSE(host::saveWhole(place / "x", "new", cause)) << row.what;
    EXPECT_EQ(cause, "the disk is on fire");
    EXPECT_EQ(place.read("x"), "old") << row.what;
    EXPECT_EQ(place.listing().find("new-"), std::string::npos) << place.listing();
    files.repair();
    EXPECT_TRUE(host::saveWhole(place / "x", "new", cause)) << cause;
    EXPECT_EQ(place.read("x"), "new");
  }
}

TEST_F(Files, AHalfWrittenFileNeverGetsTheName) {
  folder.write("x", "old");
  FaultyFiles files;
  files.failHalfWritten("No space left on device");
  EXPECT_FALSE(host::saveWhole(folder / "x", "new content", cause));
  EXPECT_EQ(folder.read("x"), "old");
  EXPECT_EQ(folder.listing(), "x") << "the half is taken away";
}

TEST_F(Files, TheNewFileIsWholeBeforeTheOldOneIsTouched) {
  folder.write("x", "old");
  FaultyFiles files;
  ASSERT_TRUE(host::saveWhole(folder / "x", "new", cause));
  EXPECT_THAT(files.calls(),
              testing::ElementsAre(Operation::writeNew, Operation::keep, Operation::replace));
}

TEST_F(Files, SavingIntoAMissingFolderIsTold) {
  EXPECT_FALSE(host::saveWhole(folder / "none/x", "new", cause));
  EXPECT_EQ(cause, "No such file or directory");
  EXPECT_FALSE(host::saveWhole(folder.path(), "new", cause)) << "a folder has the name";
}

TEST_F(Files, AFreshNameNeverFollowsALinkThatSomeoneLeft) {
  folder.write("victim", "keep me");
  std::string name = "x.new-" + std::to_string(::getpid());
  for (int i = 0; i < 50; ++i)
    std::filesystem::create_symlink(folder / "victim", folder / (name + "-" + std::to_string(i)));
  for (int i = 0; i < 3; ++i) ASSERT_TRUE(host::saveWhole(folder / "x", "new", cause)) << cause;
  EXPECT_EQ(folder.read("victim"), "keep me");
}

// --- links, and other names of a file

TEST_F(Files, ASaveThroughALinkKeepsTheLinkAndReplacesTheFileThatItLeadsTo) {
  const TempFolder elsewhere;
  elsewhere.write("real", "one");
  fs::create_symlink(elsewhere / "real", folder / "second");
  fs::create_symlink("second", folder / "x");
  ASSERT_TRUE(host::saveWhole(folder / "x", "two", cause)) << cause;
  EXPECT_EQ(fs::read_symlink(folder / "x"), "second");
  EXPECT_EQ(elsewhere.read("real"), "two");
  EXPECT_EQ(elsewhere.listing(), "real") << "the new file was made beside the file it replaces";
  EXPECT_EQ(folder.read("x.previous"), "one") << "beside the name that the person uses";
  ASSERT_TRUE(host::saveWhole(folder / "x", "three", cause)) << cause;
  EXPECT_EQ(elsewhere.read("real"), "three");
  EXPECT_EQ(folder.read("x.previous"), "two");
}

TEST_F(Files, ASaveThroughALinkThatLeadsNowhereMakesTheFile) {
  fs::create_symlink("real", folder / "x");
  ASSERT_TRUE(host::saveWhole(folder / "x", "one", cause)) << cause;
  EXPECT_TRUE(fs::is_symlink(folder / "x"));
  EXPECT_EQ(folder.read("real"), "one");
  fs::create_symlink("none/real", folder / "y");
  EXPECT_FALSE(host::saveWhole(folder / "y", "one", cause));
  EXPECT_EQ(cause, "No such file or directory");
}

TEST_F(Files, ANameOfTheProgramsOwnIsNotSavedThroughALink) {
  folder.write("stranger", "keep me");
  fs::create_symlink("stranger", folder / "x");
  EXPECT_FALSE(host::saveWhole(folder / "x", "new", cause, host::NamedBy::program));
  EXPECT_EQ(cause, "It is a link, where none is followed");
  EXPECT_FALSE(host::replaceWhole(folder / "x", "new", cause));
  EXPECT_EQ(folder.read("stranger"), "keep me");
  EXPECT_EQ(folder.listing(), "stranger x");
}

unsigned modeOf(const fs::path& path) {
  struct stat found {};
  return ::lstat(path.c_str(), &found) == 0 ? found.st_mode & 0777U : 0;
}

TEST_F(Files, TheKeptVersionIsPrivateFromTheFirstSaveOn) {
  ::chmod(folder.write("x", "with a password").c_str(), 0644);
  ASSERT_TRUE(host::saveWhole(folder / "x", "new", cause)) << cause;
  EXPECT_EQ(modeOf(folder / "x.previous"), 0600U);
  EXPECT_EQ(modeOf(folder / "x"), 0600U);
}

TEST_F(Files, AFileWithASecondNameStaysUnderItWithItsContentAndMode) {
  ::chmod(folder.write("stranger", "old").c_str(), 0644);
  fs::create_hard_link(folder / "stranger", folder / "x");
  ASSERT_TRUE(host::saveWhole(folder / "x", "new", cause)) << cause;
  EXPECT_EQ(folder.read("stranger"), "old");
  EXPECT_EQ(modeOf(folder / "stranger"), 0644U);
  EXPECT_EQ(folder.read("x.previous"), "old");
  EXPECT_EQ(modeOf(folder / "x.previous"), 0600U) << "a copy";
  EXPECT_FALSE(fs::equivalent(folder / "stranger", folder / "x.previous"));
}

TEST_F(Files, AKeptVersionThatIsTheFileItselfIsParted) {
  folder.write("x", "old");
  fs::create_hard_link(folder / "x", folder / "x.previous");  // a save was killed in between
  ASSERT_TRUE(host::saveWhole(folder / "x", "new", cause)) << cause;
  EXPECT_EQ(folder.read("x.previous"), "old");
  EXPECT_EQ(folder.listing(), "x x.previous");
}

TEST_F(Files, NothingButAFileIsReplacedByTheKeptVersion) {
  for (const support::Odd odd : support::AllOdd) {
    SCOPED_TRACE(nameOf(odd));
    const TempFolder place;
    place.write("x", "old");
    const support::OddFile thing(place / "x.previous", odd, "older");
    const std::string refusal = thing.refusal(host::NamedBy::program);
    const bool isFile =
        refusal.empty() || odd == support::Odd::huge || odd == support::Odd::unreadable;
    cause.clear();
    EXPECT_EQ(host::saveWhole(place / "x", "new", cause), isFile);
    EXPECT_EQ(cause, isFile ? "" : "x.previous: " + refusal);
    EXPECT_EQ(place.read("x"), isFile ? "new" : "old");
    EXPECT_TRUE(isFile ? thing.isStrangerUntouched() : thing.isUntouched());
    if (isFile) {
      EXPECT_EQ(place.read("x.previous"), "old");
    }
    EXPECT_EQ(place.listing(), "x x.previous");
  }
}

// --- names as long as they may be

TEST_F(Files, ANameOfAnyAllowedLengthIsSavedAndItsVersionBeforeKept) {
  const std::string letter = "\xF0\x9D\x94\xB8";  // four bytes
  for (const std::size_t letters : {60U, 61U, 62U}) {
    const TempFolder place;
    std::string name;
    for (std::size_t i = 0; i < letters; ++i) name += letter;
    const fs::path file = place / (name + ".xclmc");
    ASSERT_TRUE(host::saveWhole(file, "one", cause)) << letters << ": " << cause;
    ASSERT_TRUE(host::saveWhole(file, "two", cause)) << letters << ": " << cause;
    EXPECT_EQ(place.read(file.filename().string()), "two");
    EXPECT_EQ(place.read(host::keptCopy(file).filename().string()), "one");
    EXPECT_EQ(std::distance(fs::directory_iterator(place.path()), {}), 2);
  }
}

TEST_F(Files, LongNamesOfTwoFilesNeverMakeOne) {
  const std::string longName(250, 'x');
  const fs::path one = host::keptCopy(folder / (longName + "1"));
  const fs::path other = host::keptCopy(folder / (longName + "2"));
  EXPECT_NE(one, other);
  for (const fs::path& path : {one, other}) {
    EXPECT_LE(path.filename().string().size(), 255U);
    EXPECT_TRUE(path.string().ends_with(".previous"));
  }
  EXPECT_EQ(host::keptCopy(folder / "x"), folder / "x.previous");
}

// --- the rest

TEST_F(Files, SomethingExistsUnlessItIsCertainThatItDoesNot) {
  for (const support::Odd odd : support::AllOdd) {
    const TempFolder place;
    const support::OddFile thing(place / "x", odd, "content");
    EXPECT_TRUE(host::fileSystem().exists(place / "x")) << nameOf(odd);
  }
  folder.write("file", "");
  for (const char* missing : {"none", "none/x", "file/x"})
    EXPECT_FALSE(host::fileSystem().exists(folder / missing)) << missing;
  const std::string tooLong(300, 'x');
  EXPECT_TRUE(host::fileSystem().exists(folder / tooLong)) << "who knows";
}

TEST_F(Files, AFileOverTheLimitIsRefusedBeforeItIsRead) {
  const support::OddFile thing(folder / "x", support::Odd::huge, "");
  EXPECT_FALSE(host::readFile(folder / "x", std::size_t(1) << 39, content, cause));
  EXPECT_EQ(cause, "File too large");
}

TEST_F(Files, ListingTakesTheFilesWithAnEnding) {
  folder.write("a.xclmc", "");
  folder.write("b.xclmc", "");
  folder.write("c.xml", "");
  std::filesystem::create_directory(folder / "d.xclmc");
  const auto files = host::fileSystem().list(folder.path(), ".xclmc");
  EXPECT_EQ(files.size(), 2U);
  for (const auto& file : files) EXPECT_THAT(file.string(), EndsWith(".xclmc"));
  EXPECT_TRUE(host::fileSystem().list(folder / "none", ".xclmc").empty());
}

TEST_F(Files, FoldersAreMadeWithTheirParents) {
  EXPECT_TRUE(host::fileSystem().makeFolder(folder / "a/b/c", cause)) << cause;
  EXPECT_TRUE(host::fileSystem().makeFolder(folder / "a/b/c", cause)) << "again";
  EXPECT_TRUE(host::fileSystem().exists(folder / "a/b"));
  folder.write("file", "");
  EXPECT_FALSE(host::fileSystem().makeFolder(folder / "file/b", cause));
  EXPECT_FALSE(cause.empty());
}

TEST_F(Files, RemovingTellsWhatIsNotThere) {
  EXPECT_TRUE(host::fileSystem().remove(folder.write("x", ""), cause));
  EXPECT_FALSE(host::fileSystem().exists(folder / "x"));
  EXPECT_FALSE(host::fileSystem().remove(folder / "x", cause));
  EXPECT_FALSE(cause.empty());
}

}  // namespace
