#include "editor/front_end/exchange_window.h"

#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>

#include <gtest/gtest.h>

#include "tests/support/texts.h"

namespace {

constexpr int FirmwareUpload = 52;

class ExchangeWindow : public testing::Test {
 protected:
  ExchangeWindow() {
    support::texts();
    line_.show();
  }
  editor::ExchangeWindow at_once_{0};
  QLineEdit line_;
};

TEST_F(ExchangeWindow, AShortExchangeShowsNothing) {
  editor::ExchangeWindow patient(60'000);
  patient.started({});
  EXPECT_TRUE(patient.isRunning());
  EXPECT_TRUE(patient.pump());
  EXPECT_EQ(patient.window(), nullptr);
  patient.finished();
  EXPECT_FALSE(patient.isRunning());
}

TEST_F(ExchangeWindow, ALongOneShowsAWindowWhoseCancelEndsIt) {
  at_once_.started({});
  EXPECT_TRUE(at_once_.pump());
  ASSERT_NE(at_once_.window(), nullptr);
  EXPECT_EQ(at_once_.window()->labelText(), "[60050]");
  auto* cancel = at_once_.window()->findChild<QPushButton*>();
  ASSERT_NE(cancel, nullptr);
  QTest::mouseClick(cancel, Qt::LeftButton);
  EXPECT_FALSE(at_once_.pump());
  at_once_.finished();
  EXPECT_EQ(at_once_.window(), nullptr);
}

TEST_F(ExchangeWindow, TheFirmwareHasItsOwnTextAndABarThatFills) {
  host::ExchangeRequest request;
  request.command = FirmwareUpload;
  at_once_.started(request);
  at_once_.pump();
  EXPECT_EQ(at_once_.window()->labelText(), "[60051]");
  at_once_.moved(500'000, 1'000'000, 0);
  at_once_.pump();
  EXPECT_EQ(at_once_.window()->value(), 50);
  at_once_.finished();
}

TEST_F(ExchangeWindow, KeysReachNoOtherWindowMeanwhile) {
  at_once_.started({});
  QTest::keyClicks(&line_, "x");
  EXPECT_EQ(line_.text(), "");
  at_once_.finished();
  QTest::keyClicks(&line_, "y");
  EXPECT_EQ(line_.text(), "y");
}

TEST_F(ExchangeWindow, TheArrowIsShownWhileCancelCanBePressed) {
  QApplication::setOverrideCursor(Qt::WaitCursor);
  at_once_.started({});
  ASSERT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
  at_once_.pump();
  EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::ArrowCursor);
  at_once_.finished();
  ASSERT_NE(QApplication::overrideCursor(), nullptr);
  EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
  QApplication::restoreOverrideCursor();
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(ExchangeWindow, ACancelledExchangeDoesNotCancelTheNext) {
  at_once_.started({});
  at_once_.pump();
  QTest::mouseClick(at_once_.window()->findChild<QPushButton*>(), Qt::LeftButton);
  EXPECT_FALSE(at_once_.pump());
  at_once_.finished();
  at_once_.started({});
  EXPECT_TRUE(at_once_.pump());
  at_once_.finished();
}

}  // namespace
