#include "pages/node_power_page.h"

#include "tests/pages/section_page_test.h"

namespace {

using namespace pages_test;
using support::TopKind;

constexpr const char* ThreeRows = R"(
  <Node Id="1" time="30" power="80"/>
  <Lamp Id="2" time="45" power="80" Fh="20240101000000" colour="warm"><Extra n="1"/></Lamp>
  <Node power="0" time="999" Id="3"/>)";

class NodePowerPage : public SectionPage<CDlgE05CfgZelLampManager> {
 protected:
  NodePowerPage() : SectionPage("L05", "E05") {}
};

TEST_F(NodePowerPage, OpensWithTheFirstRowSelectedAndItsValuesInTheEdits) {
  open(ThreeRows);
  EXPECT_EQ(driver.title(), "[38551] - Main street");
  EXPECT_EQ(driver.columns("nodes"), (Texts{"[24516]", "[666]", "[24534]"}));
  EXPECT_EQ(driver.rows("nodes"),
            (std::vector<Texts>{{"1", "30", "80"}, {"2", "45", "80"}, {"3", "999", "0"}}))
      << "every child is a row, whatever its tag";
  EXPECT_EQ(driver.selection(6522), Rows{0});
  EXPECT_EQ(driver.text(6524), "30");
  EXPECT_EQ(driver.text(6526), "80");
}

TEST_F(NodePowerPage, NamesItsControls) {
  open(ThreeRows);
  const std::pair<int, const char*> texts[] = {{6521, "[38618]"},     {6523, "[666] ([34979])"},
                                               {6525, "[24534] (%)"}, {6554, "[32055]"},
                                               {1, "[36777]"},        {2, "[312]"}};
  for (const auto& [id, text] : texts) EXPECT_EQ(driver.text(id), text) << id;
  EXPECT_EQ(driver.control("time").id(), 6524);
  EXPECT_EQ(driver.control("power").id(), 6526);
  EXPECT_EQ(driver.control("activation").id(), 6553);
  EXPECT_EQ(driver.image("ok"), "OK-16.png");
  EXPECT_EQ(driver.image("cancel"), "CANCEL-16.png");
}

TEST_F(NodePowerPage, ColumnsShareTheWidthInThirds) {
  open(ThreeRows);
  EXPECT_EQ(driver.as<host::ListControl>("nodes").columnWidths(500),
            (std::vector<int>{166, 166, 168}));
}

TEST_F(NodePowerPage, TheActivationDateStartsAtTheSectionsStamp) {
  expectActivationDateStartsAtTheStamp(ThreeRows);
}

TEST_F(NodePowerPage, SeveralSelectedRowsShowWhatTheyHaveInCommon) {
  open(ThreeRows);
  driver.select("nodes", {0, 1});
  EXPECT_EQ(driver.text("power"), "80");
  EXPECT_EQ(driver.text("time"), "");
  driver.select("nodes", {0, 1, 2});
  EXPECT_EQ(driver.text("power"), "");
  driver.select("nodes", {});
  EXPECT_EQ(driver.text("power"), "") << "without a selection the edits stay";
  driver.select("nodes", {2});
  EXPECT_EQ(driver.text("time"), "999");
  driver.click("ok");
  expectClosedWithoutSending();
}

TEST_F(NodePowerPage, TypingSetsEverySelectedRowAndSendsItInItsInterval) {
  open(ThreeRows, R"(version="2" Fh="20240331023000" zone="n")");
  driver.type("activation", "01/12/2024 00:00:00");
  driver.select("nodes", {0, 2});
  driver.type("time", "5");
  driver.select("nodes", {1});
  driver.type("power", "100");
  EXPECT_EQ(driver.column("nodes", 1), (Texts{"5", "45", "5"}));
  EXPECT_EQ(driver.column("nodes", 2), (Texts{"80", "100", "0"}));
  driver.click("ok");
  expectSent(R"(<Node nodeId="1"><Interval time="5" power="80"/></Node>
      <Lamp nodeId="2" colour="warm"><Extra n="1"/><Interval time="45" power="100"/></Lamp>
      <Node nodeId="3"><Interval time="5" power="0"/></Node>)",
             R"(version="2" ActDate="20241201000000W" zone="n")");
}

TEST_F(NodePowerPage, ASectionWithoutStampGetsTheActivationDateBehindItsAttributes) {
  open(R"(<Node Id="1" time="1" power="1"/>)", R"(version="2")");
  driver.type("power", "2");
  driver.click("ok");
  expectSent(R"(<Node nodeId="1"><Interval time="1" power="2"/></Node>)",
             std::string(R"(version="2" )") + NowStamp);
}

