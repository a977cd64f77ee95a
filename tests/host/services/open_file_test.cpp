#include "host/services/open_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/support/odd_file.h"
#include "tests/support/temp_folder.h"

namespace {

namespace fs = std::filesystem;
using host::FileUse;
using host::NamedBy;
using support::Odd;
using support::OddFile;
using support::TempFolder;

unsigned modeOf(const fs::path& path) {
  struct stat found {};
  return ::stat(path.c_str(), &found) == 0 ? found.st_mode & 07777U : 0;
}

/// Another mask for what is made, as long as it lives.
class Umask {
 public:
  explicit Umask(mode_t mask) : before_(::umask(mask)) {}
  Umask(const Umask&) = delete;
  Umask& operator=(const Umask&) = delete;
  ~Umask() { ::umask(before_); }

 private:
  mode_t before_;
};

class OpenFile : public testing::Test {
 protected:
  TempFolder folder;
  std::string cause;
};

TEST_F(OpenFile, WhatIsNoFileOfOneIsRefusedWithItsReasonAndStaysAsItIs) {
  for (const Odd odd : support::AllOdd)
    for (const NamedBy named : {NamedBy::person, NamedBy::program}) {
      SCOPED_TRACE(nameOf(odd) + (named == NamedBy::person ? " of a person" : " of the program"));
      const TempFolder place;
      const OddFile thing(place / "x", odd, "content");
      cause.clear();
      const host::Descriptor opened = host::openFile(place / "x", FileUse::read, named, cause);
      const bool isTooLargeOnly = odd == Odd::huge;
      EXPECT_EQ(cause, isTooLargeOnly ? "" : thing.refusal(named));
      EXPECT_EQ(opened.good(), cause.empty());
      EXPECT_TRUE(thing.isUntouched());
    }
}

TEST_F(OpenFile, ANameOfTheProgramsOwnIsChangedInPlaceOnlyWhereItIsItsOwnFile) {
  for (const Odd odd : support::AllOdd)
    for (const FileUse use : {FileUse::change, FileUse::append}) {
      SCOPED_TRACE(nameOf(odd));
      const TempFolder place;
      const OddFile thing(place / "x", odd, "content");
      cause.clear();
      const host::Descriptor opened = host::openFile(place / "x", use, NamedBy::program, cause);
      EXPECT_EQ(cause, thing.refusalToChange());
      EXPECT_EQ(opened.good(), cause.empty());
      EXPECT_TRUE(thing.isUntouched());
    }
}

TEST_F(OpenFile, NothingIsReplacedButFiles) {
  for (const Odd odd : support::AllOdd) {
    SCOPED_TRACE(nameOf(odd));
    const TempFolder place;
    const OddFile thing(place / "x", odd, "content");
    const std::string refusal = thing.refusal(NamedBy::program);
    const bool isFile = refusal.empty() || odd == Odd::huge || odd == Odd::unreadable;
    cause.clear();
    EXPECT_EQ(host::mayReplace(place / "x", cause), isFile);
    EXPECT_EQ(cause, isFile ? "" : refusal);
  }
  EXPECT_TRUE(host::mayReplace(folder / "missing", cause));
}

TEST_F(OpenFile, ANewFileIsForItsOwnerAloneWhateverTheMask) {
  const Umask open(0);
  for (const FileUse use : {FileUse::create, FileUse::change, FileUse::append}) {
    const fs::path file = folder / std::to_string(static_cast<int>(use));
    const host::Descriptor made = host::openFile(file, use, NamedBy::program, cause);
    ASSERT_TRUE(made.good()) << cause;
    EXPECT_EQ(modeOf(file), 0600U);
    EXPECT_NE(::fcntl(made.number(), F_GETFD) & FD_CLOEXEC, 0);
  }
}

TEST_F(OpenFile, AMissingFileIsMadeOnlyToBeWritten) {
  EXPECT_FALSE(host::openFile(folder / "x", FileUse::read, NamedBy::person, cause).good());
  EXPECT_EQ(cause, "No such file or directory");
  EXPECT_TRUE(host::openFile(folder / "x", FileUse::create, NamedBy::program, cause).good());
  EXPECT_FALSE(host::openFile(folder / "x", FileUse::create, NamedBy::program, cause).good());
  EXPECT_EQ(cause, "File exists");
}

// --- folders

TEST_F(OpenFile, FoldersAreForTheirOwnerAloneWhateverTheMask) {
  const Umask open(0);
  ASSERT_TRUE(host::makeFolder(folder / "a/b/c", cause)) << cause;
  for (const char* made : {"a", "a/b", "a/b/c"}) EXPECT_EQ(modeOf(folder / made), 0700U) << made;
}

TEST_F(OpenFile, AFolderThatIsThereStaysAsItIs) {
  ASSERT_EQ(::mkdir((folder / "shared").c_str(), 0755), 0);
  ::chmod((folder / "shared").c_str(), 0755);
  fs::create_symlink("shared", folder / "link");
  for (const char* name : {"shared", "link"})
    EXPECT_TRUE(host::makeFolder(folder / name, cause)) << cause;
  EXPECT_EQ(modeOf(folder / "shared"), 0755U);
  ASSERT_TRUE(host::closeFolderToOthers(folder / "link", cause)) << cause;
  EXPECT_EQ(modeOf(folder / "shared"), 0755U) << "a person has put it elsewhere";
  ASSERT_TRUE(host::closeFolderToOthers(folder / "shared", cause)) << cause;
  EXPECT_EQ(modeOf(folder / "shared"), 0700U);
}

TEST_F(OpenFile, NoFolderIsMadeInTheWayOfSomethingElse) {
  for (const Odd odd : support::AllOdd) {
    if (odd == Odd::folder || odd == Odd::unreadable) continue;
    SCOPED_TRACE(nameOf(odd));
    const TempFolder place;
    const OddFile thing(place / "x", odd, "content");
    cause.clear();
    EXPECT_FALSE(host::makeFolder(place / "x", cause));
    EXPECT_FALSE(cause.empty());
    EXPECT_FALSE(host::makeFolder(place / "x/y", cause));
    EXPECT_TRUE(thing.isUntouched());
  }
}

// --- links

TEST_F(OpenFile, LinksAreFollowedToTheLastName) {
  const TempFolder elsewhere;
  fs::create_symlink(elsewhere.path(), folder / "there");
  fs::create_symlink("there/b", folder / "a");
  fs::create_symlink("../" + elsewhere.path().filename().string() + "/c", elsewhere / "b");
  fs::path target;
  ASSERT_TRUE(host::followLinks(folder / "a", target, cause)) << cause;
  elsewhere.write("c", "found");
  EXPECT_TRUE(fs::equivalent(target, elsewhere / "c")) << target;
  EXPECT_TRUE(host::followLinks(folder / "missing", target, cause));
  EXPECT_EQ(target, folder / "missing");
}

TEST_F(OpenFile, LinksInACircleAreTold) {
  fs::create_symlink("b", folder / "a");
  fs::create_symlink("a", folder / "b");
  fs::path target;
  EXPECT_FALSE(host::followLinks(folder / "a", target, cause));
  EXPECT_EQ(cause, "Too many levels of symbolic links");
}

// --- standard streams

// What a program without some of its standard streams does, in a process of its own: it holds them,
// then opens a file; true when all is as it must be.
bool holdsItsStreams(const fs::path& file, unsigned closed) {
  for (int stream = 0; stream < 3; ++stream)
    if ((closed >> stream & 1U) != 0) ::close(stream);
  if (!host::holdStandardStreams()) return false;
  std::string cause;
  const host::Descriptor opened = host::openFile(file, FileUse::change, NamedBy::program, cause);
  bool good = opened.number() > 2;
  char byte = 'x';
  if ((closed & 1U) != 0) good = good && ::read(0, &byte, 1) == -1;
  for (int stream = 1; stream < 3; ++stream)
    if ((closed >> stream & 1U) != 0) good = good && ::write(stream, &byte, 1) == -1;
  return good;
}

TEST_F(OpenFile, NoFileGetsTheNumberOfAMissingStandardStream) {
  for (unsigned closed = 0; closed < 8; ++closed) {
    const pid_t child = ::fork();
    if (child == 0) ::_exit(holdsItsStreams(folder / "x", closed) ? 0 : 1);
    int status = -1;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(status, 0) << "closed: " << closed;
  }
  EXPECT_EQ(folder.read("x"), "");
}

}  // namespace
