#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/ui/text_mask.h"
#include "tests/host/support/sample_dialog.h"
#include "tests/support/dialog_driver.h"

using host::TextMask;
using sample::Id;
using support::DialogDriver;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

// --- masks

TEST(TextMask, TheLayoutsSeparatorsAreShown) {
  const TextMask mask(u"DD DD", u"__:__", u'0', u"0123456789");
  EXPECT_TRUE(mask.isActive());
  EXPECT_FALSE(TextMask().isActive());
  EXPECT_EQ(mask.blank(), u"00:00");
  EXPECT_EQ(mask.length(), 5U);
  EXPECT_TRUE(mask.isPlace(1));
  EXPECT_FALSE(mask.isPlace(2));
  EXPECT_FALSE(mask.isPlace(5));
  EXPECT_EQ(mask.places(u"22:15"), u"2215");
  EXPECT_EQ(mask.places(u"22"), u"22");
}

TEST(TextMask, TypingFillsPlacesAndStepsOverSeparators) {
  const TextMask mask(u"DD DD", u"__:__", u'_', u"0123456789");
  std::u16string text = mask.blank();
  std::size_t caret = 0;
  EXPECT_TRUE(mask.type(text, caret, u'2'));
  EXPECT_FALSE(mask.type(text, caret, u'x'));
  EXPECT_FALSE(mask.type(text, caret, u':')) << "no separator stands here";
  EXPECT_TRUE(mask.type(text, caret, u'1'));
  EXPECT_TRUE(mask.type(text, caret, u':'));
  EXPECT_EQ(caret, 3U);
  EXPECT_TRUE(mask.type(text, caret, u'4'));
  EXPECT_TRUE(mask.type(text, caret, u'5'));
  EXPECT_FALSE(mask.type(text, caret, u'6')) << "no place is left";
  EXPECT_EQ(text, u"21:45");
  mask.erase(text, 1, 4);
  EXPECT_EQ(text, u"2_:_5");
}

TEST(TextMask, ATextOfAnotherLengthStartsBlank) {
  const TextMask mask(u"DD", u"__", u'0', u"0123456789");
  std::u16string text = u"something else";
  std::size_t caret = 0;
  EXPECT_TRUE(mask.type(text, caret, u'7'));
  EXPECT_EQ(text, u"70");
  text.clear();
  mask.erase(text, 0, 9);
  EXPECT_EQ(text, u"00");
}

// --- the program's side of controls

class Controls : public testing::Test {
 protected:
  void SetUp() override {
    dialog = &driver.show<sample::Dialog>();
    dialog->log.clear();
  }
  sample::Module module;
  DialogDriver driver;
  sample::Dialog* dialog = nullptr;
};

TEST_F(Controls, StartAsTheTableSays) {
  EXPECT_EQ(driver.text("title"), "[355]");
  EXPECT_EQ(driver.text("push"), "");
  EXPECT_FALSE(driver.enabled("disabled"));
  EXPECT_TRUE(driver.visible("disabled"));
  EXPECT_TRUE(driver.enabled("hidden"));
  EXPECT_FALSE(driver.visible("hidden"));
  EXPECT_EQ(driver.image("picture"), "program-icon.png");
  EXPECT_EQ(driver.image("ok"), "OK-16.png");
  EXPECT_EQ(driver.as<host::EditControl>("limited").limit(), 59);
  EXPECT_TRUE(driver.as<host::EditControl>("digits").isDigitsOnly());
  EXPECT_TRUE(driver.as<host::EditControl>("secret").isPassword());
  EXPECT_TRUE(driver.as<host::EditControl>("readOnly").isReadOnly());
  EXPECT_TRUE(driver.as<host::ListControl>("rows").isMultiSelect());
  EXPECT_FALSE(driver.as<host::ListControl>("oneRow").isMultiSelect());
  EXPECT_TRUE(driver.control("push").hasNumber());
  EXPECT_FALSE(driver.control("private").hasNumber());
}

TEST_F(Controls, AnEditTellsWhenItsTextDiffersALabelNever) {
  dialog->SetDlgItemText(Id::Free, u"x");
  dialog->SetDlgItemText(Id::Free, u"x");
  dialog->SetDlgItemText(Id::Title, u"y");
  dialog->SetDlgItemText(Id::Push, host::TextId::Cancel);
  EXPECT_EQ(driver.text("push"), "[312]");
  EXPECT_THAT(dialog->log, ElementsAre("change 6010"));
}

TEST_F(Controls, AShorterTextPullsTheSelectionIn) {
  dialog->SetDlgItemText(Id::Free, u"abcdef");
  dialog->Edit(Id::Free).selectAll();
  EXPECT_EQ(driver.selectedCharacters("free"), std::pair(std::size_t(0), std::size_t(6)));
  dialog->SetDlgItemText(Id::Free, u"ab");
  EXPECT_EQ(driver.selectedCharacters("free").second, 2U);
  dialog->Edit(Id::Free).select(5, 9);
  EXPECT_EQ(driver.selectedCharacters("free"), std::pair(std::size_t(2), std::size_t(2)));
}

TEST_F(Controls, ChangesAreNotedUntilTheyAreTaken) {
  auto& control = driver.as<CImageButton>("push");
  control.takeChanges();
  control.setText(u"x");
  control.setEnabled(false);
  EXPECT_EQ(control.takeChanges(), unsigned(host::Change::text) | unsigned(host::Change::state));
  control.setText(u"x");
  control.setEnabled(false);
  control.setVisible(true);
  control.setImage("");
  EXPECT_EQ(control.takeChanges(), 0U) << "what is set to what it was is no change";
  control.setImage("NEW-16.png");
  EXPECT_EQ(control.takeChanges(), unsigned(host::Change::state));
}

