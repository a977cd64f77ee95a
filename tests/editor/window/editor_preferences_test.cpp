#include "editor/window/editor_preferences.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/support/odd_file.h"
#include "tests/support/temp_folder.h"

namespace {

using editor::EditorPreferences;
using support::Odd;

class Preferences : public testing::Test {
 protected:
  static EditorPreferences others() {
    EditorPreferences preferences;
    preferences.language = "es";
    preferences.verifyNew = preferences.verifyExisting = preferences.readBack = false;
    preferences.geometry = QByteArray("\0\xFF geometry", 11);
    preferences.splitter = "splitter";
    preferences.rightSplitter = "right";
    return preferences;
  }

  support::TempFolder folder;
  std::string problem;
};

TEST_F(Preferences, AreReadAsTheyWereSaved) {
  ASSERT_TRUE(others().save(folder.path(), problem)) << problem;
  const EditorPreferences read = EditorPreferences::load(folder.path(), problem);
  EXPECT_EQ(problem, "");
  EXPECT_EQ(read.language, "es");
  EXPECT_FALSE(read.verifyNew || read.verifyExisting || read.readBack);
  EXPECT_EQ(read.geometry, others().geometry);
  EXPECT_EQ(read.splitter, "splitter");
  EXPECT_EQ(read.rightSplitter, "right");
  struct stat found {};
  ASSERT_EQ(::stat(EditorPreferences::fileIn(folder.path()).c_str(), &found), 0);
  EXPECT_EQ(found.st_mode & 0777U, 0600U);
}

TEST_F(Preferences, AreTheDefaultsWhereNothingWasSaved) {
  const EditorPreferences read = EditorPreferences::load(folder.path(), problem);
  EXPECT_EQ(problem, "");
  EXPECT_TRUE(read.verifyNew && read.verifyExisting && read.readBack);
  EXPECT_TRUE(read.geometry.isEmpty());
}

TEST_F(Preferences, AreTheDefaultsAndToldWhateverStandsInTheirPlace) {
  const support::TempFolder model;
  ASSERT_TRUE(others().save(model.path(), problem));
  const std::string good = model.read("lamp-editor.json");
  for (const Odd odd : support::AllOdd) {
    SCOPED_TRACE(nameOf(odd));
    const support::TempFolder place;
    const support::OddFile thing(EditorPreferences::fileIn(place.path()), odd, good);
    const EditorPreferences read = EditorPreferences::load(place.path(), problem);
    const std::string refusal = thing.refusal(host::NamedBy::program);
    const bool isGood = odd == Odd::secondName;
    EXPECT_EQ(read.verifyNew, !isGood);
    EXPECT_EQ(problem.empty(), isGood);
    EXPECT_NE(problem.find(refusal), std::string::npos) << problem;
    EXPECT_TRUE(thing.isUntouched());
    std::string cause;
    const bool isFile = refusal.empty() || odd == Odd::huge;
    EXPECT_EQ(read.save(place.path(), cause), isFile) << cause;
    EXPECT_TRUE(thing.isStrangerUntouched());
    EXPECT_TRUE(isFile || thing.isUntouched());
  }
}

}  // namespace