TEST_F(NodePowerPage, TheEditsTakeThreeDigitsAndNothingElse) {
  open(ThreeRows);
  for (const char* edit : {"time", "power"}) {
    driver.type(edit, "1234");
    EXPECT_EQ(driver.text(edit), "123") << edit;
    driver.type(edit, "-4.5 x");
    EXPECT_EQ(driver.text(edit), "45") << edit;
  }
}

struct Boundary {
  const char* time;
  const char* power;
  const char* message;  // empty where it is accepted
  const char* focus;
};

TEST_F(NodePowerPage, RefusesEmptyFieldsAndPowersOver100) {
  constexpr const char* OutOfRange = "[38265]([24534] (%),0,100)";
  constexpr Boundary Boundaries[] = {
      {"0", "0", "", ""},
      {"999", "100", "", ""},
      {"000", "099", "", ""},
      {"1", "101", OutOfRange, "power"},
      {"1", "999", OutOfRange, "power"},
      {"1", "", OutOfRange, "power"},
      {"", "50", "[38408]", "time"},
      {"", "101", "[38408]", "time"},
  };
  for (const Boundary& boundary : Boundaries) {
    SCOPED_TRACE(std::string(boundary.time) + "/" + boundary.power);
    open(R"(<Node Id="1" time="7" power="7"/><Node Id="2" time="7" power="7"/>
            <Node Id="3" time="7" power="7"/>)");
    driver.select("nodes", {1});
    driver.type("time", boundary.time);
    driver.type("power", boundary.power);
    driver.select("nodes", {0, 2});
    driver.click("ok");
    if (*boundary.message != 0) {
      expectRefused(boundary.message, boundary.focus);
      EXPECT_EQ(driver.selection("nodes"), Rows{1});
      EXPECT_EQ(driver.text("time"), boundary.time) << "the edits show the failing row";
      EXPECT_EQ(driver.text("power"), boundary.power);
    } else {
      EXPECT_EQ(driver.result(), IDOK);
      EXPECT_EQ(driver.channel().count(), 1U);
    }
    driver.closeAll();
  }
}

TEST_F(NodePowerPage, RefusesWhatWasReadSo) {
  const std::pair<const char*, const char*> rows[] = {
      {R"(<Node Id="1" power="5"/>)", "time"},
      {R"(<Node Id="1" time="5"/>)", "power"},
      {R"(<Node Id="1" time="5" power="1000"/>)", "power"},
      {R"(<Node Id="1" time="5" power="99999999999999999999"/>)", "power"}};
  for (const auto& [row, focus] : rows) {
    open(row);
    driver.click("ok");
    ASSERT_EQ(driver.top(), TopKind::message) << row;
    driver.answer(host::MessageAnswer::ok);
    EXPECT_EQ(driver.focus(), focus) << row;
    driver.closeAll();
  }
}

TEST_F(NodePowerPage, TheFirstFaultyRowInTheListsOrderWins) {
  open(R"(<Node Id="1" time="5" power="200"/><Node Id="2" time="" power="5"/>)");
  driver.click("ok");
  expectRefused("[38265]([24534] (%),0,100)", "power");
  EXPECT_EQ(driver.selection("nodes"), Rows{0});
  driver.sort("nodes", 0);
  driver.sort("nodes", 0);
  driver.click("ok");
  expectRefused("[38408]", "time");
  EXPECT_EQ(driver.selection("nodes"), Rows{0}) << "node 2 stands first now";
}

TEST_F(NodePowerPage, AfterAValidationTheLastRowIsSelected) {
  open(ThreeRows);
  driver.type("power", "81");
  driver.channel().failWith();
  driver.click("ok");
  driver.answer(host::MessageAnswer::cancel);
  EXPECT_EQ(driver.selection("nodes"), Rows{2});
  EXPECT_EQ(driver.text("time"), "999");
}

TEST_F(NodePowerPage, OkWithoutChangesSendsNothingAlsoWithAnotherDate) {
  open(ThreeRows);
  driver.type("activation", "31/02/2024 00:00:00");
  driver.click("ok");
  expectClosedWithoutSending();
}

TEST_F(NodePowerPage, AValueChangedBackCountsAsUnchanged) {
  open(ThreeRows);
  driver.type("time", "31");
  driver.type("time", "30");
  driver.click("ok");
  expectClosedWithoutSending();
}

TEST_F(NodePowerPage, AnInvalidActivationDateIsRefused) {
  open(ThreeRows);
  driver.type("power", "81");
  expectActivationDateIsChecked();
}

