#include "tests/programs/calendar_editor_fixture.h"
#include "tests/support/edited_page.h"
#include "tests/support/faulty_files.h"

namespace {

using host::MessageIcon;
using lamp::ProgramKind;
using support::CalendarEditor;
using support::changesOn;
using support::faultsOn;
using Texts = std::vector<std::string>;

class CalendarChanges : public CalendarEditor {
 protected:
  Texts changes() { return changesOn(driver.dialog()); }
  void editPower(const char* edit, const char* text) {
    driver.click("dayTypes");
    driver.select("days", {4});
    driver.type(edit, text);
    driver.click("ok");
  }
  void putWinter(const std::string& digits = year({{100, '7'}})) {
    putFile("Winter", calendarXml("Winter", "F", emptyDays("F"), digits));
  }
};

TEST_F(CalendarChanges, NothingPaintedIsNoChangeAndNoFault) {
  putWinter();
  for (const char* name : {"", "Winter"}) {
    open(ProgramKind::interval, name);
    EXPECT_EQ(changes(), Texts{});
    EXPECT_EQ(faultsOn(driver.dialog()), Texts{});
    driver.click("cancel");
  }
}

TEST_F(CalendarChanges, PaintedDaysAreRowsByTheirDatesInTheirOrder) {
  putWinter();
  open(ProgramKind::interval, "Winter");
  paintAs(3, {2026, 1, 1});
  paintAs(9, {2025, 4, 10});
  paintAs(0, {2025, 4, 11});
  EXPECT_EQ(changes(),
            (Texts{"2025-04-10 dayType [455]: 7 -> 9", "2026-01-01 dayType [455]: 0 -> 3"}));
}

TEST_F(CalendarChanges, TheFirstAndTheLastDayOfTheSpanAreRows) {
  open();
  paintAs(1, {2025, 3, 15});
  paintAs(1, {2026, 3, 14});
  EXPECT_EQ(changes(),
            (Texts{"2025-03-15 dayType [455]: 0 -> 1", "2026-03-14 dayType [455]: 0 -> 1"}));
}

TEST_F(CalendarChanges, ALeapDayIsARowOfASpanThatHoldsIt) {
  driver.clock().set({2028, 1, 1, 0, 0, 0});
  open();
  paintAs(5, {2028, 2, 29});
  EXPECT_EQ(changes(), Texts{"2028-02-29 dayType [455]: 0 -> 5"});
}

TEST_F(CalendarChanges, PaintedBackIsNoChange) {
  open();
  paintAs(4, {2025, 4, 10});
  paintAs(0, {2025, 4, 10});
  EXPECT_EQ(changes(), Texts{});
}

TEST_F(CalendarChanges, DaysThatAYearStringLacksAreOfTypeZero) {
  putWinter("77");
  open(ProgramKind::interval, "Winter");
  paintAs(5, {2026, 1, 2});
  paintAs(5, {2026, 1, 3});
  EXPECT_EQ(changes(),
            (Texts{"2026-01-02 dayType [455]: 7 -> 5", "2026-01-03 dayType [455]: 0 -> 5"}));
}

TEST_F(CalendarChanges, ProgramsOfDayTypesAreNamedAsInTheirDialog) {
  open();
  editPower("power2", "70");
  paintAs(4, {2025, 4, 10});
  EXPECT_EQ(changes(),
            (Texts{"4 power2 [232] 2: [24534] (%): 0 -> 70", "2025-04-10 dayType [455]: 0 -> 4"}));
  driver.click("cancel");
  open(ProgramKind::clock);
  editPower("time3", "01:30");
  EXPECT_EQ(changes(), Texts{"4 time3 [232] 3: [38404]: 00:00 -> 01:30"});
}

TEST_F(CalendarChanges, ProgramsThatTheCalendarLackedAreNewRows) {
  putFile("bare", "<calendar><hasIOmodule>F</hasIOmodule></calendar>");
  open(ProgramKind::interval, "bare");
  EXPECT_EQ(changes(), Texts{});
  driver.click("dayTypes");
  driver.click("ok");
  const Texts all = changes();
  ASSERT_EQ(all.size(), 80U);
  EXPECT_EQ(all.front(), "0 time1 [232] 1: [666] ([34979]): null -> 0");
}

TEST_F(CalendarChanges, APowerThatOkKeepsIsNoFaultHere) {
  std::string days = emptyDays("F");
  days.replace(days.find("power1='0'"), 10, "power1=''");
  putFile("Winter", calendarXml("Winter", "F", days, year()));
  open(ProgramKind::interval, "Winter");
  paintAs(4, {2025, 4, 10});
  EXPECT_EQ(faultsOn(driver.dialog()), Texts{});
}

TEST_F(CalendarChanges, ALoadedCalendarIsTheAssignedNameAlone) {
  putWinter();
  open();
  paintAs(2, {2025, 5, 1});
  loadStored("Winter");
  EXPECT_EQ(changes(), Texts{"null calendar [355]: null -> Winter"});
  paintAs(2, {2025, 4, 10});
  EXPECT_EQ(changes(),
            (Texts{"null calendar [355]: null -> Winter", "2025-04-10 dayType [455]: 7 -> 2"}));
}

TEST_F(CalendarChanges, AnAssignedNameHasTheOneBefore) {
  putWinter();
  putFile("Summer", calendarXml("Summer", "F", emptyDays("F"), year()));
  open(ProgramKind::interval, "Winter");
  loadStored("Summer");
  EXPECT_EQ(changes(), Texts{"null calendar [355]: Winter -> Summer"});
  loadStored("Winter");
  EXPECT_EQ(changes(), Texts{});
}

TEST_F(CalendarChanges, WhatIsSavedIsNoChangeAnyMoreButTheName) {
  open();
  paintAs(1, {2025, 4, 10});
  editPower("power2", "70");
  saveAs("Winter");
  EXPECT_EQ(changes(), Texts{"null calendar [355]: null -> Winter"});
  paintAs(2, {2025, 4, 10});
  EXPECT_EQ(changes(),
            (Texts{"null calendar [355]: null -> Winter", "2025-04-10 dayType [455]: 1 -> 2"}));
}

TEST_F(CalendarChanges, AFailedSaveIsNoChange) {
  open();
  {
    support::FaultyFiles files;
    files.fail(support::FaultyFiles::Operation::writeNew, "disk full");
    saveAs("Winter");
    expectMessage("[34190]", MessageIcon::warning);
  }
  EXPECT_EQ(changes(), Texts{});
  driver.click("ok");
  expectCancelledWithNothingKept();
}

TEST_F(CalendarChanges, EveryValueHasItsControlUnderItsName) {
  for (const ProgramKind kind : {ProgramKind::interval, ProgramKind::clock}) {
    open(kind);
    const host::PageDescription& page = XCDeviceCalendarZelLAMPManager::PageTable(kind);
    for (const host::Binding& shown : {page.fields.at(0), page.rows.at(1).bindings.at(0)})
      EXPECT_EQ(driver.control(shown.nameOfControl()).id(), shown.control) << shown.name;
    driver.click("cancel");
  }
}

}  // namespace
