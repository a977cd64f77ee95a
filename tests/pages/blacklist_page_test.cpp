#include "pages/blacklist_page.h"

#include "tests/pages/section_page_test.h"
#include "tests/support/edited_page.h"

namespace {

using namespace pages_test;
using support::changesOn;
using support::faultsOn;
using support::TopKind;

constexpr const char* Table = R"(
  <Node nodeId="1" Reference="Bridge 1" latitude="41.50" longitude="2.10"/>
  <Node nodeId="2" Reference="Bridge 2"/>
  <BlackList owner="x">
    <Node nodeId="8" Reference="Yard" latitude="" longitude="2.80"/>
    <Node nodeId="9" zone="7" Reference="Gate" latitude="41.90" longitude="2.90"><Lamp w="70"/></Node>
  </BlackList>
  <Node nodeId="3" Reference="Bridge 3" latitude="41.60" longitude="2.30" colour="warm"/>)";

class BlacklistPage : public SectionPage<CDlgE09CfgZelLampManager> {
 protected:
  BlacklistPage() : SectionPage("L04", "E09") {}

  void expectLists(const Texts& nodes, const Texts& blacklist) {
    EXPECT_EQ(driver.column("nodes", 0), nodes);
    EXPECT_EQ(driver.column("blacklist", 0), blacklist);
    EXPECT_EQ(driver.selection("nodes"), nodes.empty() ? Rows{} : Rows{0});
    EXPECT_EQ(driver.selection("blacklist"), blacklist.empty() ? Rows{} : Rows{0});
    EXPECT_EQ(driver.enabled("moveRight"), !nodes.empty());
    EXPECT_EQ(driver.enabled("moveLeft"), !blacklist.empty());
  }
};

TEST_F(BlacklistPage, OpensWithBothListsAndTheirFirstRowsSelected) {
  open(Table, "Fh='20240331023000'");
  EXPECT_EQ(driver.title(), "[38520] - Main street");
  const Texts columns = {"[24516]", "[35538]", "[35861]", "[35860]"};
  EXPECT_EQ(driver.columns(6611), columns);
  EXPECT_EQ(driver.columns(6615), columns);
  expectLists({"1", "2", "3"}, {"8", "9"});
  EXPECT_EQ(driver.text("activation"), Now);
  for (const char* list : {"nodes", "blacklist"})
    EXPECT_EQ(driver.as<host::ListControl>(list).columnWidths(503),
              (std::vector<int>{100, 200, 100, 103}));
}

TEST_F(BlacklistPage, NamesItsControls) {
  open(Table);
  const std::pair<int, const char*> texts[] = {
      {6610, "[38520]"}, {6624, "[38553]"}, {6626, "[38554]"}, {6612, ""},
      {6617, ""},        {6613, "[32055]"}, {1, "[36777]"},    {2, "[312]"}};
  for (const auto& [id, text] : texts) EXPECT_EQ(driver.text(id), text) << id;
  EXPECT_EQ(driver.control("moveRight").id(), 6612);
  EXPECT_EQ(driver.control("moveLeft").id(), 6617);
  EXPECT_EQ(driver.image("moveRight"), "MOVE-RIGHT-16.png");
  EXPECT_EQ(driver.image("moveLeft"), "MOVE-LEFT-16.png");
  EXPECT_EQ(driver.control("activation").id(), 6614);
}

TEST_F(BlacklistPage, AMissingPositionIsShownAsZeroAndAnEmptyOneAsEmpty) {
  open(Table);
  EXPECT_EQ(driver.rows("nodes")[1], (Texts{"2", "Bridge 2", "0.000000", "0.000000"}));
  EXPECT_EQ(driver.rows("blacklist")[0], (Texts{"8", "Yard", "", "2.80"}));
  driver.closeAll();
  open("<Node/>");
  EXPECT_EQ(driver.rows("nodes")[0], (Texts{"", "", "0.000000", "0.000000"}));
}