TEST_F(NodePowerPage, ARowWithoutIdentityFailsTheWriteSilently) {
  open(R"(<Node Id="1" time="1" power="1"/><Node time="1" power="1"/>)");
  driver.type("power", "2");
  driver.click("ok");
  EXPECT_EQ(driver.top(), TopKind::dialog);
  expectNothingSent();
  EXPECT_EQ(driver.column("nodes", 2), (Texts{"2", "1"})) << "the entries stay";
}

TEST_F(NodePowerPage, WithoutTheSectionTheListIsEmptyAndOkClosesWithoutSending) {
  for (const char* reply : {"<deviceCfg/>", "<deviceCfg><ZelLamp/></deviceCfg>",
                            "<deviceCfg><L05><Node Id='1'/></L05></deviceCfg>",
                            "<deviceCfg><ZelLamp><L05/></ZelLamp></deviceCfg>"}) {
    openReply(reply);
    EXPECT_TRUE(driver.rows("nodes").empty()) << reply;
    EXPECT_EQ(driver.text("activation"), Now);
    driver.click("ok");
    expectClosedWithoutSending();
  }
}

TEST_F(NodePowerPage, AReplyWithoutRootOpensEmpty) {
  driver.channel().replyEmpty();
  driver.show<CDlgE05CfgZelLampManager>(&manager.driver, nullptr);
  EXPECT_TRUE(driver.rows("nodes").empty());
  driver.click("ok");
  EXPECT_EQ(driver.result(), IDOK);
}

TEST_F(NodePowerPage, AFailedWriteKeepsThePageAndASecondOkSucceeds) {
  open(ThreeRows);
  driver.type("power", "81");
  driver.clearLogs();
  expectFailedWriteKeepsThePage();
  using host::CursorShape;
  EXPECT_EQ(driver.cursorLog(), (std::vector<CursorShape>{CursorShape::wait, CursorShape::arrow,
                                                          CursorShape::wait, CursorShape::arrow}));
}

TEST_F(NodePowerPage, CancelDiscardsTheEntries) {
  open(ThreeRows);
  driver.type("power", "81");
  driver.click("cancel");
  EXPECT_EQ(driver.result(), IDCANCEL);
  expectNothingSent();
}

TEST_F(NodePowerPage, WhatThePageDoesNotKnowGoesBackAsItCame) {
  for (const int size : RoundTripSizes) {
    SCOPED_TRACE(size);
    std::mt19937 random(static_cast<unsigned>(size) + 1);
    std::string read;
    std::string written;
    for (int i = 0; i < size; ++i) {
      const Unknown other = unknown(random);
      const std::string id = std::to_string(i);
      const std::string value = "time=\"" + std::to_string(i % 1000) + "\" power=\"7\"";
      const bool last = i + 1 == size;
      read += "<Node" + other.before + "Id=\"" + id + "\" " + value + other.after + ">" +
              other.children + "</Node>";
      written += "<Node" + other.before + "nodeId=\"" + id + "\"" + other.after + ">" +
                 other.children + "<Interval time=\"" + std::to_string(i % 1000) + "\" power=\"" +
                 (last ? "8" : "7") + "\"/></Node>";
    }
    open(read, "a='1' b='2'");
    driver.click("ok");
    expectClosedWithoutSending();
    if (size == 0) continue;
    open(read, "a='1' b='2'");
    driver.select("nodes", {static_cast<std::size_t>(size) - 1});
    driver.type("power", "8");
    driver.click("ok");
    expectSent(written, std::string("a='1' b='2' ") + NowStamp);
    driver.channel().forget();
  }
}

TEST_F(NodePowerPage, ManyRowsAreEditedCheckedAndSentAtOnce) {
  constexpr int Count = 20000;
  std::string read;
  for (int i = 0; i < Count; ++i)
    read += "<Node Id=\"" + std::to_string(i) + "\" time=\"1\" power=\"1\"/>";
  open(read);
  Rows all(Count);
  for (std::size_t i = 0; i < all.size(); ++i) all[i] = i;
  driver.select("nodes", all);
  driver.type("power", "77");
  driver.click("ok");
  ASSERT_EQ(driver.result(), IDOK);
  const XmlDocument sent = support::parsedXml(driver.channel().last().request);
  const XmlDocument::XmlNode* table = sent.Root()->FirstChild();
  int written = 0;
  for (const auto& node : table->Children())
    if (node.FirstChild()->getAttribute("power") == u"77") ++written;
  EXPECT_EQ(written, Count);
}

}  // namespace
