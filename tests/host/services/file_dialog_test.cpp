#include "host/services/file_dialog.h"

#include <gtest/gtest.h>

#include "tests/support/dialog_driver.h"

namespace {

using Infrastructure::FileDialogSupportNS::FileDialogSupport;
using support::TopKind;

class FileDialog : public testing::Test {
 protected:
  void choose(const std::vector<host::FileFilter>& filters) {
    driver.run([this, filters] {
      chosen =
          FileDialogSupport::OpenFileDialog(nullptr, FileDialogSupport::PrepareFilters(filters));
    });
  }

  std::filesystem::path chosen = "nothing yet";
  support::DialogDriver driver;
};

TEST_F(FileDialog, ReturnsTheFileThatTheUserChose) {
  choose({{u"Firmware", "*.tar"}});
  ASSERT_EQ(driver.top(), TopKind::file);
  EXPECT_EQ(driver.fileRequest().parent, nullptr);
  driver.pick("/tmp/a.tar");
  EXPECT_EQ(chosen, "/tmp/a.tar");
}

TEST_F(FileDialog, ReturnsAnEmptyPathWhenTheUserCancels) {
  choose({{u"Firmware", "*.tar"}});
  driver.pick({});
  EXPECT_TRUE(chosen.empty());
}

TEST_F(FileDialog, FiltersReachTheChoiceWhateverTheirDescriptionsHold) {
  choose({{u"Año|nuevo (*.tar)", "*.tar"}, {u"", "*"}, {u"Cut\0here", "*.x"}});
  const auto& filters = driver.fileRequest().filters;
  ASSERT_EQ(filters.size(), 3U);
  EXPECT_EQ(filters[0].description, u"Año|nuevo (*.tar)");
  EXPECT_EQ(filters[0].pattern, "*.tar");
  EXPECT_EQ(filters[1].description, u"");
  EXPECT_EQ(filters[1].pattern, "*");
  EXPECT_EQ(filters[2].description, u"Cut");
  EXPECT_EQ(filters[2].pattern, "*.x");
}

TEST_F(FileDialog, WithoutFiltersEveryFileIsOffered) {
  choose({});
  EXPECT_TRUE(driver.fileRequest().filters.empty());
}

}  // namespace
