#include "editor/program_chart/program_pane.h"

#include <gtest/gtest.h>

#include <QtTest/QTest>
#include <QtWidgets/QVBoxLayout>

#include "editor/dialogs/dialog_body.h"
#include "editor/front_end/qt_front_end.h"
#include "editor/front_end/widget_wnd.h"
#include "editor/program_chart/night_chart.h"
#include "tests/editor/program_chart/program_dialog.h"
#include "tests/support/fixed_clock.h"
#include "tests/support/settings_fake.h"
#include "tests/support/texts.h"

namespace {

using editor::NightSteps;
using editor::ValueRange;
using program_dialog::Id;
using program_dialog::powerEdit;
using program_dialog::timeEdit;

constexpr const char* GroupSchedules = "CDlgE06CfgZelLampManager";

class ProgramPane : public testing::Test {
 protected:
  ProgramPane() : wnd_(window_) {
    support::texts();
    new QVBoxLayout(&window_);
    host::installServices({.clockService = &clock_,
                           .idService = nullptr,
                           .channelService = nullptr,
                           .frontEndService = &frontEnd_,
                           .settingsService = &settings_});
  }

  void open(bool clock, const char* className = GroupSchedules, const char* list = "nodes") {
    module_.emplace(className, list);
    dialog_.emplace(clock);
    ASSERT_TRUE(dialog_->Create(&wnd_));
    window_.resize(900, 700);
    window_.show();
    settle();
  }
  static void settle() {
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
  }
  void select(std::vector<std::size_t> rows) {
    host::UserInput(*dialog_).select(dialog_->nodes(), std::move(rows));
    settle();
  }
  void type(int edit, const QString& text) {
    QWidget* line = frontEnd_.bodyOf(*dialog_)->renderer(edit)->focusWidget();
    QTest::keyClick(line, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(line, text);
    settle();
  }
  editor::ProgramPane* pane() {
    return dynamic_cast<editor::ProgramPane*>(frontEnd_.bodyOf(*dialog_)->sidePane());
  }
  const NightSteps& night() { return pane()->chart().night(); }
  ValueRange powerAt(int minute) { return night().spanAt(minute)->power.value(); }

  support::FixedClock clock_;
  support::SettingsFake settings_;
  editor::QtFrontEnd frontEnd_;
  QWidget window_;
  editor::WidgetWnd wnd_;
  std::optional<program_dialog::Module> module_;
  std::optional<program_dialog::Dialog> dialog_;
};

constexpr std::array<const char16_t*, 8> Clock = {u"00:00", u"100", u"22:30", u"70",
                                                  u"00:30", u"40",  u"05:30", u"80"};
constexpr std::array<const char16_t*, 8> Intervals = {u"60", u"100", u"60", u"70",
                                                      u"60", u"40",  u"60", u"80"};
constexpr int TwentyThree = 11 * 60;  // on the axis from noon to noon

TEST_F(ProgramPane, StandsOnlyInDialogsThatEditPrograms) {
  open(true, "SomeOtherDialog");
  EXPECT_EQ(pane(), nullptr);
}

TEST_F(ProgramPane, StandsInADayTypeEditorToo) {
  open(true, "XCDeviceCalendarDayTypesZelLAMPManager", "days");
  EXPECT_NE(pane(), nullptr);
}

TEST_F(ProgramPane, ADialogOfTheClassWithoutTheListGetsNone) {
  open(true, "XCDeviceCalendarDayTypesZelLAMPManager", "nodes");
  EXPECT_EQ(pane(), nullptr);
}

TEST_F(ProgramPane, StandsBesideTheFieldsAndBelowTheList) {
  open(true);
  const auto placeOf = [this](QWidget& widget) {
    return QRect(widget.mapTo(&window_, QPoint()), widget.size());
  };
  const auto widgetOf = [this](int id) -> QWidget& {
    return frontEnd_.bodyOf(*dialog_)->renderer(id)->widget();
  };
  const QRect chart = placeOf(*pane());
  for (int edit = Id::FirstField; edit <= Id::LastField; ++edit)
    EXPECT_LT(placeOf(widgetOf(edit)).right(), chart.left());
  EXPECT_LT(placeOf(widgetOf(Id::Nodes)).bottom(), chart.top());
}

TEST_F(ProgramPane, ShowsTheSelectedRows) {
  open(true);
  dialog_->addRow(Clock);
  settle();
  EXPECT_TRUE(night().empty());
  select({0});
  EXPECT_EQ(powerAt(TwentyThree), (ValueRange{70, 70}));
  EXPECT_TRUE(pane()->chart().accessibleDescription().contains("22:30"));
  select({});
  EXPECT_TRUE(night().empty());
}

TEST_F(ProgramPane, TellsClockAndIntervalProgramsApart) {
  open(false);
  dialog_->addRow(Intervals);
  select({0});
  EXPECT_EQ(night().times(), editor::ProgramTimes::interval);
  EXPECT_EQ(powerAt(61), (ValueRange{70, 70}));
}

TEST_F(ProgramPane, FollowsEveryKey) {
  open(true);
  dialog_->addRow(Clock);
  select({0});
  type(powerEdit(2), "5");
  EXPECT_EQ(powerAt(TwentyThree), (ValueRange{5, 5}));
  type(powerEdit(2), "56");
  EXPECT_EQ(powerAt(TwentyThree), (ValueRange{56, 56}));
  type(timeEdit(2), "2315");
  EXPECT_EQ(powerAt(TwentyThree), (ValueRange{100, 100}));
  EXPECT_EQ(powerAt(TwentyThree + 15), (ValueRange{56, 56}));
}

TEST_F(ProgramPane, WhatIsTypedForRowsThatDifferNarrowsTheBandWithoutReadingTheRowsAgain) {
  open(true);
  dialog_->addRow(Clock);
  auto other = Clock;
  other[3] = u"30";
  other[5] = u"10";
  dialog_->addRow(other);
  select({0, 1});
  EXPECT_EQ(powerAt(TwentyThree), (ValueRange{30, 70}));
  const std::size_t before = pane()->rowsRead();
  type(powerEdit(2), "50");
  EXPECT_EQ(powerAt(TwentyThree), (ValueRange{50, 50}));
  EXPECT_EQ(powerAt(TwentyThree + 120), (ValueRange{10, 40})) << "step 3 still differs";
  EXPECT_EQ(pane()->rowsRead(), before);
  select({1});
  EXPECT_EQ(powerAt(TwentyThree + 120), (ValueRange{10, 10}));
}

TEST_F(ProgramPane, SeveralGesturesBeforeARefreshLeaveNothingOut) {
  open(true);
  dialog_->addRow(Clock);
  auto other = Clock;
  other[3] = u"30";
  dialog_->addRow(other);
  select({0, 1});
  host::UserInput user(*dialog_);
  user.select(dialog_->nodes(), {1});
  user.type(dialog_->GetDlgItem(powerEdit(2)), u"10");
  user.select(dialog_->nodes(), {0, 1});
  settle();
  EXPECT_EQ(powerAt(TwentyThree), (ValueRange{10, 70})) << "the same rows, but one was typed into";
  dialog_->nodes().element(0)->setAttribute(program_dialog::Dialog::attribute(3), u"");
  dialog_->nodes().cellsChanged();
  settle();
  EXPECT_EQ(powerAt(TwentyThree), (ValueRange{10, 10}));
  user.type(dialog_->GetDlgItem(powerEdit(2)), u"5");
  user.type(dialog_->GetDlgItem(powerEdit(2)), u"");
  settle();
  EXPECT_EQ(night().spanAt(TwentyThree)->power, std::nullopt)
      << "the edit and the first row are as before, the second is not";
}

TEST_F(ProgramPane, WithoutAChangeNothingIsReadOrPainted) {
  open(true);
  dialog_->addRow(Clock);
  select({0});
  const std::size_t before = pane()->rowsRead();
  frontEnd_.bodyOf(*dialog_)->noteChange();
  settle();
  EXPECT_EQ(pane()->rowsRead(), before);
}

TEST_F(ProgramPane, AnEmptiedOrOutOfRangeFieldLeavesAGap) {
  open(true);
  dialog_->addRow(Clock);
  select({0});
  type(powerEdit(2), "101");
  EXPECT_EQ(night().spanAt(TwentyThree)->power, std::nullopt);
  type(powerEdit(2), "10");
  EXPECT_EQ(powerAt(TwentyThree), (ValueRange{10, 10}));
}

TEST_F(ProgramPane, ShowsWhatTheProgramWritesIntoTheRowsItself) {
  open(true);
  XmlDocument::XmlNode& row = dialog_->addRow(Clock);
  select({0});
  row.setAttribute(program_dialog::Dialog::attribute(3), u"33");
  dialog_->nodes().cellsChanged();
  settle();
  EXPECT_EQ(powerAt(TwentyThree), (ValueRange{33, 33}));
}

TEST_F(ProgramPane, FollowsTheRowsWhenTheyAreSortedOrFilledAnew) {
  open(true);
  dialog_->addRow(Clock);
  auto other = Clock;
  other[3] = u"30";
  dialog_->addRow(other);
  select({0});
  host::UserInput(*dialog_).sort(dialog_->nodes(), 4);
  settle();
  EXPECT_EQ(dialog_->nodes().selection(), std::vector<std::size_t>{1}) << "it moved with its row";
  EXPECT_EQ(powerAt(TwentyThree), (ValueRange{70, 70}));
  dialog_->nodes().clearRows();
  settle();
  EXPECT_TRUE(night().empty());
}

TEST_F(ProgramPane, ChangesNothingInTheDialog) {
  open(true);
  dialog_->addRow(Clock);
  select({0});
  const XCBasicString before = dialog_->nodes().cell(0, 3);
  pane()->follow();
  pane()->chart().grab();
  EXPECT_EQ(dialog_->nodes().cell(0, 3), before);
  EXPECT_EQ(dialog_->nodes().selection(), std::vector<std::size_t>{0});
}

}  // namespace
