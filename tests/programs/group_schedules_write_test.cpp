#include <random>

#include "tests/programs/group_schedules_fixture.h"

namespace {

using lamp::ProgramKind;
using support::Cells;
using support::GroupSchedules;
using support::Selection;
using support::ThreeNodes;
using support::TopKind;

// --- checking

TEST_F(GroupSchedules, StartsOutOfRangeAreRefused) {
  struct Case {
    const char* attribute;
    int bound;
    const char* field;
  };
  const Case cases[] = {
      {"hour2='24' min2='00'", 23, "time2"}, {"hour2='23' min2='60'", 59, "time2"},
      {"hour3='99' min3='99'", 23, "time3"}, {"hour4='0' min4='99'", 59, "time4"},
      {"hour4='123'", 23, "time4"},          {"hour4='-1'", 23, "time4"}};
  for (const Case& one : cases) {
    openClockWith(one.attribute);
    expectRefused("[38265]([38404],0," + std::to_string(one.bound) + ")", 0, one.field);
    driver.click("cancel");
  }
}

TEST_F(GroupSchedules, StartsInRangePass) {
  for (const char* attribute : {"", "hour2='23' min2='59'", "hour2='0' min2='0'",
                                "hour1='99' min1='99'", "hour1='24' min1='60'"}) {
    openClockWith(attribute);
    driver.click("ok");
    expectClosedWithNothingSent();
  }
}

TEST_F(GroupSchedules, PowersAreCheckedInBothKinds) {
  struct Case {
    const char* power;
    bool passes;
  };
  const Case cases[] = {{"0", true},    {"100", true}, {"101", false},
                        {"999", false}, {"", false},   {"99999999999999999999", false}};
  for (const Case& one : cases)
    for (const char* step : {"1", "2", "3", "4"}) {
      open(
          "<Node Id='1' time1='0' time2='0' time3='0' time4='0' power1='1' power2='1' power3='1' "
          "power4='1'/>");
      driver.select("nodes", {0});
      driver.perform([&](host::UserInput&, XCBaseDlg& page) {
        page.SetDlgItemText(driver.control("power" + std::string(step)).id(),
                            XCBasicString::FromUtf8(one.power));
        return host::Outcome{};
      });
      driver.dialog().DispatchPosted();
      if (one.passes) {
        driver.click("ok");
        EXPECT_EQ(driver.result(), IDOK) << one.power;
      } else {
        expectRefused("[38265]([24534] (%),0,100)", 0, "power" + std::string(step));
        driver.click("cancel");
      }
      driver.channel().forget();
    }
}

TEST_F(GroupSchedules, AnEmptyDurationIsRefusedAndAZeroPasses) {
  open();
  driver.select("nodes", {1});
  driver.type("time3", "");
  driver.select("nodes", {0});
  expectRefused("[38408]", 1, "time3");
  driver.type("time3", "0");
  driver.click("ok");
  EXPECT_EQ(driver.result(), IDOK);
}

TEST_F(GroupSchedules, TheFirstFaultOfTheFirstRowInTheListIsReported) {
  open(
      "<Node Id='b' time1='1' power1='1' time2='' power2='' time3='' power3='' time4='' power4=''/>"
      "<Node Id='a' time1='1' power1='200' time2='' power2=''/>");
  expectRefused("[38408]", 0, "time2");
  driver.sort("nodes", 0);
  expectRefused("[38265]([24534] (%),0,100)", 0, "power1");
}

TEST_F(GroupSchedules, ARefusalDeselectsTheGroupsAndShowsTheRowsValues) {
  configureUsualGroups();
  open(
      "<Node Id='1' time1='1' power1='1' time2='2' power2='2' time3='3' power3='3' time4='4' "
      "power4='4'/><Node Id='2' time1='5' power1='101' time2='6' power2='6' time3='7' power3='7' "
      "time4='8' power4='8'/>");
  driver.select("groups", {0});
  expectRefused("[38265]([24534] (%),0,100)", 1, "power1");
  EXPECT_EQ(driver.selection("groups"), Selection{});
  EXPECT_EQ(fields(), (Cells{"5", "101", "6", "6", "7", "7", "8", "8"}));
}

TEST_F(GroupSchedules, ARefusedRowThatItsGroupSelectedLosesTheGroup) {
  configureUsualGroups();
  open(
      "<Node Id='1' time1='1' power1='101' time2='2' power2='2' time3='3' power3='3' time4='4' "
      "power4='4'/>");
  driver.select("groups", {0});
  EXPECT_EQ(driver.selection("nodes"), Selection{0});
  expectRefused("[38265]([24534] (%),0,100)", 0, "power1");
  EXPECT_EQ(driver.selection("groups"), Selection{});
}

// --- sending

TEST_F(GroupSchedules, NothingChangedSendsNothingEvenWithAnotherDate) {
  open();
  driver.type("activation", "01/12/2025 00:00:00");
  driver.click("ok");
  expectClosedWithNothingSent();
}

TEST_F(GroupSchedules, AnInvalidDateMattersOnlyWhenSomethingChanged) {
  open();
  driver.type("activation", "31/02/2025 00:00:00");
  driver.click("ok");
  expectClosedWithNothingSent();
}

TEST_F(GroupSchedules, ChangedAndChangedBackSendsNothing) {
  openClock();
  driver.select("nodes", {0});
  driver.type("time2", "21:00");
  driver.type("time2", "22:15");
  driver.type("power3", "61");
  driver.type("power3", "60");
  driver.click("ok");
  expectClosedWithNothingSent();
}

TEST_F(GroupSchedules, AnIntervalPageSendsEveryNodeWithItsProgram) {
  open(ThreeNodes, "version='2' Fh='20240101000000'");
  driver.select("nodes", {1, 2});
  driver.type("power2", "55");
  driver.type("activation", "15/07/2025 10:30:00");
  driver.clearLogs();
  driver.click("ok");
  EXPECT_EQ(driver.result(), IDOK);
  using host::CursorShape;
  EXPECT_EQ(driver.cursorLog(), (std::vector<CursorShape>{CursorShape::wait, CursorShape::arrow}));
  expectSent("E06", R"(<E06 version="2" ActDate="20250715103000S">
    <Node nodeId="1"><Interval time1="10" power1="100" time2="20" power2="80" time3="30" power3="60"
      time4="40" power4="40"/></Node>
    <Node nodeId="2" colour="warm"><Note/><Interval time1="11" power1="100" time2="21" power2="55"
      time3="31" power3="61" time4="41" power4="41"/></Node>
    <lamp nodeId="3"><Interval time1="11" power1="100" time2="21" power2="55" time3="31" power3="61"
      time4="41" power4="41"/></lamp></E06>)");
}

TEST_F(GroupSchedules, AClockPageSendsNoStartOfTheFirstStep) {
  openClock();
  driver.select("nodes", {0});
  driver.type("time4", "04:30");
  driver.click("ok");
  EXPECT_EQ(driver.result(), IDOK);
  expectSent("E17", R"(<E17 ActDate="20250315100000W">
    <Node nodeId="1"><Interval power1="100" hour2="22" min2="15" power2="80" hour3="1" min3="0"
      power3="60" hour4="04" min4="30" power4="40"/></Node>
    <Node nodeId="2"><Interval power1="100" hour2="22" min2="15" power2="80" hour3="01" min3="0"
      power3="60" hour4="6" min4="0" power4="40"/></Node></E17>)");
}

TEST_F(GroupSchedules, ASortedListIsSentInTheOrderOfTheDocument) {
  open();
  driver.sort("nodes", 0);
  driver.sort("nodes", 0);
  EXPECT_EQ(driver.column("nodes", 0), (Cells{"3", "2", "1"}));
  driver.select("nodes", {2});
  driver.type("time1", "1");
  driver.click("ok");
  const std::string sent = driver.channel().last().request;
  EXPECT_LT(sent.find("nodeId=\"1\""), sent.find("nodeId=\"2\""));
  EXPECT_LT(sent.find("nodeId=\"2\""), sent.find("nodeId=\"3\""));
}

TEST_F(GroupSchedules, AnInvalidActivationDateIsRefused) {
  open();
  driver.select("nodes", {0});
  driver.type("time1", "1");
  driver.type("activation", "31/02/2025 00:00:00");
  driver.click("ok");
  EXPECT_EQ(driver.message().text, "[38408]");
  driver.answer(host::MessageAnswer::ok);
  EXPECT_EQ(driver.focus(), "activation");
  EXPECT_EQ(driver.selectedCharacters("activation"), std::pair(std::size_t(0), std::size_t(19)));
  EXPECT_EQ(driver.channel().count(), 0U);
  EXPECT_EQ(driver.result(), std::nullopt);
}

TEST_F(GroupSchedules, ANodeWithoutIdentityFailsSilently) {
  open(
      "<Node Id='1' time1='1' power1='1' time2='2' power2='2' time3='3' power3='3' time4='4' "
      "power4='4'/><Node time1='1' power1='1' time2='2' power2='2' time3='3' power3='3' time4='4' "
      "power4='4'/>");
  driver.select("nodes", {0});
  driver.type("time1", "9");
  driver.click("ok");
  EXPECT_EQ(driver.top(), TopKind::dialog);
  EXPECT_EQ(driver.result(), std::nullopt);
  EXPECT_EQ(driver.channel().count(), 0U);
  EXPECT_EQ(driver.column("nodes", 1), (Cells{"9", "1"}));
}

TEST_F(GroupSchedules, ARetriedWriteClosesThePageAndSendsTheSameTwice) {
  open();
  driver.select("nodes", {0});
  driver.type("time1", "1");
  driver.channel().failWith("busy");
  driver.click("ok");
  EXPECT_EQ(driver.message().text, "busy\r\n\r\n[329]");
  driver.answer(host::MessageAnswer::retry);
  EXPECT_EQ(driver.result(), IDOK);
  ASSERT_EQ(driver.channel().count(), 2U);
  EXPECT_EQ(driver.channel().exchanges()[0].request, driver.channel().exchanges()[1].request);
}

TEST_F(GroupSchedules, AFailedWriteKeepsThePageWithItsEntriesAndSendsAllOfItLater) {
  open();
  driver.select("nodes", {0});
  driver.type("time1", "1");
  driver.channel().failWith("");
  driver.click("ok");
  EXPECT_EQ(driver.message().text, "[329]");
  driver.answer(host::MessageAnswer::cancel);
  EXPECT_EQ(driver.top(), TopKind::dialog);
  EXPECT_EQ(driver.column("nodes", 1).front(), "1");
  driver.click("ok");
  EXPECT_EQ(driver.result(), IDOK);
  EXPECT_EQ(driver.channel().exchanges()[0].request, driver.channel().exchanges()[1].request);
}

TEST_F(GroupSchedules, CancelSendsNothing) {
  open();
  driver.select("nodes", {0});
  driver.type("time1", "1");
  driver.click("cancel");
  EXPECT_EQ(driver.result(), IDCANCEL);
  EXPECT_EQ(driver.channel().count(), 0U);
}

TEST(GroupSchedulesWrite, AnEmptySectionIsSentWithItsAttributesAlone) {
  XmlDocument reply =
      support::parsedXml("<deviceCfg><ZelLamp><L17 Fh='1' version='2'/></ZelLamp></deviceCfg>");
  lamp::WorkingCopy copy(lamp::section::ClockProgramsRead);
  copy.take(reply);
  XmlDocument write;
  auto* section = copy.prepareWrite(write, lamp::section::ClockProgramsWrite,
                                    XCBasicString(u"20250315100000W"));
  ASSERT_NE(section, nullptr);
  EXPECT_TRUE(lamp::rewriteRows(*section, lamp::programRewrite(ProgramKind::clock)));
  EXPECT_XML_EQ("<deviceCfg><E17 ActDate='20250315100000W' version='2'/></deviceCfg>", write);
}

// --- sorting

TEST_F(GroupSchedules, NodesAreSortedByEachColumnAndGroupsByTheirNamesAlone) {
  configureGroups({{"b", {}}, {"B", {}}, {"a", {}}});
  open(
      "<Node Id='x' time1='9' power1='7'/><Node Id='y' time1='10' power1='70'/>"
      "<Node Id='X' time1='1' power1='9'/>");
  driver.sort("nodes", 1);
  EXPECT_EQ(driver.column("nodes", 0), (Cells{"X", "x", "y"}));
  driver.sort("nodes", 2);
  EXPECT_EQ(driver.column("nodes", 0), (Cells{"x", "X", "y"}));
  driver.sort("nodes", 0);
  EXPECT_EQ(driver.column("nodes", 0), (Cells{"X", "x", "y"}));
  driver.sort("groups", 0);
  EXPECT_EQ(driver.column("groups", 0), (Cells{"B", "a", "b"}));
  driver.sort("groups", 3);
  EXPECT_EQ(driver.column("groups", 0), (Cells{"B", "a", "b"}));
}

// --- round trips

// A section of nodes with programs, and beside them attributes and elements that no page knows.
std::string randomNodes(int count, std::mt19937& random, std::string& sent) {
  const auto number = [&random](int below) { return std::to_string(random() % unsigned(below)); };
  std::string read;
  for (int i = 0; i < count; ++i) {
    std::string program;
    std::string foreign;
    std::string inside;
    for (const char* step : {"1", "2", "3", "4"}) {
      program += " time" + std::string(step) + "='" + number(1000) + "'";
      program += " power" + std::string(step) + "='" + number(101) + "'";
    }
    for (auto n = random() % 3; n > 0; --n)
      foreign += " a" + std::to_string(n) + "='" + number(9) + " \xC3\xA9'";
    if (random() % 2 != 0) inside = "<more of='" + number(9) + "'>text<deep/></more>";
    const std::string id = "'n" + std::to_string(i) + "'";
    read += "<Node Id=" + id + foreign + program + ">" + inside + "</Node>";
    sent += "<Node nodeId=" + id + foreign + ">" + inside + "<Interval" + program + "/></Node>";
  }
  return read;
}

TEST_F(GroupSchedules, WhatThePageDoesNotKnowGoesBackAsItCame) {
  std::mt19937 random(20250315);
  for (const int count : {1, 2, 500}) {
    std::string sent;
    const std::string read = randomNodes(count, random, sent);
    open(read, "other='1'");
    driver.select("nodes", {0});
    const std::string before = driver.text("time1");
    driver.type("time1", before == "1" ? "2" : "1");
    const std::string changed = "time1='" + before + "'";
    sent.replace(sent.find(changed), changed.size(), before == "1" ? "time1='2'" : "time1='1'");
    driver.click("ok");
    expectSent("E06", "<E06 other='1' ActDate='20250315100000W'>" + sent + "</E06>");
    driver.channel().forget();
  }
}

}  // namespace
