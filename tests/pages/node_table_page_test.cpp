#include "pages/node_table_page.h"

#include <gtest/gtest.h>

#include "tests/support/dialog_driver.h"
#include "tests/support/lamp_manager.h"
#include "tests/support/xml_compare.h"

namespace {

using support::TopKind;

constexpr const char* ThreeNodes = R"(
  <Node nodeId="1" Reference="Bridge 1" latitude="41.50" longitude="2.10"/>
  <Node nodeId="2" Reference="Bridge 2" latitude="41.50" longitude="2.20" colour="warm"/>
  <Node nodeId="3" Reference="" latitude="41.50" longitude="2.30"/>)";

class NodeTablePage : public testing::Test {
 protected:
  void open(const std::string& nodes = ThreeNodes, const std::string& attributes = "") {
    openReply("<deviceCfg><ZelLamp Id='LM'><L04 " + attributes + ">" + nodes +
              "</L04></ZelLamp></deviceCfg>");
  }
  void openReply(const std::string& reply) {
    driver.channel().replyWith(reply);
    driver.show<CDlgE04CfgZelLampManager>(&manager.driver, nullptr);
    ASSERT_EQ(driver.top(), TopKind::dialog);
    EXPECT_XML_EQ("<deviceCfg><L04/></deviceCfg>", driver.channel().last().request);
    driver.channel().forget();
  }
  void expectSent(const std::string& content, const std::string& attributes = "") {
    ASSERT_EQ(driver.channel().count(), 1U);
    EXPECT_EQ(driver.channel().last().command, 2);
    EXPECT_XML_EQ("<deviceCfg><E04 " + attributes + ">" + content + "</E04></deviceCfg>",
                  driver.channel().last().request);
  }
  void expectRefused(const char* message, std::size_t row, const char* focus) {
    ASSERT_EQ(driver.top(), TopKind::message);
    EXPECT_EQ(driver.message().text, message);
    driver.answer(host::MessageAnswer::ok);
    EXPECT_EQ(driver.selection("nodes"), std::vector<std::size_t>{row});
    EXPECT_EQ(driver.focus(), focus);
    EXPECT_EQ(driver.channel().count(), 0U);
  }

  support::LampManager manager;
  support::DialogDriver driver;
};

TEST_F(NodeTablePage, OpensWithTheFirstRowSelectedAndItsValuesInTheEdits) {
  open();
  EXPECT_EQ(driver.title(), "[35538] - Main street");
  EXPECT_EQ(driver.columns("nodes"),
            (std::vector<std::string>{"[24516]", "[35538]", "[35861]", "[35860]"}));
  using Row = std::vector<std::string>;
  EXPECT_EQ(driver.rows("nodes"), (std::vector<Row>{Row{"1", "Bridge 1", "41.50", "2.10"},
                                                    Row{"2", "Bridge 2", "41.50", "2.20"},
                                                    Row{"3", "", "41.50", "2.30"}}));
  EXPECT_EQ(driver.selection(6520), std::vector<std::size_t>{0});
  EXPECT_EQ(driver.text(6517), "Bridge 1");
  EXPECT_EQ(driver.text(6518), "41.50");
  EXPECT_EQ(driver.text(6519), "2.10");
}

TEST_F(NodeTablePage, ColumnsShareTheWidthInFifths) {
  open();
  EXPECT_EQ(driver.as<host::ListControl>("nodes").columnWidths(503),
            (std::vector<int>{100, 200, 100, 103}));
}

TEST_F(NodeTablePage, SeveralSelectedRowsShowWhatTheyHaveInCommon) {
  open();
  driver.select("nodes", {0, 1, 2});
  EXPECT_EQ(driver.text("reference"), "");
  EXPECT_EQ(driver.text("latitude"), "41.50");
  EXPECT_EQ(driver.text("longitude"), "");
}

TEST_F(NodeTablePage, TypingWithThreeRowsSelectedSetsAllThree) {
  open();
  driver.select("nodes", {0, 1, 2});
  driver.type("reference", "Park");
  EXPECT_EQ(driver.column("nodes", 1), (std::vector<std::string>{"Park", "Park", "Park"}));
  driver.click("ok");
  expectSent(R"(<Node nodeId="1" Reference="Park" latitude="41.50" longitude="2.10"/>
    <Node nodeId="2" Reference="Park" latitude="41.50" longitude="2.20" colour="warm"/>
    <Node nodeId="3" Reference="Park" latitude="41.50" longitude="2.30"/>)");
  EXPECT_EQ(driver.result(), IDOK);
}