TEST_F(BlacklistPage, ListsSortByWhatTheyShow) {
  open(R"(<Node nodeId="a" latitude="-1"/><Node nodeId="b"/><Node nodeId="c" latitude="1"/>
          <Node nodeId="d" latitude="0.5"/>)");
  driver.sort("nodes", 2);
  EXPECT_EQ(driver.column("nodes", 0), (Texts{"a", "b", "d", "c"}));
}

TEST_F(BlacklistPage, WithoutABlacklistTheRightSideIsEmpty) {
  open(R"(<Node nodeId="1"/>)");
  expectLists({"1"}, {});
  EXPECT_EQ(disabledReason("moveLeft"), "[60081]");
  EXPECT_FALSE(driver.tryClick("moveLeft"));
  driver.click("moveRight");
  expectLists({}, {"1"});
  EXPECT_EQ(disabledReason("moveRight"), "[60081]");
  driver.click("ok");
  expectSent(R"(<Node nodeId="1"/>)");
}

TEST_F(BlacklistPage, TheButtonsFollowTheSelectionOfTheirList) {
  open(Table);
  driver.select("nodes", {});
  EXPECT_FALSE(driver.enabled("moveRight"));
  EXPECT_TRUE(driver.enabled("moveLeft"));
  driver.select("blacklist", {});
  EXPECT_FALSE(driver.enabled("moveLeft"));
  driver.select("nodes", {2});
  EXPECT_TRUE(driver.enabled("moveRight"));
  EXPECT_EQ(disabledReason("moveRight"), "");
  EXPECT_FALSE(driver.enabled("moveLeft"));
}

TEST_F(BlacklistPage, MovesNodesToTheEndOfTheBlacklistInTheListsOrder) {
  open(Table);
  driver.select("nodes", {0, 2});
  driver.click("moveRight");
  expectLists({"2"}, {"8", "9", "1", "3"});
  EXPECT_EQ(driver.rows("blacklist")[3], (Texts{"3", "Bridge 3", "41.60", "2.30"}));
  driver.click("ok");
  expectSent(R"(<Node nodeId="8"/><Node nodeId="9" zone="7"><Lamp w="70"/></Node>
                <Node nodeId="1"/><Node nodeId="3" colour="warm"/>)",
             std::string("owner='x' ") + NowStamp);
}

TEST_F(BlacklistPage, ASortedListMovesInTheOrderThatItShows) {
  open(Table);
  driver.sort("nodes", 0);
  driver.sort("nodes", 0);
  driver.select("nodes", {0, 1, 2});
  driver.click("moveRight");
  expectLists({}, {"8", "9", "3", "2", "1"});
}

TEST_F(BlacklistPage, MovesNodesBackToTheEndOfTheTable) {
  open(Table);
  driver.select("blacklist", {0, 1});
  driver.click("moveLeft");
  expectLists({"1", "2", "3", "8", "9"}, {});
  EXPECT_EQ(driver.rows("nodes")[4], (Texts{"9", "Gate", "41.90", "2.90"}));
  driver.click("ok");
  expectSent("", std::string("owner='x' ") + NowStamp);
}

TEST_F(BlacklistPage, ANodeBehindTheBlacklistElementMovesToo) {
  open(R"(<BlackList/><Node nodeId="1"/>)");
  driver.click("moveRight");
  driver.click("moveLeft");
  expectLists({"1"}, {});
  driver.click("moveRight");
  driver.click("ok");
  expectSent(R"(<Node nodeId="1"/>)");
}

TEST_F(BlacklistPage, BackAndForthCountsAsUnchangedWhateverTheOrder) {
  open(Table);
  driver.select("nodes", {1});
  driver.click("moveRight");
  driver.select("blacklist", {2});
  driver.click("moveLeft");
  expectLists({"1", "3", "2"}, {"8", "9"});
  driver.select("blacklist", {0});
  driver.click("moveLeft");
  driver.select("nodes", {3});
  driver.click("moveRight");
  expectLists({"1", "3", "2"}, {"9", "8"});
  driver.click("ok");
  expectClosedWithoutSending();
}

