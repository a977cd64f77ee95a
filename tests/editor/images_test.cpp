#include "editor/images.h"

#include <gtest/gtest.h>

#include <QtGui/QImage>

#include "host/services/files.h"
#include "host/services/setup.h"
#include "tests/support/odd_file.h"
#include "tests/support/temp_folder.h"

namespace {

using support::Odd;

class Images : public testing::Test {
 protected:
  Images() : before_(XCVarnisSetup::Get().ImageFolder()) {}
  ~Images() override { XCVarnisSetup::Get().SetImageFolder(before_); }

  static std::string png(const char* name) {
    std::string bytes;
    std::string cause;
    EXPECT_TRUE(
        host::readFile(std::filesystem::path(LAMP_IMAGES_FOLDER) / name, 1'000'000, bytes, cause))
        << cause;
    return bytes;
  }

 private:
  std::filesystem::path before_;
};

TEST_F(Images, AnIconHasItsVariantForDenseScreens) {
  XCVarnisSetup::Get().SetImageFolder(LAMP_IMAGES_FOLDER);
  const QIcon icon = editor::imageIcon("OK-16.png");
  ASSERT_FALSE(icon.isNull());
  EXPECT_EQ(editor::imageSize(icon), QSize(16, 16));
  EXPECT_EQ(icon.pixmap(QSize(16, 16), 1).toImage().size(), QSize(16, 16));
  EXPECT_EQ(icon.pixmap(QSize(16, 16), 2).toImage().size(), QSize(32, 32));
  EXPECT_TRUE(editor::imageIcon("none.png").isNull());
  EXPECT_TRUE(editor::imageIcon("").isNull());
}

TEST_F(Images, WhateverStandsInPlaceOfOneIsToldAndNotWaitedFor) {
  for (const Odd odd : support::AllOdd) {
    SCOPED_TRACE(nameOf(odd));
    const support::TempFolder place;
    XCVarnisSetup::Get().SetImageFolder(place.path());
    const support::OddFile thing(place / "OK-16.png", odd, png("OK-16.png"));
    testing::internal::CaptureStderr();
    const bool isShown = !editor::imageIcon("OK-16.png").isNull();
    const std::string told = testing::internal::GetCapturedStderr();
    const bool isGood = odd == Odd::secondName || odd == Odd::linkToStranger;
    // Of half an image the half is shown.
    EXPECT_EQ(isShown, isGood || (odd == Odd::truncated && told.empty()));
    EXPECT_EQ(told.empty(), isShown);
    if (!isShown) {
      EXPECT_NE(told.find((place / "OK-16.png").string()), std::string::npos) << told;
      EXPECT_NE(told.find(thing.refusal(host::NamedBy::person)), std::string::npos) << told;
    }
    EXPECT_TRUE(thing.isUntouched());
  }
}

}  // namespace
