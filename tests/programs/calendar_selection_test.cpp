#include "programs/calendar_selection.h"

#include <algorithm>

#include "tests/programs/calendar_fixture.h"
#include "tests/support/faulty_files.h"

namespace {

using lamp::ProgramKind;
using support::TopKind;
using Dialog = XCDeviceCalendarSelectionZelLAMPManager;

class CalendarSelection : public support::Calendars {
 protected:
  CalendarSelection() {
    putFile("clock", calendarXml("clock", "T", "", ""));
    putFile("interval", calendarXml("interval", "F", "", ""));
    putFile("broken", "<calendar>");
    putFile("unmarked", "<calendar/>");
  }
  Dialog& open(ProgramKind kind) { return driver.show<Dialog>(nullptr, kind); }
  std::size_t rowOf(const std::string& name) {
    const auto names = driver.column("files", 0);
    return std::size_t(std::find(names.begin(), names.end(), name) - names.begin());
  }
  bool grey(const std::string& name) {
    const auto colour = driver.as<host::ListControl>("files").colour(rowOf(name));
    EXPECT_TRUE(!colour || *colour == (host::Colour{0xA0, 0xA0, 0xA0}));
    return colour.has_value();
  }
};

TEST_F(CalendarSelection, ListsAllCalendarsAndGreysThoseThatDoNotFit) {
  open(ProgramKind::clock);
  EXPECT_EQ(driver.title(), "[34185]");
  auto names = driver.column("files", 0);
  std::sort(names.begin(), names.end());
  EXPECT_EQ(names, (std::vector<std::string>{"broken", "clock", "interval", "unmarked"}));
  EXPECT_FALSE(grey("clock"));
  EXPECT_TRUE(grey("interval"));
  EXPECT_TRUE(grey("broken"));
  EXPECT_TRUE(grey("unmarked"));
  const auto& list = driver.as<host::ListControl>("files");
  EXPECT_EQ(list.row(rowOf("clock")).data, 1);
  EXPECT_EQ(list.row(rowOf("interval")).data, 0);
  driver.click("cancel");
  open(ProgramKind::interval);
  EXPECT_TRUE(grey("clock"));
  EXPECT_FALSE(grey("interval"));
}

TEST_F(CalendarSelection, OkIsEnabledWhileARowIsSelected) {
  open(ProgramKind::clock);
  EXPECT_FALSE(driver.enabled("ok"));
  EXPECT_EQ(driver.control("ok").disabledReason().ToUtf8(), "[60084]");
  EXPECT_FALSE(driver.tryClick("ok"));
  driver.select("files", {0});
  EXPECT_TRUE(driver.enabled("ok"));
  driver.select("files", {});
  EXPECT_FALSE(driver.enabled("ok"));
}

TEST_F(CalendarSelection, AFittingCalendarIsChosenWithNameAndFile) {
  Dialog& dialog = open(ProgramKind::interval);
  driver.select("files", {rowOf("interval")});
  driver.click("ok");
  EXPECT_EQ(driver.result(), IDOK);
  EXPECT_EQ(dialog.CalendarName().ToUtf8(), "interval");
  EXPECT_EQ(dialog.CalendarFile(), fileOf("interval"));
}

TEST_F(CalendarSelection, ADoubleClickActsAsOk) {
  Dialog& dialog = open(ProgramKind::clock);
  driver.doubleClick("files", rowOf("clock"));
  EXPECT_EQ(driver.result(), IDOK);
  EXPECT_EQ(dialog.CalendarName().ToUtf8(), "clock");
}

TEST_F(CalendarSelection, AGreyCalendarIsRefusedAndTheDialogStaysOpen) {
  struct Case {
    ProgramKind kind;
    const char* name;
    const char* message;
  };
  for (const Case& one : {Case{ProgramKind::clock, "interval", "[38982]"},
                          Case{ProgramKind::clock, "unmarked", "[38982]"},
                          Case{ProgramKind::interval, "clock", "[38983]"}}) {
    open(one.kind);
    driver.select("files", {rowOf(one.name)});
    driver.click("ok");
    ASSERT_EQ(driver.top(), TopKind::message);
    EXPECT_EQ(driver.message().text, one.message);
    EXPECT_EQ(driver.message().icon, host::MessageIcon::warning);
    driver.answer(host::MessageAnswer::ok);
    EXPECT_EQ(driver.result(), std::nullopt);
    driver.doubleClick("files", rowOf(one.name));
    EXPECT_EQ(driver.message().text, one.message);
    driver.answer(host::MessageAnswer::ok);
    driver.click("cancel");
    EXPECT_EQ(driver.result(), IDCANCEL);
  }
}

TEST_F(CalendarSelection, AnUnreadableCalendarCanBeChosen) {
  Dialog& dialog = open(ProgramKind::clock);
  driver.select("files", {rowOf("broken")});
  driver.click("ok");
  EXPECT_EQ(driver.result(), IDOK);
  EXPECT_EQ(dialog.CalendarName().ToUtf8(), "broken");
}

TEST_F(CalendarSelection, AFileIsReadByThePathThatItWasFoundUnderWhateverItsTitle) {
  for (const std::string& title : {std::string("a:b"), std::string("a\\b"), std::string("a\tb"),
                                   std::string("con"), std::string("\xFF"), std::string("\xFE")}) {
    std::filesystem::remove_all(folder.path() / storeName());
    putFile(title, calendarXml("x", "T", "", ""));
    Dialog& dialog = open(ProgramKind::clock);
    ASSERT_EQ(driver.column("files", 0).size(), 1U);
    const std::string shown = driver.column("files", 0)[0];
    EXPECT_FALSE(grey(shown)) << title;
    driver.select("files", {0});
    driver.click("ok");
    EXPECT_EQ(driver.result(), IDOK) << title;
    EXPECT_EQ(dialog.CalendarName().ToUtf8(), shown);
    EXPECT_EQ(dialog.CalendarFile(), fileOf(title));
  }
}

TEST_F(CalendarSelection, ARootOfAnotherNameIsReadLikeAny) {
  putFile("kalender", "<kalender><hasIOmodule>T</hasIOmodule></kalender>");
  open(ProgramKind::interval);
  EXPECT_TRUE(grey("kalender"));
  driver.click("cancel");
  open(ProgramKind::clock);
  EXPECT_FALSE(grey("kalender"));
}

TEST_F(CalendarSelection, SortedRowsKeepTheirFiles) {
  Dialog& dialog = open(ProgramKind::clock);
  driver.sort("files", 0);
  driver.sort("files", 0);
  EXPECT_EQ(driver.column("files", 0),
            (std::vector<std::string>{"unmarked", "interval", "clock", "broken"}));
  driver.select("files", {2});
  driver.click("ok");
  EXPECT_EQ(dialog.CalendarName().ToUtf8(), "clock");
  EXPECT_EQ(dialog.CalendarFile(), fileOf("clock"));
}

TEST_F(CalendarSelection, OkLooksAtTheFileAsItIsNow) {
  open(ProgramKind::clock);
  driver.select("files", {rowOf("clock")});
  putFile("clock", calendarXml("clock", "F", "", ""));
  driver.click("ok");
  EXPECT_EQ(driver.message().text, "[38982]");
}

TEST_F(CalendarSelection, AnEmptyStoreShowsAnEmptyList) {
  std::filesystem::remove_all(folder.path() / storeName());
  open(ProgramKind::clock);
  EXPECT_TRUE(driver.rows("files").empty());
  EXPECT_FALSE(driver.enabled("ok"));
  driver.click("cancel");
  EXPECT_EQ(driver.result(), IDCANCEL);
}

}  // namespace