TEST_F(NodeTablePage, EachEditSetsItsOwnAttribute) {
  open();
  driver.select("nodes", {1});
  driver.type("reference", "R");
  driver.type("latitude", "-1.5");
  driver.type("longitude", "text");
  driver.click("ok");
  expectSent(R"(<Node nodeId="1" Reference="Bridge 1" latitude="41.50" longitude="2.10"/>
    <Node nodeId="2" Reference="R" latitude="-1.5" longitude="text" colour="warm"/>
    <Node nodeId="3" Reference="" latitude="41.50" longitude="2.30"/>)");
}

TEST_F(NodeTablePage, ShowingASelectionWritesNothingBack) {
  open();
  driver.select("nodes", {0, 1, 2});
  driver.select("nodes", {1});
  driver.select("nodes", {});
  EXPECT_EQ(driver.text("reference"), "Bridge 2") << "without a selection the edits stay";
  driver.click("ok");
  EXPECT_EQ(driver.channel().count(), 0U);
}

TEST_F(NodeTablePage, TypingWithoutASelectedRowChangesNothing) {
  open();
  driver.select("nodes", {});
  driver.type("reference", "nobody");
  EXPECT_EQ(driver.text("reference"), "nobody");
  driver.click("ok");
  EXPECT_EQ(driver.channel().count(), 0U);
  EXPECT_EQ(driver.result(), IDOK);
}

TEST_F(NodeTablePage, OkWithoutChangesSendsNothing) {
  open();
  driver.click("ok");
  EXPECT_EQ(driver.channel().count(), 0U);
  EXPECT_EQ(driver.result(), IDOK);
}

TEST_F(NodeTablePage, AValueChangedBackCountsAsUnchanged) {
  open();
  driver.type("reference", "Other");
  driver.type("reference", "Bridge 1");
  driver.click("ok");
  EXPECT_EQ(driver.channel().count(), 0U);
}

TEST_F(NodeTablePage, WhatThePageDoesNotKnowComesBackInItsOrder) {
  open(R"(<Group name="a"><Node nodeId="9"/></Group>
          <Node nodeId="1" zone="7" Reference="x" latitude="1" longitude="2"><Lamp w="70"/></Node>
          <node nodeId="2"/><BlackList><Node nodeId="5"/></BlackList>)",
       R"(Fh="20240101000000" version="3")");
  EXPECT_EQ(driver.rows("nodes").size(), 1U) << "only children tagged Node are nodes";
  driver.type("reference", "y");
  driver.click("ok");
  expectSent(R"(<Group name="a"><Node nodeId="9"/></Group>
          <Node nodeId="1" zone="7" Reference="y" latitude="1" longitude="2"><Lamp w="70"/></Node>
          <node nodeId="2"/><BlackList><Node nodeId="5"/></BlackList>)",
             R"(version="3")");
}

TEST_F(NodeTablePage, AReferenceTakes59CharactersAndNo60th) {
  open();
  const std::string full(59, 'r');
  driver.type("reference", full + "s");
  EXPECT_EQ(driver.text("reference"), full);
  driver.click("ok");
  EXPECT_EQ(driver.channel().count(), 1U);
}

TEST_F(NodeTablePage, APositionTakesTenCharacters) {
  open();
  driver.type("latitude", "12345678901");
  driver.type("longitude", "-1234567890");
  EXPECT_EQ(driver.text("latitude"), "1234567890");
  EXPECT_EQ(driver.text("longitude"), "-123456789");
}

TEST_F(NodeTablePage, AReferenceWithForbiddenCharactersIsRefused) {
  for (const char* wrong : {"a<b", "a>b", "Calle Peñón", "—", "😀"}) {
    open();
    driver.select("nodes", {1});
    driver.type("reference", wrong);
    driver.select("nodes", {0});
    driver.click("ok");
    expectRefused("[38657]", 1, "reference");
    EXPECT_EQ(driver.text("reference"), wrong) << "the edits show the failing row";
    EXPECT_EQ(driver.selectedCharacters("reference").first, 0U);
    EXPECT_EQ(driver.selectedCharacters("reference").second,
              driver.control("reference").text().Length());
    driver.closeAll();
  }
}

TEST_F(NodeTablePage, AForbiddenReferenceIsRefusedEvenIfItWasReadSo) {
  open(R"(<Node nodeId="1" Reference="Avda. Aragó" latitude="1" longitude="2"/>)");
  driver.click("ok");
  expectRefused("[38657]", 0, "reference");
}

TEST_F(NodeTablePage, PlainPunctuationIsAccepted) {
  open(R"(<Node nodeId="1" Reference="" latitude="1" longitude="2"/>)");
  driver.type("reference", "#12 / \"A\" & 'b' ~");
  driver.click("ok");
  expectSent(R"(<Node nodeId="1" Reference="#12 / &quot;A&quot; &amp; 'b' ~" latitude="1"
                 longitude="2"/>)");
}

