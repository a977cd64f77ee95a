#include "workbench/library_extent.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "host/services/files.h"
#include "tests/support/temp_folder.h"

namespace {

class LibraryExtent : public testing::Test {
 protected:
  bool isWhole(const std::string& content) {
    const auto file = folder.write("library", content);
    const host::Descriptor opened =
        host::openFile(file, host::FileUse::read, host::NamedBy::person, cause);
    EXPECT_TRUE(opened.good()) << cause;
    return workbench::isWholeLibrary(opened.number(), cause);
  }
  // A library of this machine: the host's own.
  static std::string library() {
    std::string content;
    std::string ignored;
    EXPECT_TRUE(host::readFile(LAMP_HOST_LIBRARY, std::size_t(1) << 30, content, ignored));
    return content;
  }

  support::TempFolder folder;
  std::string cause;
};

TEST_F(LibraryExtent, OfALibraryIsWhole) {
  EXPECT_TRUE(isWhole(library()));
}

TEST_F(LibraryExtent, OfALibraryThatWasCutOffIsNotWhereverItWasCut) {
  const std::string whole = library();
  for (const std::size_t size : {std::size_t(64), std::size_t(100), std::size_t(4096),
                                 whole.size() / 2, whole.size() - 4096, whole.size() - 1}) {
    cause.clear();
    EXPECT_FALSE(isWhole(whole.substr(0, size))) << size;
    EXPECT_NE(cause.find("cut off"), std::string::npos) << size;
  }
}

TEST_F(LibraryExtent, OfSizesThatRunOverIsNotWhole) {
  const std::string wild = library();
  // Where the sections are to lie, and the segments.
  for (const std::size_t at : {std::size_t(0x28), std::size_t(0x20)}) {
    std::string damaged = wild;
    damaged.replace(at, 8, 8, '\xFF');
    EXPECT_FALSE(isWhole(damaged)) << at;
  }
}

TEST_F(LibraryExtent, OfWhatIsNoLibraryIsTheLoadersMatter) {
  std::string other = library();
  other[4] = '\x7F';  // another kind of machine
  for (const std::string& content :
       {std::string(), std::string("text"), std::string(64, '\0'), other.substr(0, 4096)})
    EXPECT_TRUE(isWhole(content)) << content.size();
}

}  // namespace
