#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QRadioButton>

#include "editor/renderers/renderer_table.h"
#include "tests/editor/support/editor_rig.h"

namespace {

using host::ControlKind;

class SimpleControls : public support::EditorRig {};

TEST_F(SimpleControls, EveryKindHasARenderer) {
  for (const ControlKind kind :
       {ControlKind::label, ControlKind::group, ControlKind::button, ControlKind::radio,
        ControlKind::check, ControlKind::edit, ControlKind::combo, ControlKind::list,
        ControlKind::ip, ControlKind::year, ControlKind::image})
    EXPECT_TRUE(editor::hasRenderer(kind)) << static_cast<int>(kind);
  open();
  for (const auto& control : dialog_.Controls()) EXPECT_NO_THROW(renderer(control->id()).widget());
}

TEST_F(SimpleControls, ALabelShowsItsTextAsItStands) {
  dialog_.GetDlgItem(Id::Title).setText(u"<b>R&D</b>");
  open();
  const auto& label = dynamic_cast<QLabel&>(renderer(Id::Title).widget());
  EXPECT_EQ(label.text(), "<b>R&D</b>");
  EXPECT_EQ(label.textFormat(), Qt::PlainText);
}

TEST_F(SimpleControls, ACaptionChangedByTheProgramShowsWithTheNextTurnOfTheLoop) {
  open();
  dialog_.GetDlgItem(Id::Box).setText(u"New & old");
  auto& box = dynamic_cast<QGroupBox&>(renderer(Id::Box).widget());
  EXPECT_EQ(box.title(), "");
  settle();
  EXPECT_EQ(box.title(), "New && old");
}

TEST_F(SimpleControls, AButtonIsPressedByMouseAndByKey) {
  open();
  QTest::mouseClick(&widget<QPushButton>(Id::Push), Qt::LeftButton);
  QTest::keyClick(&widget<QPushButton>(Id::Other), Qt::Key_Space);
  EXPECT_EQ(dialog_.log, (std::vector<std::string>{"click " + std::to_string(Id::Push),
                                                   "click " + std::to_string(Id::Other)}));
}

TEST_F(SimpleControls, ADisabledButtonTellsWhyAndTakesNoClick) {
  dialog_.onInit = [](sample::Dialog& dialog) {
    dialog.GetDlgItem(Id::Push).setEnabled(false, u"No node selected");
  };
  open();
  QTest::mouseClick(&widget<QPushButton>(Id::Push), Qt::LeftButton);
  EXPECT_TRUE(dialog_.log.empty());
  EXPECT_FALSE(widget<QPushButton>(Id::Push).isEnabled());
  EXPECT_EQ(widget<QPushButton>(Id::Push).toolTip(), "No node selected");
  dialog_.GetDlgItem(Id::Push).setEnabled(true);
  settle();
  EXPECT_TRUE(widget<QPushButton>(Id::Push).isEnabled());
  EXPECT_EQ(widget<QPushButton>(Id::Push).toolTip(), "");
}

TEST_F(SimpleControls, EveryKindOfControlTellsWhyItIsDisabled) {
  open();
  for (const int id :
       {Id::Push, Id::RadioA, Id::Box1, Id::Free, Id::Choice, Id::Rows, Id::Ip, Id::Year}) {
    dialog_.GetDlgItem(id).setEnabled(false, u"No node selected");
    settle();
    EXPECT_EQ(renderer(id).widget().toolTip(), "No node selected") << id;
  }
}

TEST_F(SimpleControls, AButtonShowsItsImageInItsOwnSize) {
  dialog_.onInit = [](sample::Dialog& dialog) {
    dialog.Get<CImageButton>(Id::Push).setImage("ZELLAMPMANAGER-50.png");
  };
  open();
  EXPECT_FALSE(widget<QPushButton>(Id::Push).icon().isNull());
  EXPECT_EQ(widget<QPushButton>(Id::Push).iconSize(), QSize(50, 50));
  EXPECT_TRUE(widget<QPushButton>(Id::Other).icon().isNull());
}

TEST_F(SimpleControls, AnImageIsShown) {
  open();
  const auto& label = dynamic_cast<QLabel&>(renderer(Id::Picture).widget());
  EXPECT_EQ(label.pixmap().deviceIndependentSize(), QSizeF(64, 64));
}

TEST_F(SimpleControls, ACheckBoxFollowsTheModelBothWays) {
  open();
  auto& box = widget<QCheckBox>(Id::Box1);
  QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(8, box.height() / 2));
  EXPECT_TRUE(dialog_.Check(Id::Box1).isOn());
  dialog_.Check(Id::Box1).setOn(false);
  settle();
  EXPECT_FALSE(box.isChecked());
}

TEST_F(SimpleControls, RadioButtonsThatStandTogetherExcludeOneAnother) {
  open();
  const auto click = [this](int id) {
    auto& button = widget<QRadioButton>(id);
    QTest::mouseClick(&button, Qt::LeftButton, {}, QPoint(8, button.height() / 2));
    settle();
  };
  click(Id::RadioA);
  click(Id::RadioD);
  click(Id::RadioB);
  EXPECT_FALSE(widget<QRadioButton>(Id::RadioA).isChecked());
  EXPECT_TRUE(widget<QRadioButton>(Id::RadioB).isChecked());
  EXPECT_TRUE(widget<QRadioButton>(Id::RadioD).isChecked()) << "another group";
  click(Id::RadioB);
  EXPECT_TRUE(widget<QRadioButton>(Id::RadioB).isChecked()) << "a second click keeps it";
}

TEST_F(SimpleControls, ADropDownListShowsItsEntriesAndTellsTheChoiceOnce) {
  open();
  auto& box = widget<QComboBox>(Id::Choice);
  EXPECT_EQ(box.count(), 3);
  EXPECT_EQ(box.currentIndex(), -1);
  QTest::keyClick(&box, Qt::Key_Down);
  EXPECT_EQ(dialog_.Combo(Id::Choice).selected(), 0U);
  EXPECT_EQ(dialog_.log, std::vector<std::string>{"choose " + std::to_string(Id::Choice)});
  dialog_.Combo(Id::Choice).select(2);
  settle();
  EXPECT_EQ(box.currentIndex(), 2);
  EXPECT_EQ(dialog_.log.size(), 1U) << "the program's choice is no gesture";
}

}  // namespace