TEST_F(NodeTablePage, EmptyPositionsAreRefusedRowByRowLatitudeFirst) {
  open(R"(<Node nodeId="1" Reference="" latitude="1" longitude="2"/>
          <Node nodeId="2" Reference="" longitude=""/>)");
  driver.click("ok");
  expectRefused("[38408]", 1, "latitude");
  driver.type("latitude", "5");
  driver.click("ok");
  expectRefused("[38408]", 1, "longitude");
  driver.type("longitude", "6");
  driver.click("ok");
  EXPECT_EQ(driver.result(), IDOK);
}

TEST_F(NodeTablePage, TheFirstFaultyRowWinsBeforeALaterReference) {
  open(R"(<Node nodeId="1" Reference="a" latitude="1" longitude=""/>
          <Node nodeId="2" Reference="&lt;" latitude="1" longitude="1"/>)");
  driver.click("ok");
  expectRefused("[38408]", 0, "longitude");
}

TEST_F(NodeTablePage, WithoutTheSectionTheListIsEmptyAndOkClosesWithoutSending) {
  openReply("<deviceCfg><ZelLamp/></deviceCfg>");
  EXPECT_TRUE(driver.rows("nodes").empty());
  driver.click("ok");
  EXPECT_EQ(driver.result(), IDOK);
  EXPECT_EQ(driver.channel().count(), 0U);
}

TEST_F(NodeTablePage, AReplyWithoutRootOpensEmpty) {
  driver.channel().replyEmpty();
  driver.show<CDlgE04CfgZelLampManager>(&manager.driver, nullptr);
  EXPECT_TRUE(driver.rows("nodes").empty());
  driver.click("ok");
  EXPECT_EQ(driver.result(), IDOK);
}

TEST_F(NodeTablePage, AnEmptyTableIsValid) {
  open("");
  driver.click("ok");
  EXPECT_EQ(driver.result(), IDOK);
}

TEST_F(NodeTablePage, ARefusedWriteKeepsThePageAndASecondOkSucceeds) {
  open();
  driver.type("reference", "Park");
  driver.channel().failWith("Locked.");
  driver.click("ok");
  EXPECT_EQ(driver.message().text, "Locked.\r\n\r\n[329]");
  driver.answer(host::MessageAnswer::cancel);
  ASSERT_EQ(driver.top(), TopKind::dialog);
  EXPECT_EQ(driver.text("reference"), "Park");
  driver.click("ok");
  EXPECT_EQ(driver.result(), IDOK);
  EXPECT_EQ(driver.channel().exchanges()[0].request, driver.channel().exchanges()[1].request);
}

TEST_F(NodeTablePage, CancelDiscardsTheWorkingCopy) {
  open();
  driver.type("reference", "Park");
  driver.click("cancel");
  EXPECT_EQ(driver.result(), IDCANCEL);
  EXPECT_EQ(driver.channel().count(), 0U);
}

TEST_F(NodeTablePage, SortingChangesNeitherTheDocumentNorItsOrder) {
  open();
  driver.sort("nodes", 3);
  driver.sort("nodes", 3);
  EXPECT_EQ(driver.column("nodes", 0), (std::vector<std::string>{"3", "2", "1"}));
  EXPECT_EQ(driver.selection("nodes"), std::vector<std::size_t>{2}) << "moves with its row";
  driver.type("reference", "first");
  driver.click("ok");
  expectSent(R"(<Node nodeId="1" Reference="first" latitude="41.50" longitude="2.10"/>
    <Node nodeId="2" Reference="Bridge 2" latitude="41.50" longitude="2.20" colour="warm"/>
    <Node nodeId="3" Reference="" latitude="41.50" longitude="2.30"/>)");
}

TEST_F(NodeTablePage, FiveHundredNodesGoBackAsTheyCame) {
  std::string nodes;
  for (int i = 0; i < 500; ++i)
    nodes += "<Node nodeId=\"" + std::to_string(i) + "\" a" + std::to_string(i % 7) +
             "=\"u\" Reference=\"r\" latitude=\"1\" longitude=\"2\"" +
             (i % 3 == 0 ? "><Extra n=\"" + std::to_string(i) + "\"/></Node>" : "/>");
  open(nodes);
  driver.select("nodes", {499});
  driver.type("reference", "last");
  driver.click("ok");
  std::string expected = nodes;
  expected.replace(expected.rfind("Reference=\"r\""), 13, "Reference=\"last\"");
  expectSent(expected);
}

}  // namespace
