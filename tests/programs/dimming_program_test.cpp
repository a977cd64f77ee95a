#include "programs/dimming_program.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/printers.h"
#include "tests/support/xml_compare.h"

namespace {

using lamp::ProgramKind;

struct Row {
  explicit Row(const std::string& attributes)
      : document(support::parsedXml("<Node " + attributes + "/>")), row{document.Root(), 0} {}
  XmlDocument document;
  host::ListRow row;
};

int compare(const std::string& first, const std::string& second, std::size_t column) {
  const Row a(first);
  const Row b(second);
  return lamp::compareProgramRows(a.row, b.row, column);
}

TEST(DimmingProgram, AClockTimeIsShownWithTwoDigitsEach) {
  struct Case {
    const char* attributes;
    const char* shown;
  };
  const Case cases[] = {{"hour2='7' min2='5'", "07:05"},   {"hour2='22' min2='15'", "22:15"},
                        {"hour2='007' min2=''", "07:00"},  {"", "00:00"},
                        {"hour2='99' min2='99'", "99:99"}, {"hour2='x' min2='1y'", "00:01"},
                        {"hour2='123' min2='4'", "123:04"}};
  for (const Case& one : cases)
    EXPECT_EQ(lamp::stepTime(*Row(one.attributes).row.element, ProgramKind::clock, 2).ToUtf8(),
              one.shown)
        << one.attributes;
}

TEST(DimmingProgram, AnIntervalTimeIsShownAsItStands) {
  for (const char* text : {"", "0", "007", "12", "abc"})
    EXPECT_EQ(lamp::stepTime(*Row("time3='" + std::string(text) + "'").row.element,
                             ProgramKind::interval, 3)
                  .ToUtf8(),
              text);
}

TEST(DimmingProgram, AClockTimeGoesIntoHourAndMinute) {
  struct Case {
    const char16_t* typed;
    const char* written;
  };
  const Case cases[] = {{u"22:15", "<Node hour4='22' min4='15'/>"},
                        {u"00:00", "<Node hour4='00' min4='00'/>"},
                        {u"", "<Node hour4='' min4=''/>"},
                        {u"1", "<Node hour4='1' min4=''/>"}};
  for (const Case& one : cases) {
    Row row("");
    lamp::setStepTime(*row.row.element, ProgramKind::clock, 4, XCBasicString(one.typed));
    EXPECT_XML_EQ(one.written, row.document);
  }
}

TEST(DimmingProgram, AnIntervalTimeGoesWholeIntoItsAttribute) {
  Row row("hour1='7'");
  lamp::setStepTime(*row.row.element, ProgramKind::interval, 1, XCBasicString(u"120"));
  EXPECT_XML_EQ("<Node hour1='7' time1='120'/>", row.document);
}

TEST(DimmingProgram, SendingMovesAnIntervalProgramIntoItsChild) {
  Row row(
      "Id='17' colour='warm' Fh='20240101000000' power4='40' time1='1' power1='10' time2='2' "
      "power2='20' time3='3' power3='30' time4='4' hour1='5'");
  EXPECT_TRUE(lamp::rewriteRow(*row.row.element, lamp::programRewrite(ProgramKind::interval)));
  EXPECT_XML_EQ(
      "<Node nodeId='17' colour='warm' hour1='5'><Interval time1='1' power1='10' time2='2' "
      "power2='20' time3='3' power3='30' time4='4' power4='40'/></Node>",
      row.document);
}

TEST(DimmingProgram, SendingAClockProgramDropsTheStartOfTheFirstStep) {
  Row row(
      "Id='17' hour1='18' min1='30' power1='10' hour2='22' min2='15' power2='20' hour3='1' "
      "min3='0' power3='30' hour4='5' min4='45' power4='40' time1='9'");
  EXPECT_TRUE(lamp::rewriteRow(*row.row.element, lamp::programRewrite(ProgramKind::clock)));
  EXPECT_XML_EQ(
      "<Node nodeId='17' time1='9'><Interval power1='10' hour2='22' min2='15' power2='20' "
      "hour3='1' min3='0' power3='30' hour4='5' min4='45' power4='40'/></Node>",
      row.document);
}

TEST(DimmingProgram, SendingGivesAnEmptyTextWhereTheProgramLacksAnAttribute) {
  Row row("Id='17' time2='2'");
  EXPECT_TRUE(lamp::rewriteRow(*row.row.element, lamp::programRewrite(ProgramKind::interval)));
  EXPECT_XML_EQ(
      "<Node nodeId='17'><Interval time1='' power1='' time2='2' power2='' time3='' power3='' "
      "time4='' power4=''/></Node>",
      row.document);
}

TEST(DimmingProgram, ColumnsAreTheOwnerAndEachStepsTimeAndPower) {
  host::ListColumn owner;
  owner.caption = u"Node";
  std::vector<std::string> captions;
  for (const auto& column : lamp::programColumns(ProgramKind::clock, owner))
    captions.push_back(column.caption.ToUtf8());
  EXPECT_EQ(captions,
            (std::vector<std::string>{"Node", "T1", "P1", "T2", "P2", "T3", "P3", "T4", "P4"}));
}

TEST(ProgramOrder, ByColumn) {
  struct Case {
    const char* what;
    const char* first;
    const char* second;
    std::size_t column;
    int order;
  };
  const Case cases[] = {
      {"identity, ordinal", "Id='10'", "Id='9'", 0, -1},
      {"identity, capitals before small letters", "Id='B'", "Id='a'", 0, -1},
      {"identity, a longer one behind", "Id='lamp1'", "Id='lamp'", 0, 1},
      {"identity, equal", "Id='1' power1='3'", "Id='1' power1='2'", 0, 0},
      {"identity, by code unit beyond the letters", "Id='\xEF\xBC\xA1'", "Id='\xF0\x9F\x92\xA1'", 0,
       1},
      {"power as a number", "power1='9'", "power1='10'", 2, -1},
      {"power of its own step", "power1='9' power3='1'", "power1='1' power3='9'", 6, -1},
      {"power, missing is 0", "", "power4='1'", 8, -1},
      {"power, missing equals 0", "", "power4='0'", 8, 0},
      {"duration as a number", "time2='9'", "time2='10'", 3, -1},
      {"duration, equal numbers of other texts", "time2='9'", "time2='009'", 3, 0},
      {"duration, the second one's missing is 0", "time1='1'", "hour1='22' min1='0'", 1, 1},
      {"duration 0 equals the second one's missing", "time1='0'", "hour1='22' min1='0'", 1, 0},
      {"start, the second one's duration is not looked at", "hour1='22'", "time1='1'", 1, 1},
      {"start, an empty duration is a duration", "time1=''", "hour1='22' time1='1'", 1, -1},
      {"start by hour", "hour3='9' min3='59'", "hour3='10' min3='0'", 5, -1},
      {"start by minute", "hour3='9' min3='9'", "hour3='9' min3='10'", 5, -1},
      {"start, equal", "hour3='09' min3='9'", "hour3='9' min3='09'", 5, 0},
      {"start as text where it has three digits", "hour3='100'", "hour3='11'", 5, -1},
      {"no such column", "Id='1' power4='1'", "Id='2' power4='2'", 9, 0},
  };
  for (const Case& one : cases)
    EXPECT_EQ(std::clamp(compare(one.first, one.second, one.column), -1, 1), one.order) << one.what;
}

TEST(ProgramOrder, IsTheOtherWayRoundForSwappedRowsOfOneKind) {
  const char* const rows[] = {"Id='a' time1='5' power1='1'", "Id='b' time1='50' power1='0'",
                              "Id='c' time1='0' power1='100'"};
  for (const char* first : rows)
    for (const char* second : rows)
      for (std::size_t column = 0; column <= lamp::ProgramColumns; ++column) {
        const int there = compare(first, second, column);
        const int back = compare(second, first, column);
        EXPECT_EQ(there<0, back> 0);
        EXPECT_EQ(there > 0, back < 0);
      }
}

TEST(ProgramOrder, ARowWithoutElementEqualsEveryOther) {
  const Row row("Id='1'");
  EXPECT_EQ(lamp::compareProgramRows(row.row, {}, 0), 0);
  EXPECT_EQ(lamp::compareProgramRows({}, row.row, 0), 0);
}

}  // namespace
