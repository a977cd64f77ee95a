#include "editor/renderers/year_renderer.h"

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
