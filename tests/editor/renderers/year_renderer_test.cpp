#include "editor/renderers/year_renderer.h"

#include <QtGui/QHelpEvent>
#include <QtWidgets/QToolTip>

#include "editor/renderers/day_type_sign.h"
#include "editor/renderers/year_view.h"
#include "tests/editor/support/editor_rig.h"

namespace {

class YearRenderer : public support::EditorRig {
 protected:
  void openCalendar() {
    dialog_.onInit = [](sample::Dialog& dialog) {
      auto& calendar = dialog.Get<XCCalendar>(Id::Year);
      calendar.SetSelType({200, 30, 30}, u"3", u"Holiday");
      calendar.SetDisableUnselect(true);
      calendar.Disable({2025, 1, 1}, {2025, 3, 14});
    };
    open();
  }
  XCCalendar& calendar() { return dialog_.Get<XCCalendar>(Id::Year); }
  editor::YearView& view() { return rendererAs<editor::YearRenderer>(Id::Year).view(); }
  QPoint at(const XCDateTime& day) { return view().grid().cellOf(day).center(); }
  std::string typeOf(const XCDateTime& day) {
    const XCCalendar::DayType* type = calendar().TypeOf(day);
    return type == nullptr ? "" : type->id.ToUtf8();
  }
};

TEST_F(YearRenderer, EveryDayOfTheYearIsFoundWhereItIsDrawn) {
  openCalendar();
  for (XCDateTime day(2025, 1, 1); day.Year() == 2025; day = day.AddDays(1))
    ASSERT_EQ(view().grid().dayAt(at(day)), day) << day.Month() << "/" << day.Day();
}

TEST_F(YearRenderer, AClickPaintsADay) {
  openCalendar();
  QTest::mouseClick(&view(), Qt::LeftButton, {}, at({2025, 4, 10}));
  EXPECT_EQ(typeOf({2025, 4, 10}), "3");
  EXPECT_EQ(dialog_.log, std::vector<std::string>{"paint " + std::to_string(Id::Year)});
}

TEST_F(YearRenderer, ADragPaintsEveryDayItComesOver) {
  openCalendar();
  QTest::mousePress(&view(), Qt::LeftButton, {}, at({2025, 6, 2}));
  for (int day = 3; day <= 5; ++day) {
    QMouseEvent move(QEvent::MouseMove, at({2025, 6, day}),
                     view().mapToGlobal(QPointF(at({2025, 6, day}))), Qt::NoButton, Qt::LeftButton,
                     {});
    QCoreApplication::sendEvent(&view(), &move);
  }
  QTest::mouseRelease(&view(), Qt::LeftButton, {}, at({2025, 6, 5}));
  for (int day = 2; day <= 5; ++day) EXPECT_EQ(typeOf({2025, 6, day}), "3") << day;
  EXPECT_EQ(dialog_.log.size(), 4U) << "a day is painted once";
}

TEST_F(YearRenderer, AQuickDragLeavesNoDayOut) {
  openCalendar();
  QTest::mousePress(&view(), Qt::LeftButton, {}, at({2025, 6, 2}));
  QMouseEvent move(QEvent::MouseMove, at({2025, 6, 8}),
                   view().mapToGlobal(QPointF(at({2025, 6, 8}))), Qt::NoButton, Qt::LeftButton, {});
  QCoreApplication::sendEvent(&view(), &move);
  QTest::mouseRelease(&view(), Qt::LeftButton, {}, at({2025, 6, 8}));
  for (int day = 2; day <= 8; ++day) EXPECT_EQ(typeOf({2025, 6, day}), "3") << day;
  EXPECT_EQ(dialog_.log.size(), 7U);
}

TEST_F(YearRenderer, ADragThatBeganElsewhereThanOnTheViewPaintsNothing) {
  openCalendar();
  QTest::mouseClick(&view(), Qt::LeftButton, {}, view().yearArrow(1).center());
  QMouseEvent move(QEvent::MouseMove, at({2026, 6, 8}),
                   view().mapToGlobal(QPointF(at({2026, 6, 8}))), Qt::NoButton, Qt::LeftButton, {});
  QCoreApplication::sendEvent(&view(), &move);
  EXPECT_EQ(typeOf({2026, 6, 8}), "");
}

TEST_F(YearRenderer, ADayOutOfUseIsNotPainted) {
  openCalendar();
  QTest::mouseClick(&view(), Qt::LeftButton, {}, at({2025, 2, 1}));
  EXPECT_EQ(typeOf({2025, 2, 1}), "");
  EXPECT_TRUE(dialog_.log.empty());
}

TEST_F(YearRenderer, TheKeysMoveAndPaint) {
  openCalendar();
  view().setFocus();
  ASSERT_EQ(view().cursor(), XCDateTime(2025, 3, 15)) << "the first day that can be painted";
  QTest::keyClick(&view(), Qt::Key_Right);
  EXPECT_EQ(typeOf({2025, 3, 16}), "");
  QTest::keyClick(&view(), Qt::Key_Space);
  EXPECT_EQ(typeOf({2025, 3, 16}), "3");
  QTest::keyClick(&view(), Qt::Key_Down, Qt::ShiftModifier);
  EXPECT_EQ(typeOf({2025, 3, 23}), "3");
}

TEST_F(YearRenderer, ShiftPaintsEveryDayOnTheWay) {
  openCalendar();
  view().setFocus();
  QTest::keyClick(&view(), Qt::Key_Down);
  QTest::keyClick(&view(), Qt::Key_Down, Qt::ShiftModifier);
  EXPECT_EQ(typeOf({2025, 3, 21}), "");
  for (int day = 22; day <= 29; ++day) EXPECT_EQ(typeOf({2025, 3, day}), "3") << day;
  EXPECT_EQ(typeOf({2025, 3, 30}), "");
  QTest::keyClick(&view(), Qt::Key_Up, Qt::ShiftModifier);
  EXPECT_EQ(view().cursor(), XCDateTime(2025, 3, 22));
}

TEST_F(YearRenderer, ShiftClearsNothingWherePaintingAgainClears) {
  openCalendar();
  calendar().SetDisableUnselect(false);
  view().setFocus();
  QTest::keyClick(&view(), Qt::Key_Space);
  QTest::keyClick(&view(), Qt::Key_Right, Qt::ShiftModifier);
  EXPECT_EQ(typeOf({2025, 3, 15}), "3") << "where the way began";
  EXPECT_EQ(typeOf({2025, 3, 16}), "3");
}

TEST_F(YearRenderer, ShiftPaintsNoDayOutOfUse) {
  openCalendar();
  view().setFocus();
  QTest::keyClick(&view(), Qt::Key_Home, Qt::ShiftModifier);
  EXPECT_EQ(view().cursor(), XCDateTime(2025, 3, 1));
  EXPECT_EQ(typeOf({2025, 3, 15}), "3");
  EXPECT_EQ(typeOf({2025, 3, 14}), "");
}

TEST_F(YearRenderer, HomeAndEndGoToTheEndsOfTheMonth) {
  openCalendar();
  view().setFocus();
  QTest::keyClick(&view(), Qt::Key_End);
  EXPECT_EQ(view().cursor(), XCDateTime(2025, 3, 31));
  QTest::keyClick(&view(), Qt::Key_Home);
  EXPECT_EQ(view().cursor(), XCDateTime(2025, 3, 1));
}

TEST_F(YearRenderer, TheKeysGoToTheOtherYearsAndNoFurther) {
  openCalendar();
  view().setFocus();
  for (int month = 0; month < 42; ++month) QTest::keyClick(&view(), Qt::Key_Down);
  EXPECT_EQ(calendar().ShownYear(), 2026);
  QTest::keyClick(&view(), Qt::Key_PageUp);
  EXPECT_EQ(calendar().ShownYear(), 2025);
  QTest::keyClick(&view(), Qt::Key_PageUp);
  EXPECT_EQ(calendar().ShownYear(), 2025);
}

TEST_F(YearRenderer, ADaysTooltipTellsDateAndDayType) {
  openCalendar();
  calendar().SetWeekdayName(3, u"Thursday");
  const auto tip = [this](const XCDateTime& day) {
    QHelpEvent help(QEvent::ToolTip, at(day), view().mapToGlobal(at(day)));
    QCoreApplication::sendEvent(&view(), &help);
    return QToolTip::text().toStdString();
  };
  EXPECT_EQ(tip({2025, 4, 10}), "Thursday 10/04/2025");
  QTest::mouseClick(&view(), Qt::LeftButton, {}, at({2025, 4, 10}));
  EXPECT_EQ(tip({2025, 4, 10}), "Thursday 10/04/2025\nHoliday");
  EXPECT_EQ(view().accessibleDescription().toStdString(), tip({2025, 4, 10}))
      << "the day that the keys are on, for those who can't see it";
  EXPECT_NE(tip({2025, 2, 6}).find("[60212]"), std::string::npos) << "out of use";
}

TEST_F(YearRenderer, ADayTypeIsToldByMoreThanItsColour) {
  openCalendar();
  const auto picture = [this](const XCDateTime& day, const char16_t* name) {
    calendar().SelectDay(day, {u"3", {200, 30, 30}, name});
    return view().grab(view().grid().cellOf(day)).toImage();
  };
  EXPECT_NE(picture({2025, 4, 10}, u"Day type - 4"), picture({2025, 4, 10}, u"Day type - 5"))
      << "the colour is the same";
}

TEST_F(YearRenderer, ADayOutOfUseLooksUnlikeAnyOther) {
  openCalendar();
  const QImage usable = view().grab(view().grid().cellOf({2025, 5, 3})).toImage();
  calendar().Disable({2025, 5, 3}, {2025, 5, 3});
  EXPECT_NE(view().grab(view().grid().cellOf({2025, 5, 3})).toImage(), usable);
}

TEST_F(YearRenderer, TheSignIsTheNumberInTheNameOrElseTheIdentifier) {
  EXPECT_EQ(editor::dayTypeSign({u"3", {}, u"Day type - 4"}), "4");
  EXPECT_EQ(editor::dayTypeSign({u"9", {}, u"Day type - 10"}), "10");
  EXPECT_EQ(editor::dayTypeSign({u"3", {}, u"Holiday"}), "3");
  EXPECT_EQ(editor::dayTypeSign({u"3", {}, u"Year 2025"}), "3");
  EXPECT_EQ(editor::dayTypeSign({u"3", {}, u""}), "3");
  EXPECT_EQ(editor::dayTypeSign({u"", {}, u""}), "");
}

TEST_F(YearRenderer, PaintsAtEverySize) {
  openCalendar();
  for (const QSize size : {QSize(1, 1), QSize(40, 900), QSize(3000, 200)}) {
    view().setMinimumSize(0, 0);
    view().resize(size);
    EXPECT_FALSE(view().grab().isNull());
    QTest::mouseClick(&view(), Qt::LeftButton, {}, QPoint(size.width() / 2, size.height() / 2));
  }
}

TEST_F(YearRenderer, TheArrowsShowTheOtherYearsAndNoMore) {
  openCalendar();
  const auto arrow = [this](int step) {
    QTest::mouseClick(&view(), Qt::LeftButton, {}, view().yearArrow(step).center());
    return calendar().ShownYear();
  };
  EXPECT_EQ(arrow(1), 2026);
  EXPECT_EQ(arrow(1), 2026);
  EXPECT_EQ(arrow(-1), 2025);
  EXPECT_EQ(arrow(-1), 2025);
}

}  // namespace
