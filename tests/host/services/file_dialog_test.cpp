#include "host/services/file_dialog.h"

#include <gtest/gtest.h>

#include "tests/support/dialog_driver.h"
#include "tests/support/temp_folder.h"

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

// Puts the program into a folder while it lives.
class WorkingFolder {
 public:
  explicit WorkingFolder(const std::filesystem::path& folder) {
    std::filesystem::current_path(folder);
  }
  WorkingFolder(const WorkingFolder&) = delete;
  WorkingFolder& operator=(const WorkingFolder&) = delete;
  ~WorkingFolder() { std::filesystem::current_path(before_); }

 private:
  std::filesystem::path before_ = std::filesystem::current_path();
};

TEST(FileDialog, ARelativePathIsMadeAFullOne) {
  support::TempFolder folder;
  std::filesystem::create_directory(folder / "inner");
  folder.write("inner/lamp.tar", "x");
  folder.write("lamp.tar", "x");
  const WorkingFolder here(folder / "inner");
  const std::pair<const char*, std::filesystem::path> picked[] = {
      {"lamp.tar", folder / "inner/lamp.tar"},
      {"./lamp.tar", folder / "inner/lamp.tar"},
      {"../lamp.tar", folder / "lamp.tar"},
      {"gone/lamp.tar", folder / "inner/gone/lamp.tar"},
      {"/some/file.tar", "/some/file.tar"}};
  for (const auto& [path, full] : picked) {
    std::filesystem::path chosen;
    DialogDriver driver;
    driver.run([&] { chosen = FileDialogSupport::OpenFileDialog(nullptr, u""); });
    driver.pick(path);
    EXPECT_EQ(chosen, full) << path;
  }
}

// "link/.." is the folder above the link's target, not the one that the link stands in.
TEST(FileDialog, AFullPathNamesTheFileThatThePickedOneNames) {
  support::TempFolder folder;
  std::filesystem::create_directories(folder / "far/away");
  folder.write("far/lamp.tar", "the one");
  folder.write("lamp.tar", "another");
  std::filesystem::create_directory_symlink(folder / "far/away", folder / "link");
  const WorkingFolder here(folder.path());
  std::filesystem::path chosen;
  DialogDriver driver;
  driver.run([&] { chosen = FileDialogSupport::OpenFileDialog(nullptr, u""); });
  driver.pick("link/../lamp.tar");
  EXPECT_TRUE(chosen.is_absolute());
  EXPECT_TRUE(std::filesystem::equivalent(chosen, folder / "far/lamp.tar")) << chosen;
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
