#include "host/services/file_dialog.h"

#include <gtest/gtest.h>

#include "tests/support/dialog_driver.h"

using Infrastructure::FileDialogSupportNS::FileDialogSupport;
using support::DialogDriver;

namespace {

TEST(FileDialog, ItsFiltersReachTheUser) {
  std::filesystem::path chosen;
  DialogDriver driver;
  driver.run([&] {
    chosen = FileDialogSupport::OpenFileDialog(
        nullptr,
        FileDialogSupport::PrepareFilters({{u"Firmware (ñ | %s)", "*.tar"}, {u"All", "*"}}));
  });
  ASSERT_EQ(driver.top(), support::TopKind::file);
  const auto& filters = driver.fileRequest().filters;
  ASSERT_EQ(filters.size(), 2U);
  EXPECT_EQ(filters[0].description, u"Firmware (ñ | %s)");
  EXPECT_EQ(filters[0].pattern, "*.tar");
  EXPECT_EQ(filters[1].description, u"All");
  EXPECT_EQ(filters[1].pattern, "*");
  driver.pick("/some/file.tar");
  EXPECT_EQ(chosen, "/some/file.tar");
}

TEST(FileDialog, CancelIsAnEmptyPath) {
  std::filesystem::path chosen = "before";
  DialogDriver driver;
  driver.run([&] { chosen = FileDialogSupport::OpenFileDialog(nullptr, u""); });
  EXPECT_TRUE(driver.fileRequest().filters.empty());
  driver.pick("");
  EXPECT_EQ(chosen, "");
}

}  // namespace
