#include "programs/calendar_store.h"

#include <algorithm>

#include "programs/calendar_document.h"
#include "programs/day_types.h"
#include "tests/programs/calendar_fixture.h"
#include "tests/support/faulty_files.h"
#include "tests/support/odd_file.h"

namespace {

using lamp::ProgramKind;

class CalendarStore : public support::Calendars {
 protected:
  static std::vector<std::string> titles() {
    std::vector<std::string> titles;
    for (const lamp::StoredCalendar& stored : lamp::storedCalendars())
      titles.push_back(stored.title.ToUtf8());
    std::sort(titles.begin(), titles.end());
    return titles;
  }
};

TEST_F(CalendarStore, LiesBesideTheConfigurationUnderTheDisplayNameOfTheType) {
  EXPECT_EQ(lamp::calendarFolder(), folder.path() / "Lamp manager Calendar");
  EXPECT_EQ(lamp::calendarFile(XCBasicString(u"Año 2025")).value(), fileOf("Año 2025"));
}

TEST_F(CalendarStore, NamesThatLeadOutOfTheFolderHaveNoFile) {
  for (const char16_t* name :
       {u"", u".", u"..", u"../secret", u"a/b", u"/etc/passwd", u"a\\b", u"..\\a", u"C:a",
        u"a\u0001b", u"a\nb", u"CON", u"nul.txt", u"Com1", u"LPT9.a.b", u"aux "})
    EXPECT_FALSE(lamp::calendarFile(XCBasicString(name)).has_value())
        << XCBasicString(name).ToUtf8();
  for (const char16_t* name : {u"...", u"a..b", u"CONS", u"com0", u"lpt", u"Plan (A)", u" x"})
    EXPECT_TRUE(lamp::calendarFile(XCBasicString(name)).has_value())
        << XCBasicString(name).ToUtf8();
}

TEST_F(CalendarStore, ANameCutInHalfOfAPairHasAFileOfItsOwn) {
  const std::u16string half{u'a', char16_t(0xD800)};
  EXPECT_EQ(lamp::calendarFile(XCBasicString(half)).value(), fileOf("a\xEF\xBF\xBD"));
}

TEST_F(CalendarStore, ListsTheCalendarsAndNothingElse) {
  EXPECT_TRUE(lamp::storedCalendars().empty());
  putFile("Winter", "<calendar/>");
  putFile("broken", "no xml");
  putFile("", "<calendar/>");
  folder.write(storeName() + "/Winter.xclmc.previous", "<calendar/>");
  folder.write(storeName() + "/notes.txt", "");
  std::filesystem::create_directories(fileOf("folder"));
  EXPECT_EQ(titles(), (std::vector<std::string>{"Winter", "broken"}));
}

// Names of files that can't be typed as the name of a calendar.
const std::string StrangeTitles[] = {"a:b",     "a\\b", "a\tb",   "a\nb", "con",
                                     "nul.txt", "..",   "a\x01b", "\xFF", " "};

TEST_F(CalendarStore, EveryFileThatItListsIsFoundByItsTitle) {
  for (const std::string& title : StrangeTitles) putFile(title, "<calendar/>");
  EXPECT_EQ(titles().size(), std::size(StrangeTitles));
  for (const lamp::StoredCalendar& stored : lamp::storedCalendars()) {
    EXPECT_TRUE(std::filesystem::exists(stored.file)) << stored.file;
    EXPECT_EQ(lamp::calendarFile(stored.title), stored.file);
    // The name of a device's calendar goes through an XML document.
    XmlDocument configuration("configuration");
    configuration.Root()->SetValue("calendar", stored.title);
    XmlDocument again;
    ASSERT_TRUE(again.Parse(configuration.ToString()));
    EXPECT_EQ(lamp::calendarFile(again.Root()->Value("calendar")), stored.file);
  }
}

TEST_F(CalendarStore, WhateverStandsInPlaceOfACalendarIsNotWaitedForAndNotChanged) {
  using support::Odd;
  std::filesystem::permissions(folder.path(), std::filesystem::perms(0711));
  for (const Odd odd : support::AllOdd) {
    SCOPED_TRACE(nameOf(odd));
    std::filesystem::remove_all(lamp::calendarFolder());
    std::filesystem::create_directories(lamp::calendarFolder());
    const support::OddFile thing(fileOf("A"), odd, "<calendar><year>1</year></calendar>");
    const bool isGood = odd == Odd::secondName || odd == Odd::linkToStranger;
    XmlDocument read;
    EXPECT_EQ(lamp::readCalendar(fileOf("A"), read), isGood);
    EXPECT_TRUE(thing.isUntouched());

    lamp::CalendarDocument calendar(ProgramKind::clock);
    const std::string refusal = thing.refusal(host::NamedBy::person);
    const bool isSaved = calendar.save(fileOf("A"), XCBasicString(u"A"));
    // Where a link leads to, a file may be made; a file may be replaced that can't be read here.
    EXPECT_EQ(isSaved, refusal.empty() || odd == Odd::danglingLink || odd == Odd::huge);
    const bool isThroughALink = odd == Odd::linkToStranger || odd == Odd::danglingLink;
    EXPECT_TRUE(isSaved || thing.isUntouched());
    EXPECT_TRUE(isThroughALink || thing.isStrangerUntouched());
  }
}

TEST_F(CalendarStore, ReadsWhatIsXmlAndLeavesTheDocumentOtherwise) {
  putFile("good", "<calendar><hasIOmodule>T</hasIOmodule></calendar>");
  putFile("bad", "<calendar>");
  XmlDocument calendar;
  EXPECT_FALSE(lamp::readCalendar(std::nullopt, calendar));
  EXPECT_FALSE(lamp::readCalendar(fileOf("missing"), calendar));
  EXPECT_TRUE(lamp::readCalendar(fileOf("good"), calendar));
  EXPECT_FALSE(lamp::readCalendar(fileOf("bad"), calendar));
  EXPECT_TRUE(lamp::isOfKind(calendar, lamp::moduleMark(ProgramKind::clock)));
  EXPECT_FALSE(lamp::isOfKind(calendar, lamp::moduleMark(ProgramKind::interval)));
  EXPECT_FALSE(lamp::isOfKind(XmlDocument(), u""));
}

class CalendarDocument : public support::Calendars {};

TEST_F(CalendarDocument, ANewOneHasNoNameAndItsKind) {
  const lamp::CalendarDocument calendar(ProgramKind::interval);
  EXPECT_XML_EQ("<calendar><revision/><name/><hasIOmodule>F</hasIOmodule></calendar>",
                calendar.root());
  EXPECT_FALSE(calendar.changed());
}

TEST_F(CalendarDocument, SavingMakesTheFolderAndWritesTheWholeCalendar) {
  lamp::CalendarDocument calendar(ProgramKind::clock);
  calendar.setYear(u"123");
  EXPECT_TRUE(calendar.changed());
  ASSERT_TRUE(calendar.save(fileOf("A"), XCBasicString(u"A")));
  EXPECT_FALSE(calendar.changed());
  EXPECT_XML_EQ(
      "<calendar><revision>{00000000-0000-4000-8000-000000000001}</revision><name>A</name>"
      "<hasIOmodule>T</hasIOmodule><year>123</year></calendar>",
      fileText("A"));
}

TEST_F(CalendarDocument, WhatItDoesNotKnowIsKept) {
  putFile("A",
          "<calendar mark='1'><extra><deep/></extra><year>9</year><name>other</name>"
          "<days><day><num>12</num></day></days></calendar>");
  lamp::CalendarDocument calendar(ProgramKind::clock);
  ASSERT_TRUE(calendar.load(fileOf("A")));
  ASSERT_TRUE(calendar.save(fileOf("B"), XCBasicString(u"B")));
  EXPECT_XML_EQ(
      "<calendar mark='1'><extra><deep/></extra><year>9</year><name>B</name>"
      "<days><day><num>12</num></day></days>"
      "<revision>{00000000-0000-4000-8000-000000000001}</revision></calendar>",
      fileText("B"));
}

TEST_F(CalendarDocument, ARootOfAnotherNameIsReadLikeAnyAndSavedAsACalendar) {
  putFile("other", "<kalender mark='1'><hasIOmodule>T</hasIOmodule><year>7</year></kalender>");
  lamp::CalendarDocument calendar(ProgramKind::clock);
  ASSERT_TRUE(calendar.load(fileOf("other")));
  EXPECT_EQ(calendar.year(), u"7");
  EXPECT_FALSE(calendar.changed());
  ASSERT_TRUE(calendar.save(fileOf("A"), XCBasicString(u"A")));
  EXPECT_XML_EQ(
      "<calendar mark='1'><hasIOmodule>T</hasIOmodule><year>7</year>"
      "<revision>{00000000-0000-4000-8000-000000000001}</revision><name>A</name></calendar>",
      fileText("A"));
}

TEST_F(CalendarDocument, AFileThatIsNoXmlIsNotLoaded) {
  putFile("other", "<calendar><hasIOmodule>F</hasIOmodule>");
  lamp::CalendarDocument calendar(ProgramKind::clock);
  EXPECT_FALSE(calendar.load(fileOf("other")));
  EXPECT_XML_EQ("<calendar><revision/><name/><hasIOmodule>T</hasIOmodule></calendar>",
                calendar.root());
}

TEST_F(CalendarDocument, ANameOfTheMostAndWidestLettersIsSaved) {
  for (const std::size_t letters : {60U, 61U, 62U}) {
    std::string name;
    for (std::size_t i = 0; i < letters; ++i) name += "\xF0\x9D\x94\xB8";
    lamp::CalendarDocument calendar(ProgramKind::clock);
    const XCBasicString title = XCBasicString::FromUtf8(name);
    ASSERT_TRUE(calendar.save(*lamp::calendarFile(title), title)) << letters;
    ASSERT_TRUE(calendar.save(*lamp::calendarFile(title), title)) << letters;
    EXPECT_TRUE(calendar.load(lamp::calendarFile(title)));
  }
}

TEST_F(CalendarDocument, AWriteThatFailsAtAnyStepLeavesTheOldFileWhole) {
  using Operation = support::FaultyFiles::Operation;
  putFile("A", "<calendar>old</calendar>");
  for (const Operation operation :
       {Operation::makeFolder, Operation::writeNew, Operation::keep, Operation::replace}) {
    lamp::CalendarDocument calendar(ProgramKind::clock);
    calendar.setYear(u"1");
    {
      support::FaultyFiles files;
      files.fail(operation, "disk full");
      EXPECT_FALSE(calendar.save(fileOf("A"), XCBasicString(u"A")));
    }
    EXPECT_TRUE(calendar.changed());
    EXPECT_EQ(fileText("A"), "<calendar>old</calendar>");
  }
}

TEST_F(CalendarDocument, ADiskThatFillsUpLeavesNeitherHalfACalendarNorAnythingBesideIt) {
  for (const bool present : {false, true}) {
    if (present) putFile("A", "<calendar>old</calendar>");
    lamp::CalendarDocument calendar(ProgramKind::clock);
    support::FaultyFiles files;
    files.failHalfWritten("disk full");
    EXPECT_FALSE(calendar.save(fileOf("A"), XCBasicString(u"A")));
    const std::filesystem::directory_iterator left(lamp::calendarFolder());
    EXPECT_EQ(std::distance(begin(left), end(left)), present ? 1 : 0);
  }
  EXPECT_EQ(fileText("A"), "<calendar>old</calendar>");
}

class DayTypes : public support::Calendars {};

TEST_F(DayTypes, HaveNamesThatCountFromOneAndTheirColours) {
  const char* const colours[] = {"FF0000", "00FF00", "0000FF", "FFFF00", "00FFFF",
                                 "FF00FF", "800000", "008000", "000080", "808000"};
  for (int number = 0; number < lamp::DayTypeCount; ++number) {
    const auto type = lamp::dayType(number);
    EXPECT_EQ(type.id.ToUtf8(), std::to_string(number));
    EXPECT_EQ(type.name.ToUtf8(), "[455] - " + std::to_string(number + 1));
    EXPECT_EQ(lamp::hexColour(type.colour), colours[number]);
  }
}

TEST_F(DayTypes, AreCompletedWithZerosOfTheKind) {
  XmlDocument days("days");
  lamp::completeDays(*days.Root(), ProgramKind::clock);
  EXPECT_XML_EQ(emptyDays("T"), days);
  days.Create("days");
  lamp::completeDays(*days.Root(), ProgramKind::interval);
  EXPECT_XML_EQ(emptyDays("F"), days);
}

TEST_F(DayTypes, WhatIsThereStaysWhateverElseTheElementHolds) {
  XmlDocument days = support::parsedXml(
      "<days v='1'><other/><day><num>10</num></day>"
      "<day><num>4</num><Interval time1='7' colour='warm'/><Note/></day><day><num>0</num></day>"
      "</days>");
  lamp::completeDays(*days.Root(), ProgramKind::clock);
  std::string expected =
      "<days v='1'><other/><day><num>10</num></day>"
      "<day><num>4</num><Interval time1='7' colour='warm'/><Note/></day><day><num>0</num>" +
      emptyProgram("T") + "</day>";
  for (const char* number : {"1", "2", "3", "5", "6", "7", "8", "9"})
    expected += "<day><num>" + std::string(number) + "</num>" + emptyProgram("T") + "</day>";
  EXPECT_XML_EQ(expected + "</days>", days);
}

}  // namespace