TEST_F(BlacklistPage, AsManyButOtherNodesAreAChange) {
  open(Table);
  driver.click("moveRight");
  driver.select("blacklist", {0});
  driver.click("moveLeft");
  expectLists({"2", "3", "8"}, {"9", "1"});
  driver.click("ok");
  expectSent(R"(<Node nodeId="9" zone="7"><Lamp w="70"/></Node><Node nodeId="1"/>)",
             std::string("owner='x' ") + NowStamp);
}

TEST_F(BlacklistPage, DoubleClicksMoveAtOnce) {
  open(Table);
  driver.doubleClick("nodes", 1);
  expectLists({"1", "3"}, {"8", "9", "2"});
  driver.doubleClick("blacklist", 1);
  expectLists({"1", "3", "9"}, {"8", "2"});
  driver.select("nodes", {0, 2});
  driver.doubleClick("nodes", 2);
  expectLists({"3"}, {"8", "2", "1", "9"});
}

TEST_F(BlacklistPage, TheDeleteKeyMovesRightInTheNodeListOnly) {
  open(Table);
  driver.select("nodes", {1, 2});
  driver.press("nodes", host::Key::insert);
  driver.press("blacklist", host::Key::deleteKey);
  EXPECT_EQ(driver.column("nodes", 0), (Texts{"1", "2", "3"}));
  EXPECT_EQ(driver.column("blacklist", 0), (Texts{"8", "9"}));
  driver.press("nodes", host::Key::deleteKey);
  expectLists({"1"}, {"8", "9", "2", "3"});
}

TEST_F(BlacklistPage, WhatIsNoNodeIsNeitherListedNorLost) {
  open(R"(<Group nodeId="g"/><Node nodeId="1"/>
          <BlackList Fh="20240331023000"><Group nodeId="h" Reference="r"/><Node nodeId="8"/></BlackList>)");
  expectLists({"1"}, {"8"});
  driver.click("moveRight");
  driver.click("ok");
  expectSent(R"(<Group nodeId="h"/><Node nodeId="8"/><Node nodeId="1"/>)");
}

TEST_F(BlacklistPage, OkWithoutMovesSendsNothing) {
  open(Table);
  driver.type("activation", "31/02/2024 00:00:00");
  driver.click("ok");
  expectClosedWithoutSending();
}

TEST_F(BlacklistPage, AnInvalidActivationDateIsRefused) {
  open(Table);
  driver.click("moveRight");
  expectActivationDateIsChecked();
}

TEST_F(BlacklistPage, AFailedWriteKeepsBothLists) {
  open(Table);
  driver.click("moveRight");
  driver.channel().failWith("Locked.");
  driver.click("ok");
  driver.answer(host::MessageAnswer::cancel);
  expectLists({"2", "3"}, {"8", "9", "1"});
  EXPECT_EQ(driver.rows("blacklist")[2], (Texts{"1", "Bridge 1", "41.50", "2.10"}));
  driver.click("moveRight");
  driver.click("moveLeft");
  driver.channel().forget();
  expectFailedWriteKeepsThePage();
}

TEST_F(BlacklistPage, CancelDiscardsTheMoves) {
  open(Table);
  driver.click("moveRight");
  driver.click("cancel");
  EXPECT_EQ(driver.result(), IDCANCEL);
  expectNothingSent();
}

TEST_F(BlacklistPage, WithoutTheTableBothListsStayEmpty) {
  openReply("<deviceCfg><ZelLamp><BlackList><Node nodeId='1'/></BlackList></ZelLamp></deviceCfg>");
  expectLists({}, {});
  driver.press("nodes", host::Key::deleteKey);
  driver.click("ok");
  expectClosedWithoutSending();
  driver.channel().replyEmpty();
  driver.show<CDlgE09CfgZelLampManager>(&manager.driver, nullptr);
  expectLists({}, {});
  driver.press("nodes", host::Key::deleteKey);
  driver.click("ok");
  EXPECT_EQ(driver.result(), IDOK);
}

