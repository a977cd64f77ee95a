#include "tests/programs/calendar_editor_fixture.h"
#include "tests/support/faulty_files.h"

namespace {

using host::MessageAnswer;
using host::MessageIcon;
using lamp::ProgramKind;
using support::CalendarEditor;
using support::TopKind;

class CalendarSaving : public CalendarEditor {};

TEST_F(CalendarSaving, NothingPaintedClosesAsCancel) {
  open();
  driver.click("ok");
  expectCancelledWithNothingKept();
}

TEST_F(CalendarSaving, PaintedAndPaintedBackClosesAsCancel) {
  open();
  paintAs(4, {2025, 4, 10});
  paintAs(0, {2025, 4, 10});
  driver.click("ok");
  expectCancelledWithNothingKept();
}

TEST_F(CalendarSaving, OkWithAChangeAsksForANameSavesAndAssigns) {
  open(ProgramKind::clock);
  paintAs(3, {2026, 1, 1});
  paintAs(7, {2025, 4, 10});
  paintAs(9, {2025, 12, 31});
  driver.click("ok");
  EXPECT_EQ(driver.title(), "[34186]");
  EXPECT_EQ(driver.text("label"), "[355]");
  EXPECT_EQ(driver.focus(), "identification");
  enterName("Winter");
  expectAssigned("Winter");
  EXPECT_XML_EQ(
      calendarXml("Winter", "T", emptyDays("T"), year({{0, '3'}, {100, '7'}, {365, '9'}}), guid(1)),
      fileText("Winter"));
  EXPECT_EQ(driver.channel().count(), 0U);
}

TEST_F(CalendarSaving, ALeapDayIsKeptInASpanThatHoldsItAndZeroInOthers) {
  driver.clock().set({2028, 1, 1, 0, 0, 0});
  open();
  paintAs(5, {2028, 2, 29});
  saveAs("Leap");
  EXPECT_XML_EQ(calendarXml("Leap", "F", emptyDays("F"), year({{59, '5'}}), guid(1)),
                fileText("Leap"));
  driver.click("cancel");
  driver.clock().set({2029, 1, 1, 0, 0, 0});
  open(ProgramKind::interval, "Leap");
  EXPECT_TRUE(daysOfType("5").empty());
  saveAs("Common");
  EXPECT_XML_EQ(calendarXml("Common", "F", emptyDays("F"), year(), guid(2)), fileText("Common"));
}

TEST_F(CalendarSaving, CancellingTheNameKeepsTheEditorOpen) {
  open();
  paintAs(1, {2025, 4, 10});
  driver.click("ok");
  driver.click("cancel");
  EXPECT_EQ(driver.dialog().ClassName(), "XCDeviceCalendarZelLAMPManager");
  EXPECT_EQ(driver.result(), std::nullopt);
  EXPECT_EQ(typeOf({2025, 4, 10}), "1");
  EXPECT_FALSE(std::filesystem::exists(folder.path() / storeName()));
  driver.click("cancel");
  expectCancelledWithNothingKept();
}

TEST_F(CalendarSaving, SavedUnderANewNameOkAssignsItWithoutAskingAgain) {
  open();
  paintAs(1, {2025, 4, 10});
  saveAs("Winter");
  EXPECT_EQ(driver.text("name"), "Winter");
  EXPECT_TRUE(driver.enabled("load"));
  driver.click("ok");
  expectAssigned("Winter");
  EXPECT_EQ(driver.ids().given(), 1U);
}

TEST_F(CalendarSaving, SavedUnderTheOpeningNameOkTellsTheHost) {
  putFile("Winter", calendarXml("Winter", "F", emptyDays("F"), year()));
  open(ProgramKind::interval, "Winter");
  driver.click("save");
  EXPECT_EQ(driver.text("identification"), "Winter");
  driver.click("ok");
  expectMessage("[34189]", MessageIcon::question, MessageAnswer::yes);
  driver.click("ok");
  expectAssigned("Winter");
}

TEST_F(CalendarSaving, CancelKeepsWhatWasSavedOnDiskAndAssignsNothing) {
  open();
  paintAs(1, {2025, 4, 10});
  saveAs("Winter");
  driver.click("cancel");
  expectCancelledWithNothingKept();
  EXPECT_TRUE(stored("Winter"));
}

TEST_F(CalendarSaving, TwoSavesOfOneNameAskBeforeTheSecondAndKeepTheFirstBeside) {
  open();
  paintAs(1, {2025, 4, 10});
  saveAs("Winter");
  paintAs(2, {2025, 4, 10});
  saveAs("Winter");
  expectMessage("[34189]", MessageIcon::question, MessageAnswer::yes);
  EXPECT_EQ(driver.dialog().ClassName(), "XCDeviceCalendarZelLAMPManager");
  EXPECT_XML_EQ(calendarXml("Winter", "F", emptyDays("F"), year({{100, '2'}}), guid(2)),
                fileText("Winter"));
  EXPECT_XML_EQ(calendarXml("Winter", "F", emptyDays("F"), year({{100, '1'}}), guid(1)),
                folder.read(storeName() + "/Winter.xclmc.previous"));
}

TEST_F(CalendarSaving, NoToOverwritingAsksForTheNameAgainWithAnEmptyEntry) {
  putFile("Winter", calendarXml("Winter", "F", "", year()));
  const std::string before = fileText("Winter");
  open(ProgramKind::interval, "Winter");
  paintAs(1, {2025, 4, 10});
  driver.click("save");
  EXPECT_EQ(driver.text("identification"), "Winter");
  driver.click("ok");
  ASSERT_EQ(driver.message().buttons, host::MessageButtons::yesNo);
  expectMessage("[34189]", MessageIcon::question, MessageAnswer::no);
  EXPECT_EQ(driver.dialog().ClassName(), "CDlgIntroduceIdentification");
  EXPECT_EQ(driver.text("identification"), "");
  EXPECT_EQ(fileText("Winter"), before);
  enterName("Summer");
  EXPECT_TRUE(stored("Summer"));
  EXPECT_EQ(driver.text("name"), "Summer");
}

TEST_F(CalendarSaving, ACalendarOfTheOtherKindIsNeverOverwritten) {
  const std::pair<ProgramKind, const char*> cases[] = {{ProgramKind::interval, "T"},
                                                       {ProgramKind::clock, "F"}};
  for (const auto& [kind, module] : cases) {
    putFile("Other", calendarXml("Other", module, "", year()));
    const std::string before = fileText("Other");
    open(kind);
    paintAs(1, {2025, 4, 10});
    saveAs("Other");
    expectMessage("[38984]", MessageIcon::none);
    EXPECT_EQ(driver.text("identification"), "");
    EXPECT_EQ(fileText("Other"), before);
    driver.click("cancel");
    driver.click("cancel");
    EXPECT_EQ(driver.result(), IDCANCEL);
  }
}

TEST_F(CalendarSaving, AnUnreadableFileIsOverwrittenWhenTheUserAgrees) {
  putFile("broken", "no xml");
  open();
  saveAs("broken");
  expectMessage("[34189]", MessageIcon::question, MessageAnswer::yes);
  EXPECT_XML_EQ(calendarXml("broken", "F", emptyDays("F"), year(), guid(1)), fileText("broken"));
}

TEST_F(CalendarSaving, ANameThatIsNoNameIsRefusedAndTheEntryStaysOpen) {
  open();
  driver.click("save");
  for (const std::string& name :
       {std::string(), std::string(".."), std::string("a/b"), std::string("a\\b"),
        std::string(" a"), std::string("a "), std::string("CON"), std::string("nul.txt"),
        std::string("a:b"), std::string(65, 'a'), std::string(300, 'a')}) {
    enterName(name);
    expectMessage("[32764]", MessageIcon::none);
    EXPECT_EQ(driver.text("identification"), name);
    EXPECT_EQ(driver.focus(), "identification");
    EXPECT_EQ(driver.selectedCharacters("identification"), std::pair(std::size_t(0), name.size()));
  }
  enterName(std::string(64, 'a'));
  EXPECT_TRUE(stored(std::string(64, 'a')));
}

TEST_F(CalendarSaving, NamesOfAnyScriptAreFileNames) {
  open();
  saveAs("Año 2025-26.b_\xD0\x96");
  EXPECT_TRUE(stored("Año 2025-26.b_\xD0\x96"));
  EXPECT_EQ(driver.text("name"), "Año 2025-26.b_\xD0\x96");
}

TEST_F(CalendarSaving, AFailedWriteIsReportedAndNothingCountsAsSaved) {
  open();
  paintAs(1, {2025, 4, 10});
  {
    support::FaultyFiles files;
    files.fail(support::FaultyFiles::Operation::writeNew, "disk full");
    saveAs("Winter");
    expectMessage("[34190]", MessageIcon::warning);
  }
  EXPECT_EQ(driver.dialog().ClassName(), "XCDeviceCalendarZelLAMPManager");
  EXPECT_FALSE(stored("Winter"));
  EXPECT_EQ(driver.text("name"), "");
  EXPECT_FALSE(driver.enabled("load"));
  // The change is still one: OK asks for a name.
  driver.click("ok");
  enterName("Winter");
  expectAssigned("Winter");
  EXPECT_XML_EQ(calendarXml("Winter", "F", emptyDays("F"), year({{100, '1'}}), guid(2)),
                fileText("Winter"));
}

TEST_F(CalendarSaving, OkStaysOpenWhenItsSaveFails) {
  open();
  paintAs(1, {2025, 4, 10});
  support::FaultyFiles files;
  files.failHalfWritten("disk full");
  driver.click("ok");
  enterName("Winter");
  expectMessage("[34190]", MessageIcon::warning);
  EXPECT_EQ(driver.result(), std::nullopt);
  EXPECT_FALSE(stored("Winter"));
  EXPECT_FALSE(markedAsChanged());
  files.repair();
  driver.click("ok");
  enterName("Winter");
  expectAssigned("Winter");
}

// --- loading

TEST_F(CalendarSaving, ALoadedCalendarIsAssignedWithoutSaving) {
  putFile("Winter", calendarXml("Winter", "F", emptyDays("F"), year({{100, '7'}})));
  const std::string before = fileText("Winter");
  open();
  paintAs(2, {2025, 5, 1});
  loadStored("Winter");
  EXPECT_EQ(driver.text("name"), "Winter");
  EXPECT_EQ(typeOf({2025, 4, 10}), "7");
  EXPECT_EQ(typeOf({2025, 5, 1}), "0");
  driver.click("ok");
  expectAssigned("Winter");
  EXPECT_EQ(fileText("Winter"), before);
}

TEST_F(CalendarSaving, ALoadedCalendarThatIsChangedIsSavedFirst) {
  putFile("Winter", calendarXml("Winter", "F", emptyDays("F"), year({{100, '7'}})));
  open();
  loadStored("Winter");
  paintAs(2, {2025, 5, 1});
  driver.click("ok");
  EXPECT_EQ(driver.text("identification"), "Winter");
  enterName("Spring");
  expectAssigned("Spring");
  EXPECT_XML_EQ(calendarXml("Spring", "F", emptyDays("F"), year({{100, '7'}, {121, '2'}}), guid(1)),
                fileText("Spring"));
}

TEST_F(CalendarSaving, AChangedDayTypeIsAChangeAndIsSaved) {
  putFile("Winter", calendarXml("Winter", "T", emptyDays("T"), year()));
  open(ProgramKind::clock, "Winter");
  driver.click("dayTypes");
  driver.select("days", {0});
  driver.type("time2", "22:15");
  driver.type("power2", "50");
  driver.click("ok");
  driver.click("ok");
  enterName("Spring");
  expectAssigned("Spring");
  std::string days = emptyDays("T");
  const std::string old = "hour2='0' min2='0' power2='0'";
  days.replace(days.find(old), old.size(), "hour2='22' min2='15' power2='50'");
  EXPECT_XML_EQ(calendarXml("Spring", "T", days, year(), guid(1)), fileText("Spring"));
}

TEST_F(CalendarSaving, ALoadFromTheButtonThatFailsLeavesTheCalendarAsItIs) {
  putFile("broken", "<calendar>");
  putFile("Winter", calendarXml("Winter", "F", emptyDays("F"), year({{100, '7'}})));
  open(ProgramKind::interval, "Winter");
  paintAs(2, {2025, 5, 1});
  loadStored("broken");
  expectMessage("[34191]", MessageIcon::warning);
  EXPECT_EQ(driver.text("name"), "Winter");
  EXPECT_EQ(typeOf({2025, 4, 10}), "7");
  EXPECT_EQ(typeOf({2025, 5, 1}), "2");
  driver.click("ok");
  enterName("Spring");
  EXPECT_XML_EQ(calendarXml("Spring", "F", emptyDays("F"), year({{100, '7'}, {121, '2'}}), guid(1)),
                fileText("Spring"));
}

TEST_F(CalendarSaving, ACancelledSelectionLoadsNothing) {
  putFile("Winter", calendarXml("Winter", "F", emptyDays("F"), year({{100, '7'}})));
  open();
  driver.click("load");
  driver.click("cancel");
  EXPECT_EQ(driver.text("name"), "");
  driver.click("ok");
  expectCancelledWithNothingKept();
}

TEST_F(CalendarSaving, TheOpeningCalendarLoadedAgainChangesNothing) {
  putFile("Winter", calendarXml("Winter", "F", emptyDays("F"), year({{100, '7'}})));
  open(ProgramKind::interval, "Winter");
  paintAs(2, {2025, 5, 1});
  loadStored("Winter");
  driver.click("ok");
  expectCancelledWithNothingKept();
}

}  // namespace
