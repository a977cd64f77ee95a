#include "editor/front_end/qt_front_end.h"

#include <QtCore/QTimer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QMessageBox>

#include <gtest/gtest.h>

#include "tests/support/texts.h"

namespace {

bool waits() {
  return QApplication::overrideCursor() != nullptr &&
         QApplication::overrideCursor()->shape() == Qt::WaitCursor;
}

/// Questions that are asked while the program works, as when a page's write lacks a file.
class WorkingFrontEnd : public testing::Test {
 protected:
  WorkingFrontEnd() {
    support::texts();
    frontEnd_.setCursor(host::CursorShape::wait);
  }
  ~WorkingFrontEnd() override {
    frontEnd_.setCursor(host::CursorShape::arrow);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
  }
  // Notes the cursor over the window that will open, and closes it.
  void lookAndClose() {
    QTimer::singleShot(0, qApp, [this] {
      auto* dialog = dynamic_cast<QDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      waitedMeanwhile_ = waits();
      dialog->reject();
    });
  }

  editor::QtFrontEnd frontEnd_;
  bool waitedMeanwhile_ = true;
};

TEST_F(WorkingFrontEnd, AMessageShowsTheArrowAndTheWorkWaitsAgain) {
  lookAndClose();
  frontEnd_.ask({nullptr, u"Go on?", host::MessageButtons::retryCancel, host::MessageIcon::error});
  EXPECT_FALSE(waitedMeanwhile_);
  EXPECT_TRUE(waits());
}

TEST_F(WorkingFrontEnd, AFileChoiceShowsTheArrowAndTheWorkWaitsAgain) {
  lookAndClose();
  EXPECT_TRUE(frontEnd_.openFile({}).empty());
  EXPECT_FALSE(waitedMeanwhile_);
  EXPECT_TRUE(waits());
}

TEST_F(WorkingFrontEnd, WorkThatEndsInsideOfAQuestionLeavesNoWaitCursorBehind) {
  QTimer::singleShot(0, qApp, [this] {
    frontEnd_.setCursor(host::CursorShape::wait);
    frontEnd_.setCursor(host::CursorShape::arrow);
    waitedMeanwhile_ = waits();
    dynamic_cast<QDialog*>(QApplication::activeModalWidget())->reject();
  });
  frontEnd_.ask({nullptr, u"Go on?", host::MessageButtons::ok, host::MessageIcon::none});
  EXPECT_FALSE(waitedMeanwhile_);
  EXPECT_TRUE(waits());
}

}  // namespace