TEST_F(BlacklistPage, WhatThePageDoesNotKnowGoesAlong) {
  for (const int size : RoundTripSizes) {
    SCOPED_TRACE(size);
    std::mt19937 random(static_cast<unsigned>(size) + 4);
    std::string read = "<BlackList a='1' b='2'/>";
    std::string written;
    Rows all;
    for (int i = 0; i < size; ++i) {
      const Unknown other = unknown(random);
      const std::string id = other.before + "nodeId=\"" + std::to_string(i) + "\"";
      read += "<Node" + id + " Reference=\"r\"" + other.after + "latitude=\"1\" longitude=\"2\">" +
              other.children + "</Node>";
      written += "<Node" + id + other.after + ">" + other.children + "</Node>";
      all.push_back(static_cast<std::size_t>(i));
    }
    // To the right and back a few times: nothing is lost on the way.
    open(read);
    for (int turn = 0; turn < 2 && size > 0; ++turn) {
      driver.select("nodes", all);
      driver.click("moveRight");
      driver.select("blacklist", all);
      driver.click("moveLeft");
    }
    driver.click("ok");
    expectClosedWithoutSending();
    if (size == 0) continue;
    open(read);
    driver.select("nodes", all);
    driver.click("moveRight");
    driver.click("ok");
    expectSent(written, std::string("a='1' b='2' ") + NowStamp);
    driver.channel().forget();
  }
}

TEST_F(BlacklistPage, AHundredThousandNodesMoveAndAreCompared) {
  constexpr std::size_t Count = 100000;
  std::string read = "<BlackList><Node nodeId='n'/>";
  for (std::size_t i = 0; i < Count; ++i)
    read += "<Node nodeId=\"" + std::to_string(i) + "\" Reference=\"r\"/>";
  open(read + "</BlackList>");
  Rows all(Count);
  for (std::size_t i = 0; i < Count; ++i) all[i] = i + 1;
  driver.select("blacklist", all);
  driver.click("moveLeft");
  for (std::size_t& row : all) --row;
  driver.select("nodes", all);
  driver.click("moveRight");
  driver.click("ok");
  expectClosedWithoutSending();
}

// --- what it edits

TEST_F(BlacklistPage, TheChangesAreTheNodesOnTheOtherSide) {
  open(Table);
  EXPECT_EQ(changesOn(driver.dialog()), Texts{});
  driver.select("nodes", {0, 2});
  driver.click("moveRight");
  driver.select("blacklist", {0});
  driver.click("moveLeft");
  EXPECT_EQ(changesOn(driver.dialog()),
            (Texts{"1 BlackList [38554]: N -> Y", "3 BlackList [38554]: N -> Y",
                   "8 BlackList [38554]: Y -> N"}));
}

TEST_F(BlacklistPage, MovesThatComeToNothingAreNoChangeAndNoFault) {
  open(R"(<Node nodeId="1"/><Node nodeId="2"/>)");
  driver.type("activation", "31/02/2024 00:00:00");
  driver.click("moveRight");
  EXPECT_EQ(changesOn(driver.dialog()), Texts{"1 BlackList [38554]: N -> Y"});
  EXPECT_EQ(faultsOn(driver.dialog()), Texts{"null ActDate: [38408]"});
  driver.click("moveLeft");
  EXPECT_EQ(driver.column("nodes", 0), (Texts{"2", "1"}));
  EXPECT_EQ(changesOn(driver.dialog()), Texts{});
  EXPECT_EQ(faultsOn(driver.dialog()), Texts{});
}

TEST_F(BlacklistPage, NodesThatShareAnIdentityAreChangesOnlyWhereTheWriteDiffers) {
  open(R"(<Node nodeId="1" a="x"/><BlackList><Node nodeId="1" a="y"/></BlackList>)");
  driver.click("moveRight");
  driver.select("blacklist", {0});
  driver.click("moveLeft");
  EXPECT_EQ(changesOn(driver.dialog()), Texts{});
  driver.click("moveRight");
  EXPECT_EQ(changesOn(driver.dialog()), Texts{"1 BlackList [38554]: N -> Y"});
}

}  // namespace