// --- the year view

class YearView : public Controls {
 protected:
  void SetUp() override {
    Controls::SetUp();
    year = &driver.as<XCCalendar>("year");
    year->SetSelType({1, 2, 3}, u"3", u"Sunday");
  }
  std::string typeOf(const XCDateTime& date) const {
    const auto* type = year->TypeOf(date);
    return type ? type->id.ToUtf8() : "none";
  }
  XCCalendar* year = nullptr;
};

TEST_F(YearView, PaintingGivesTheDayTheTypeInForce) {
  driver.paint("year", {2025, 4, 10});
  EXPECT_EQ(typeOf({2025, 4, 10}), "3");
  EXPECT_EQ(typeOf({2025, 4, 11}), "none");
  EXPECT_EQ(typeOf({2025, 4, 10, 23, 59, 59}), "3") << "the time of day does not matter";
  EXPECT_THAT(dialog->log, ElementsAre("paint 6020"));
}

TEST_F(YearView, PaintingTheSameTypeAgainClearsTheDay) {
  driver.paint("year", {2025, 4, 10});
  driver.paint("year", {2025, 4, 10});
  EXPECT_EQ(typeOf({2025, 4, 10}), "none");
  year->SetDisableUnselect(true);
  driver.paint("year", {2025, 4, 10});
  dialog->log.clear();
  driver.paint("year", {2025, 4, 10});
  EXPECT_EQ(typeOf({2025, 4, 10}), "3") << "unless that is switched off";
  EXPECT_THAT(dialog->log, IsEmpty());
}

TEST_F(YearView, AnotherTypeReplacesTheFirst) {
  driver.paint("year", {2025, 4, 10});
  year->SetSelType({0, 0, 0}, u"5");
  driver.paint("year", {2025, 4, 10});
  EXPECT_EQ(typeOf({2025, 4, 10}), "5");
}

TEST_F(YearView, DaysOutOfUseAreNotPainted) {
  year->Disable({2025, 1, 1}, {2025, 3, 31});
  year->Disable({2026, 7, 1}, {2026, 12, 31});
  year->Disable({2025, 6, 2}, {2025, 6, 1});
  struct Row {
    XCDateTime date;
    bool taken;
  };
  const Row rows[] = {{{2025, 3, 31}, false}, {{2025, 4, 1}, true},    {{2026, 6, 30}, true},
                      {{2026, 7, 1}, false},  {{2026, 12, 31}, false}, {{2024, 12, 31}, false},
                      {{2027, 1, 1}, false},  {{2025, 2, 30}, false},  {{2025, 6, 1}, true}};
  for (const Row& row : rows) {
    EXPECT_EQ(driver.tryPaint("year", row.date).done, row.taken)
        << row.date.GetDateTime(1, true, u"/", u":").ToUtf8();
    EXPECT_EQ(year->IsEnabledDay(row.date), row.taken);
  }
  EXPECT_EQ(year->FirstEnabledDay(), XCDateTime(2025, 4, 1));
  EXPECT_EQ(year->LastEnabledDay(), XCDateTime(2026, 6, 30));
  year->EnableAll();
  EXPECT_EQ(year->FirstEnabledDay(), XCDateTime(2025, 1, 1));
  EXPECT_EQ(year->LastEnabledDay(), XCDateTime(2026, 12, 31));
  year->Disable({2025, 1, 1}, {2026, 12, 31});
  EXPECT_EQ(year->FirstEnabledDay(), std::nullopt);
  EXPECT_EQ(year->LastEnabledDay(), std::nullopt);
}

TEST_F(YearView, TheProgramPaintsAnyDayAndTellsNobody) {
  year->Disable({2025, 1, 1}, {2025, 12, 31});
  year->SelectDay({2025, 5, 5}, {u"9", {}, u"nine"});
  EXPECT_EQ(typeOf({2025, 5, 5}), "9");
  year->SelectDay({2025, 2, 30}, {u"9", {}, u"nine"});
  EXPECT_EQ(typeOf({2025, 2, 30}), "none");
  year->ClearDays();
  EXPECT_EQ(typeOf({2025, 5, 5}), "none");
  EXPECT_THAT(dialog->log, IsEmpty());
}

TEST_F(YearView, ShowsTheFirstYearUntilAnotherIsChosen) {
  EXPECT_EQ(year->ShownYear(), 2025);
  year->ShowYear(2026);
  EXPECT_EQ(year->ShownYear(), 2026);
  year->ShowYear(2030);
  EXPECT_EQ(year->ShownYear(), 2026);
  year->SetMaxYear(2025);
  EXPECT_EQ(year->ShownYear(), 2025);
  year->SetMaxYear(2030);
  year->SetMinYear(2028);
  EXPECT_EQ(year->ShownYear(), 2028);
}

TEST_F(YearView, HasNamesForMonthsAndWeekdays) {
  year->SetMonthName(0, u"January");
  year->SetMonthName(11, u"December");
  year->SetWeekdayName(0, u"Monday");
  EXPECT_EQ(year->MonthName(0), u"January");
  EXPECT_EQ(year->MonthName(11), u"December");
  EXPECT_EQ(year->WeekdayName(0), u"Monday");
  EXPECT_EQ(year->WeekdayName(6), u"");
}

}  // namespace
