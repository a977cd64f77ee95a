#include "tests/support/dialog_driver.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "tests/host/support/sample_dialog.h"
#include "tests/support/xml_compare.h"

using sample::Id;
using support::DialogDriver;
using support::TopKind;

namespace {

class DriverTest : public testing::Test {
 protected:
  sample::Module module;
  DialogDriver driver;
};

using DialogDriverTest = DriverTest;

TEST_F(DialogDriverTest, AModalDialogReadsAsALinearScript) {
  EXPECT_EQ(driver.top(), TopKind::none);
  driver.show<sample::Dialog>();
  EXPECT_EQ(driver.top(), TopKind::dialog);
  EXPECT_TRUE(driver.running());
  EXPECT_EQ(driver.title(), "Sample");
  EXPECT_EQ(driver.text("title"), "[355]");
  EXPECT_EQ(driver.result(), std::nullopt);

  driver.type("free", "añb");
  EXPECT_EQ(driver.text(Id::Free), "añb");
  driver.click("ok");

  EXPECT_EQ(driver.top(), TopKind::none);
  EXPECT_FALSE(driver.running());
  EXPECT_EQ(driver.result(), IDOK);
  EXPECT_EQ(driver.closed(), (std::vector<support::ClosedDialog>{{"SampleDialog", IDOK}}));
}

TEST_F(DialogDriverTest, DialogsMessagesAndFilesStack) {
  int answer = 0;
  std::filesystem::path chosen;
  auto& outer = driver.show<sample::Dialog>();
  sample::Dialog inner(&outer);
  outer.onPush = [&] { inner.DoModal(); };
  inner.onPush = [&] { answer = inner.MessageBox(u"sure?", host::MessageButtons::yesNo); };
  inner.onOther = [&] { chosen = host::services().frontEnd().openFile({}); };

  driver.click("push");
  EXPECT_EQ(&driver.dialog(), &inner);
  driver.click("push");
  EXPECT_EQ(driver.top(), TopKind::message);
  EXPECT_EQ(driver.message().text, "sure?");
  EXPECT_EQ(&driver.dialog(), &inner) << "what the dialog shows can be read below the message";
  EXPECT_FALSE(driver.tryType("free", "x").done);
  driver.answer(host::MessageAnswer::yes);
  EXPECT_EQ(answer, IDYES);
  driver.click("other");
  EXPECT_EQ(driver.top(), TopKind::file);
  driver.pick("/some/file");
  EXPECT_EQ(chosen, "/some/file");
  driver.click("cancel");
  EXPECT_EQ(&driver.dialog(), &outer);
  driver.close();
  EXPECT_EQ(driver.result(), IDCANCEL);
}

TEST_F(DialogDriverTest, AtTheEndEverythingOpenIsClosedAsCancel) {
  int asked = 0;
  int result = 0;
  int inner = 0;
  {
    DialogDriver own;
    auto& dialog = own.show<sample::Dialog>();
    dialog.onOther = [&] {
      sample::Dialog second(&dialog);
      second.onPush = [&] { asked = second.MessageBox(u"?", host::MessageButtons::retryCancel); };
      inner = second.DoModal();
      result = 5;
    };
    own.click("other");
    own.click("push");
  }
  EXPECT_EQ(asked, IDCANCEL);
  EXPECT_EQ(inner, IDCANCEL);
  EXPECT_EQ(result, 5);
}

class StubbornDialog : public sample::Dialog {
 public:
  void OnClose() override { MessageBox(u"no"); }
};

TEST_F(DialogDriverTest, ADialogThatDoesNotCloseIsEndedAtTheEnd) {
  DialogDriver own;
  own.show<StubbornDialog>();
  own.closeAll();
  EXPECT_EQ(own.top(), TopKind::none);
  EXPECT_EQ(own.result(), IDCANCEL);
}

TEST_F(DialogDriverTest, AChildDialogTakesGesturesWithoutBlocking) {
  sample::Dialog child;
  bool shown = false;
  driver.run([&] { shown = child.Create(nullptr); });
  EXPECT_TRUE(shown);
  EXPECT_FALSE(driver.running());
  driver.type("free", "x");
  EXPECT_EQ(driver.text("free"), "x");
  sample::Dialog modal;
  child.onPush = [&] { modal.DoModal(); };
  driver.click("push");
  EXPECT_EQ(&driver.dialog(), &modal);
  driver.click("ok");
  EXPECT_EQ(&driver.dialog(), &child);
}

TEST_F(DialogDriverTest, ARefusedGestureFailsTheTestUnlessItIsTried) {
  static DialogDriver* current = nullptr;
  current = &driver;
  driver.show<sample::Dialog>();
  EXPECT_FALSE(driver.tryClick("disabled").done);
  EXPECT_NONFATAL_FAILURE(current->click("disabled"), "was refused: the control \"disabled\"");
  EXPECT_NONFATAL_FAILURE(current->answer(host::MessageAnswer::ok), "no message to answer");
  EXPECT_THROW(driver.text("nothing"), std::invalid_argument);
}

TEST_F(DialogDriverTest, AnExceptionInAHandlerIsToldAndTheDialogGoesOn) {
  auto& dialog = driver.show<sample::Dialog>();
  dialog.onPush = [] { throw std::runtime_error("oops"); };
  driver.click("push");
  ASSERT_EQ(driver.top(), TopKind::message);
  EXPECT_EQ(driver.message().text, "[60072](oops)");
  driver.answer(host::MessageAnswer::ok);
  driver.click("ok");
  EXPECT_EQ(driver.result(), IDOK);
}

TEST_F(DialogDriverTest, AMessageOutsideOfRunFailsInsteadOfHanging) {
  static sample::Dialog* dialog = nullptr;
  sample::Dialog here;
  dialog = &here;
  EXPECT_NONFATAL_FAILURE(dialog->MessageBox(u"?"), "outside of DialogDriver::run");
  EXPECT_NONFATAL_FAILURE(dialog->DoModal(), "outside of DialogDriver::run");
}

TEST_F(DialogDriverTest, ADialogDestroyedWhileItIsOpenUnwinds) {
  static DialogDriver* current = nullptr;
  current = &driver;
  EXPECT_NONFATAL_FAILURE(
      {
        sample::Dialog here;
        current->run([&here] { here.DoModal(); });
      },
      "was destroyed while it was open");
  EXPECT_EQ(driver.top(), TopKind::none);
  EXPECT_FALSE(driver.running());
}

}  // namespace
