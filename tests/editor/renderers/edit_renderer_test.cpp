#include "editor/renderers/edit_renderer.h"

#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtWidgets/QLineEdit>

#include "editor/renderers/ip_field.h"
#include "tests/editor/support/editor_rig.h"

namespace {

class EditRenderer : public support::EditorRig {
 protected:
  QLineEdit& line(int id) { return widget<QLineEdit>(id); }
  std::string text(int id) { return dialog_.Edit(id).text().ToUtf8(); }
  QLineEdit& focused(int id) {
    line(id).setFocus();
    line(id).setCursorPosition(0);
    return line(id);
  }
};

TEST_F(EditRenderer, TypingReachesTheModelACharacterAtATime) {
  open();
  QLineEdit& edit = focused(Id::Free);
  for (const QChar c : QString::fromUtf8("añb")) {
    QKeyEvent press(QEvent::KeyPress, 0, {}, c);
    QCoreApplication::sendEvent(&edit, &press);
  }
  EXPECT_EQ(text(Id::Free), "añb");
  EXPECT_EQ(dialog_.log.size(), 3U);
}

TEST_F(EditRenderer, TypingInTheMiddleKeepsTheCaretThere) {
  dialog_.onInit = [](sample::Dialog& dialog) { dialog.Edit(Id::Free).setText(u"aaaa"); };
  open();
  QLineEdit& edit = focused(Id::Free);
  edit.setCursorPosition(1);
  QTest::keyClicks(&edit, "aX");
  EXPECT_EQ(text(Id::Free), "aaXaaa");
  EXPECT_EQ(edit.cursorPosition(), 3);
  EXPECT_EQ(dialog_.Edit(Id::Free).selectionFrom(), 3U);
  QTest::keyClick(&edit, Qt::Key_Backspace);
  QTest::keyClick(&edit, Qt::Key_Delete);
  EXPECT_EQ(text(Id::Free), "aaaa");
  EXPECT_EQ(edit.cursorPosition(), 2);
}

TEST_F(EditRenderer, UndoGoesThroughTheModel) {
  open();
  QLineEdit& edit = focused(Id::Free);
  QTest::keyClicks(&edit, "abc");
  edit.undo();
  EXPECT_EQ(text(Id::Free), edit.text().toStdString());
  EXPECT_NE(text(Id::Free), "abc");
}

TEST_F(EditRenderer, TheLimitIsTheModels) {
  open();
  QTest::keyClicks(&focused(Id::Limited), QString(60, 'x'));
  EXPECT_EQ(text(Id::Limited).size(), 59U);
  EXPECT_EQ(line(Id::Limited).text().size(), 59);
}

TEST_F(EditRenderer, ATextOverTheLimitCanBeShortened) {
  dialog_.onInit = [](sample::Dialog& dialog) {
    dialog.Edit(Id::Limited).setText(std::u16string(70, u'y'));
  };
  open();
  QLineEdit& edit = focused(Id::Limited);
  edit.end(false);
  QTest::keyClick(&edit, Qt::Key_Backspace);
  EXPECT_EQ(text(Id::Limited).size(), 69U);
}

TEST_F(EditRenderer, ADigitsEditDropsEverythingElse) {
  open();
  QTest::keyClicks(&focused(Id::Digits), "1a2-3");
  EXPECT_EQ(text(Id::Digits), "123");
  EXPECT_EQ(line(Id::Digits).text(), "123");
}

TEST_F(EditRenderer, ACharacterThatIsNotTakenLeavesTheSelectionAlone) {
  dialog_.onInit = [](sample::Dialog& dialog) { dialog.Edit(Id::Digits).setText(u"4711"); };
  open();
  QLineEdit& edit = focused(Id::Digits);
  edit.selectAll();
  QTest::keyClicks(&edit, "x");
  EXPECT_EQ(text(Id::Digits), "4711");
  EXPECT_EQ(edit.text(), "4711");
  EXPECT_EQ(edit.selectedText(), "4711");
}

TEST_F(EditRenderer, APasswordIsNotShownAndAReadOnlyEditNotTypedInto) {
  open();
  EXPECT_EQ(line(Id::Secret).echoMode(), QLineEdit::Password);
  QTest::keyClicks(&focused(Id::ReadOnly), "x");
  EXPECT_EQ(text(Id::ReadOnly), "");
}

TEST_F(EditRenderer, TheProgramsTextAndSelectionAreShown) {
  open();
  dialog_.Edit(Id::Free).setText(u"Calle Mayor");
  dialog_.FocusAndSelectAll(Id::Free);
  settle();
  EXPECT_EQ(line(Id::Free).selectedText(), "Calle Mayor");
  EXPECT_TRUE(line(Id::Free).hasFocus());
}

TEST_F(EditRenderer, TheUsersSelectionReachesTheModel) {
  dialog_.onInit = [](sample::Dialog& dialog) { dialog.Edit(Id::Free).setText(u"Calle Mayor"); };
  open();
  focused(Id::Free).setSelection(6, 5);
  EXPECT_EQ(dialog_.Edit(Id::Free).selectionFrom(), 6U);
  EXPECT_EQ(dialog_.Edit(Id::Free).selectionTo(), 11U);
  QTest::keyClicks(&line(Id::Free), "Real");
  EXPECT_EQ(text(Id::Free), "Calle Real");
}

// --- masked

TEST_F(EditRenderer, AMaskedEditTypesOverThePlacesAndSkipsTheSeparators) {
  open();
  QTest::keyClicks(&focused(Id::Masked), "15x072024103");
  EXPECT_EQ(text(Id::Masked), "15/07/2024 10:30:00");
  EXPECT_EQ(line(Id::Masked).text(), "15/07/2024 10:30:00");
  EXPECT_EQ(line(Id::Masked).cursorPosition(), 15);
}

TEST_F(EditRenderer, AMaskedEditTakesAPastedDate) {
  open();
  QLineEdit& edit = focused(Id::Masked);
  QTest::keyClicks(&edit, "1");
  QGuiApplication::clipboard()->setText("31/12/2025 23:59:58");
  edit.selectAll();
  QTest::keySequence(&edit, QKeySequence::Paste);
  EXPECT_EQ(text(Id::Masked), "31/12/2025 23:59:58");
}

TEST_F(EditRenderer, BackspaceInAMaskedEditEmptiesThePlaceBefore) {
  open();
  QLineEdit& edit = focused(Id::Masked);
  QTest::keyClicks(&edit, "1507");
  ASSERT_EQ(edit.cursorPosition(), 5);
  QTest::keyClick(&edit, Qt::Key_Backspace);
  EXPECT_EQ(text(Id::Masked), "15/00/0000 00:00:00");
  EXPECT_EQ(edit.cursorPosition(), 4);
}

TEST_F(EditRenderer, CuttingFromAMaskedEditKeepsItsSeparators) {
  open();
  QLineEdit& edit = focused(Id::Masked);
  QTest::keyClicks(&edit, "15072024");
  edit.setSelection(0, 5);
  QTest::keySequence(&edit, QKeySequence::Cut);
  EXPECT_EQ(QGuiApplication::clipboard()->text(), "15/07");
  EXPECT_EQ(text(Id::Masked), "00/00/2024 00:00:00");
}

// --- IP addresses

TEST_F(EditRenderer, AnIpAddressIsTypedWithItsDots) {
  open();
  auto& field = dynamic_cast<editor::IpField&>(renderer(Id::Ip).widget());
  auto* first = field.parts().front();
  first->setFocus();
  QTest::keyClicks(first, "192");
  EXPECT_EQ(dialog_.GetDlgItemText(Id::Ip).ToUtf8(), "192.0.0.0");
  ASSERT_TRUE(field.parts()[1]->hasFocus()) << "a full part leads to the next one";
  QTest::keyClicks(field.parts()[1], "168.");
  ASSERT_TRUE(field.parts()[2]->hasFocus());
  QTest::keyClicks(field.parts()[2], "1.");
  QTest::keyClicks(field.parts()[3], "300");
  EXPECT_EQ(dialog_.GetDlgItemText(Id::Ip).ToUtf8(), "192.168.1.255");
}

TEST_F(EditRenderer, AWholeIpAddressCanBePasted) {
  open();
  auto& field = dynamic_cast<editor::IpField&>(renderer(Id::Ip).widget());
  QGuiApplication::clipboard()->setText("10.20.30.40");
  QTest::keySequence(field.parts()[2], QKeySequence::Paste);
  EXPECT_EQ(dialog_.GetDlgItemText(Id::Ip).ToUtf8(), "10.20.30.40");
  EXPECT_EQ(field.address(), "10.20.30.40");
}

TEST_F(EditRenderer, AnEmptyIpAddressShowsEmpty) {
  open();
  auto& field = dynamic_cast<editor::IpField&>(renderer(Id::Ip).widget());
  EXPECT_EQ(field.address(), "");
  dialog_.GetDlgItem(Id::Ip).setText(u"255.255.255.0");
  settle();
  EXPECT_EQ(field.address(), "255.255.255.0");
}

}  // namespace
