#include "programs/calendar_editor.h"

#include <chrono>

#include "tests/programs/calendar_editor_fixture.h"

namespace {

using lamp::ProgramKind;
using support::CalendarEditor;
using support::TopKind;
using Texts = std::vector<std::string>;

// --- opening

TEST_F(CalendarEditor, OpensOverTheTwelveMonthsFromToday) {
  open();
  EXPECT_EQ(driver.title(), "[32715] - Main street");
  auto& view = driver.as<XCCalendar>("year");
  EXPECT_EQ(view.MinYear(), 2025);
  EXPECT_EQ(view.MaxYear(), 2026);
  EXPECT_EQ(view.ShownYear(), 2025);
  EXPECT_EQ(view.FirstEnabledDay(), XCDateTime(2025, 3, 15));
  EXPECT_EQ(view.LastEnabledDay(), XCDateTime(2026, 3, 14));
  EXPECT_EQ(view.MonthName(0).ToUtf8(), "[436]");
  EXPECT_EQ(view.MonthName(11).ToUtf8(), "[447]");
  EXPECT_EQ(view.WeekdayName(0).ToUtf8(), "[34857]");
  EXPECT_EQ(view.WeekdayName(6).ToUtf8(), "[34863]");
  EXPECT_EQ(daysOfType("0").size(), 365U);
  EXPECT_EQ(daysOfType("0").front(), "15/03/2025");
  EXPECT_EQ(daysOfType("0").back(), "14/03/2026");
  EXPECT_EQ(driver.text("name"), "");
  EXPECT_TRUE(driver.as<host::EditControl>("name").isReadOnly());
}

TEST_F(CalendarEditor, ShowsTheDayTypesWithTheFirstChosen) {
  open();
  EXPECT_EQ(driver.text("dayType0"), "[455] - 1");
  EXPECT_EQ(driver.text("dayType9"), "[455] - 10");
  EXPECT_EQ(driver.as<host::CheckControl>("dayType0").swatch(), (host::Colour{0xFF, 0, 0}));
  EXPECT_EQ(driver.as<host::CheckControl>("dayType9").swatch(), (host::Colour{0x80, 0x80, 0}));
  EXPECT_TRUE(driver.checked("dayType0"));
  for (int number = 1; number < 10; ++number)
    EXPECT_FALSE(driver.checked("dayType" + std::to_string(number)));
  EXPECT_EQ(driver.as<XCCalendar>("year").SelType().id.ToUtf8(), "0");
}

TEST_F(CalendarEditor, CaptionsAndImages) {
  open();
  const std::pair<const char*, Texts> expected[] = {{"dayTypesGroup", {"[431]", ""}},
                                                    {"ok", {"[311]", "OK-16.png"}},
                                                    {"cancel", {"[312]", "CANCEL-16.png"}},
                                                    {"fastSelection", {"[433]", "OPTIONS-16.png"}},
                                                    {"dayTypes", {"[32705]", "OPTIONS-16.png"}},
                                                    {"load", {"[34185]", "LOAD-16.png"}},
                                                    {"save", {"[34186]", "SAVE-16.png"}}};
  for (const auto& [name, shown] : expected)
    EXPECT_EQ((Texts{driver.text(name), driver.image(name)}), shown) << name;
}

TEST_F(CalendarEditor, KeepsItsOpeningSizeAsTheLeast) {
  EXPECT_TRUE(XCDeviceCalendarZelLAMPManager::Template().openingSizeIsLeast);
}

TEST_F(CalendarEditor, TheLoadButtonNeedsAStoredCalendar) {
  open();
  EXPECT_FALSE(driver.enabled("load"));
  EXPECT_EQ(driver.control("load").disabledReason().ToUtf8(), "[60083]");
  driver.click("cancel");
  putFile("broken", "no xml");
  open();
  EXPECT_TRUE(driver.enabled("load"));
}

TEST_F(CalendarEditor, ASpanThatStartsInJanuaryLiesInOneYear) {
  driver.clock().set({2028, 1, 1, 0, 0, 0});
  open();
  auto& view = driver.as<XCCalendar>("year");
  EXPECT_EQ(view.MinYear(), 2028);
  EXPECT_EQ(view.MaxYear(), 2028);
  EXPECT_EQ(daysOfType("0").size(), 366U);
  EXPECT_TRUE(driver.tryPaint("year", {2028, 1, 1}));
  EXPECT_TRUE(driver.tryPaint("year", {2028, 12, 31}));
}

TEST_F(CalendarEditor, ShowsTheCalendarOfTheController) {
  putFile("Winter", calendarXml("other", "F", emptyDays("F"), year({{0, '3'}, {100, '7'}})));
  open(ProgramKind::interval, "Winter");
  EXPECT_EQ(driver.text("name"), "Winter");
  EXPECT_EQ(daysOfType("3"), Texts{"01/01/2026"});
  EXPECT_EQ(daysOfType("7"), Texts{"10/04/2025"});
  EXPECT_EQ(daysOfType("0").size(), 363U);
  driver.click("ok");
  expectCancelledWithNothingKept();
}

TEST_F(CalendarEditor, YearStringsOfEveryLengthAreShownAndAreNoChange) {
  struct Case {
    const char* what;
    std::string year;
    std::size_t sevens;
  };
  const Case cases[] = {{"empty", "", 0},
                        {"short", std::string(300, '7'), 299},  // slot 59 has no day in the span
                        {"whole", std::string(366, '7'), 365},
                        {"long", std::string(400, '7'), 365},
                        {"foreign", std::string(200, 'x') + std::string(166, '7'), 166}};
  for (const Case& one : cases) {
    putFile("Winter", calendarXml("Winter", "F", emptyDays("F"), one.year));
    open(ProgramKind::interval, "Winter");
    EXPECT_EQ(daysOfType("7").size(), one.sevens) << one.what;
    EXPECT_EQ(daysOfType("0").size(), 365 - one.sevens) << one.what;
    driver.click("ok");
    expectCancelledWithNothingKept();
  }
}

TEST_F(CalendarEditor, ACalendarThatCantBeLoadedIsReportedAndItsNameStays) {
  putFile("broken", "<calendar>");
  for (const char* name : {"missing", "broken"}) {
    openWithout(name, "[34191]");
    EXPECT_EQ(driver.text("name"), name);
    EXPECT_EQ(daysOfType("0").size(), 365U);
    driver.click("ok");
    expectCancelledWithNothingKept();
  }
}

TEST_F(CalendarEditor, ACalendarWhoseNameCantBeTypedIsLoadedAssignedAndFoundAgain) {
  for (const std::string& title : {std::string("a:b"), std::string("a\\b"), std::string("a\tb"),
                                   std::string("con"), std::string("nul.txt")}) {
    putFile(title, calendarXml("x", "F", emptyDays("F"), year({{100, '3'}})));
    manager.element()->SetValue("calendar", u"");
    open();
    loadStored(title);
    EXPECT_EQ(driver.text("name"), title);
    EXPECT_EQ(typeOf({2025, 4, 10}), "3") << title;
    driver.click("ok");
    expectAssigned(title);
    XCVarnisGuids::Get().Validate(XCVarnisGuids::DeviceConfiguration);
    open(ProgramKind::interval, title);
    ASSERT_EQ(driver.top(), TopKind::dialog) << title;
    EXPECT_EQ(typeOf({2025, 4, 10}), "3") << title;
    driver.click("ok");
    expectCancelledWithNothingKept();
    std::filesystem::remove(fileOf(title));
  }
}

TEST_F(CalendarEditor, ARootOfAnotherNameIsReadLikeAny) {
  putFile("kalender", "<kalender><hasIOmodule>F</hasIOmodule>" + emptyDays("F") + "<year>" +
                          year({{100, '3'}}) + "</year></kalender>");
  open(ProgramKind::interval, "kalender");
  EXPECT_EQ(typeOf({2025, 4, 10}), "3");
  driver.click("ok");
  expectCancelledWithNothingKept();
}

TEST_F(CalendarEditor, ANameInTheConfigurationNeverLeadsOutOfTheStore) {
  putFile("A", calendarXml("A", "F", emptyDays("F"), year()));
  folder.write("secret.xclmc", calendarXml("secret", "F", emptyDays("F"), std::string(366, '5')));
  std::filesystem::create_directories(fileOf("inner").replace_extension());
  folder.write(storeName() + "/inner/secret.xclmc",
               calendarXml("secret", "F", emptyDays("F"), std::string(366, '5')));
  const std::string absolute = (folder.path() / "secret").string();
  for (const std::string& name :
       {std::string("../secret"), absolute, std::string(".."), std::string("..\\secret"),
        std::string("inner/secret"), std::string("./inner/secret"), std::string("C:secret"),
        std::string("con"), std::string("nul.txt"), std::string(300, 'a')}) {
    openWithout(name, "[34191]");
    EXPECT_TRUE(daysOfType("5").empty());
    driver.click("cancel");
  }
}

// --- painting

TEST_F(CalendarEditor, PaintsTheChosenDayTypeAndNeverClearsADay) {
  open();
  paintAs(4, {2025, 4, 10});
  EXPECT_EQ(typeOf({2025, 4, 10}), "4");
  driver.paint("year", {2025, 4, 10});
  EXPECT_EQ(typeOf({2025, 4, 10}), "4");
  paintAs(9, {2025, 4, 10});
  EXPECT_EQ(typeOf({2025, 4, 10}), "9");
  EXPECT_FALSE(driver.checked("dayType4"));
  const auto* type = driver.as<XCCalendar>("year").TypeOf({2025, 4, 10});
  EXPECT_EQ(type->colour, (host::Colour{0x80, 0x80, 0}));
}

TEST_F(CalendarEditor, DaysOutsideTheSpanCantBePainted) {
  open();
  driver.click("dayType1");
  const XCDateTime outside[] = {{2025, 3, 14},  {2025, 1, 1},   {2026, 3, 15},
                                {2026, 12, 31}, {2024, 12, 31}, {2027, 1, 1}};
  for (const XCDateTime& date : outside)
    EXPECT_FALSE(driver.tryPaint("year", date)) << textOf(date);
  EXPECT_TRUE(driver.tryPaint("year", {2025, 3, 15}));
  EXPECT_TRUE(driver.tryPaint("year", {2026, 3, 14}));
  EXPECT_EQ(daysOfType("1"), (Texts{"15/03/2025", "14/03/2026"}));
}

// --- fast selection

// The days of a span with a weekday, counted from a Sunday.
Texts sundays(const XCDateTime& first, const XCDateTime& last) {
  Texts days;
  for (XCDateTime day(2024, 1, 7); day <= last; day = day.AddDays(7))
    if (day >= first) days.push_back(day.GetDateTime(1, true, u"/", u":").ToUtf8());
  return days;
}

TEST_F(CalendarEditor, FastSelectionOfAllSundaysPaintsThoseOfTheYearShown) {
  open();
  driver.click("fastSelection");
  EXPECT_EQ(driver.dialog().ClassName(), "CDlgFastSelection");
  EXPECT_EQ(driver.title(), "[433] - 2025");
  for (int month = 1; month <= 12; ++month) {
    const std::string name = "month" + std::to_string(month);
    EXPECT_EQ(driver.enabled(name), month >= 3) << name;
    if (month >= 3) driver.check(name, true);
  }
  driver.check("sunday", true);
  driver.choose("dayType", 6);
  driver.click("ok");
  EXPECT_EQ(daysOfType("6"), sundays({2025, 3, 15}, {2025, 12, 31}));
  EXPECT_EQ(daysOfType("0").size(), 365 - daysOfType("6").size());
}

TEST_F(CalendarEditor, FastSelectionWorksOnTheEndYearWhenThatIsShown) {
  open();
  showYear(2026);
  driver.click("fastSelection");
  EXPECT_EQ(driver.title(), "[433] - 2026");
  for (int month = 1; month <= 12; ++month)
    EXPECT_EQ(driver.enabled("month" + std::to_string(month)), month <= 3);
  for (const char* name : {"month1", "month3", "sunday"}) driver.check(name, true);
  driver.choose("dayType", 2);
  driver.click("ok");
  auto expected = sundays({2026, 1, 1}, {2026, 1, 31});
  for (const auto& day : sundays({2026, 3, 1}, {2026, 3, 14})) expected.push_back(day);
  EXPECT_EQ(daysOfType("2"), expected);
}

TEST_F(CalendarEditor, FastSelectionTakesTheWeekdaysFromMondayToSunday) {
  const char* const names[] = {"monday", "tuesday",  "wednesday", "thursday",
                               "friday", "saturday", "sunday"};
  open();
  for (int day = 0; day < 7; ++day) {
    driver.click("fastSelection");
    driver.check("month6", true);
    driver.check(names[day], true);
    driver.choose("dayType", day + 1);
    driver.click("ok");
  }
  // 2 June 2025 was a Monday.
  for (int day = 0; day < 7; ++day)
    EXPECT_EQ(typeOf({2025, 6, 2 + day}), std::to_string(day + 1)) << names[day];
  EXPECT_EQ(typeOf({2025, 5, 31}), "0");
  EXPECT_EQ(typeOf({2025, 7, 1}), "0");
}

TEST_F(CalendarEditor, FastSelectionOffersTheDayTypesAndBeginsWithTheChosenOne) {
  open();
  driver.click("dayType3");
  driver.click("fastSelection");
  EXPECT_EQ(driver.items("dayType").size(), 10U);
  EXPECT_EQ(driver.items("dayType").front(), "[455] - 1");
  EXPECT_EQ(driver.selectedIndex("dayType"), 3U);
  EXPECT_EQ(driver.image("dayTypeColour"), "#FFFF00");
  driver.choose("dayType", 9);
  EXPECT_EQ(driver.image("dayTypeColour"), "#808000");
}

TEST_F(CalendarEditor, FastSelectionCancelledOrWithoutDaysPaintsNothing) {
  open();
  driver.click("fastSelection");
  driver.check("month6", true);
  driver.check("monday", true);
  driver.choose("dayType", 5);
  driver.click("cancel");
  driver.click("fastSelection");
  driver.check("month6", true);
  driver.choose("dayType", 5);
  driver.click("ok");
  EXPECT_TRUE(daysOfType("5").empty());
  driver.click("ok");
  expectCancelledWithNothingKept();
}

// --- day types

TEST_F(CalendarEditor, TheDayTypesHaveTheProgramsOfTheControllersKind) {
  for (const ProgramKind kind : {ProgramKind::interval, ProgramKind::clock}) {
    open(kind);
    driver.click("dayTypes");
    EXPECT_EQ(driver.title(), "[32705]");
    EXPECT_EQ(driver.column("days", 1).front(), kind == ProgramKind::clock ? "00:00" : "0");
    driver.click("cancel");
    driver.click("ok");
    expectCancelledWithNothingKept();
  }
}

TEST_F(CalendarEditor, ACalendarWithoutDayTypesGetsThemOnlyWhenTheyAreConfirmed) {
  putFile("bare", "<calendar><hasIOmodule>F</hasIOmodule></calendar>");
  open(ProgramKind::interval, "bare");
  driver.click("dayTypes");
  EXPECT_EQ(driver.rows("days").size(), 10U);
  driver.click("cancel");
  driver.click("ok");
  expectCancelledWithNothingKept();
  open(ProgramKind::interval, "bare");
  driver.click("dayTypes");
  driver.click("ok");
  driver.click("ok");
  enterName("whole");
  expectAssigned("whole");
  EXPECT_XML_EQ("<calendar><hasIOmodule>F</hasIOmodule><year>" + year() + "</year>" +
                    emptyDays("F") + "<revision>" + guid(1) +
                    "</revision><name>whole</name></calendar>",
                fileText("whole"));
}

}  // namespace
