#include "pages/node_removal_page.h"

#include "tests/pages/section_page_test.h"
#include "tests/support/edited_page.h"

namespace {

using namespace pages_test;
using support::changesOn;
using support::faultsOn;
using support::TopKind;

constexpr const char* FourNodes = R"(
  <Node nodeId="1" Reference="Bridge 1" latitude="41.50" longitude="2.10"/>
  <Node nodeId="2" Reference="" latitude="41.50" longitude="2.20" colour="warm"><Lamp w="70"/></Node>
  <Node nodeId="3" Reference="Bridge 3"/>
  <Node nodeId="4" Reference="Bridge 4" latitude="41.60" longitude="2.40"/>)";

class NodeRemovalPage : public SectionPage<CDlgE08CfgZelLampManager> {
 protected:
  NodeRemovalPage() : SectionPage("L04", "E08") {}
};

TEST_F(NodeRemovalPage, OpensWithTheFirstOfTheNodesSelected) {
  open(FourNodes);
  EXPECT_EQ(driver.title(), "[38446] - Main street");
  EXPECT_EQ(driver.columns(6583), (Texts{"[24516]", "[35538]", "[35861]", "[35860]"}));
  EXPECT_EQ(driver.rows("nodes"), (std::vector<Texts>{{"1", "Bridge 1", "41.50", "2.10"},
                                                      {"2", "", "41.50", "2.20"},
                                                      {"3", "Bridge 3", "", ""},
                                                      {"4", "Bridge 4", "41.60", "2.40"}}));
  EXPECT_EQ(driver.selection("nodes"), Rows{0});
  EXPECT_EQ(driver.text("activation"), Now);
  EXPECT_TRUE(driver.enabled("remove"));
  EXPECT_EQ(driver.as<host::ListControl>("nodes").columnWidths(503),
            (std::vector<int>{100, 200, 100, 103}));
}

TEST_F(NodeRemovalPage, NamesItsControls) {
  open(FourNodes);
  const std::pair<int, const char*> texts[] = {
      {6582, "[38446]"}, {6584, "[380]"}, {6585, "[32055]"}, {1, "[36777]"}, {2, "[312]"}};
  for (const auto& [id, text] : texts) EXPECT_EQ(driver.text(id), text) << id;
  EXPECT_EQ(driver.control("remove").id(), 6584);
  EXPECT_EQ(driver.image("remove"), "REMOVE-16.png");
  EXPECT_EQ(driver.control("activation").id(), 6586);
}

TEST_F(NodeRemovalPage, ListsOnlyNodesThatCarryAReference) {
  open(R"(<Node nodeId="1"/><node nodeId="2" Reference="r"/><Node nodeId="3" Reference=""/>
          <Lamp nodeId="4" Reference="r"/><Node nodeId="5" latitude="1" longitude="2"/>)");
  EXPECT_EQ(driver.column("nodes", 0), Texts{"3"});
}

TEST_F(NodeRemovalPage, TheStampOfTheTableDoesNotChangeTheDate) {
  open(FourNodes, "Fh='20240331023000'");
  EXPECT_EQ(driver.text("activation"), Now);
}

TEST_F(NodeRemovalPage, RemovesTheSelectedNodesAndSendsThoseOnly) {
  open(FourNodes, R"(version="2" Fh="20240331023000" zone="n")");
  driver.select("nodes", {1, 3});
  driver.click("remove");
  EXPECT_EQ(driver.column("nodes", 0), (Texts{"1", "3"}));
  EXPECT_EQ(driver.selection("nodes"), Rows{0});
  EXPECT_EQ(driver.top(), TopKind::dialog) << "it asks nothing";
  driver.click("ok");
  expectSent(R"(<Node nodeId="2" colour="warm"><Lamp w="70"/></Node><Node nodeId="4"/>)",
             R"(version="2" ActDate="20250315100000W" zone="n")");
}

TEST_F(NodeRemovalPage, TheDeleteKeyRemovesAndOtherKeysDoNot) {
  open(FourNodes);
  driver.select("nodes", {0, 1, 2});
  driver.press("nodes", host::Key::insert);
  EXPECT_EQ(driver.rows("nodes").size(), 4U);
  driver.press("nodes", host::Key::deleteKey);
  EXPECT_EQ(driver.column("nodes", 0), Texts{"4"});
  driver.click("ok");
  expectSent(R"(<Node nodeId="1"/><Node nodeId="2" colour="warm"><Lamp w="70"/></Node>
                <Node nodeId="3"/>)");
}

TEST_F(NodeRemovalPage, WhatHasNoReferenceWhenItIsReadIsSentToo) {
  open(
      R"(<Node nodeId="1"/><Node nodeId="2" Reference="a"/><BlackList><Node Reference="b"/></BlackList>
          <Lamp nodeId="3" Reference="c"/><Node nodeId="4" Reference="d" latitude="1"/>)");
  driver.click("remove");
  driver.click("ok");
  expectSent(R"(<Node nodeId="1"/><Node nodeId="2"/><BlackList><Node Reference="b"/></BlackList>)");
}

TEST_F(NodeRemovalPage, WithoutANodeWithReferenceRemoveIsDisabledAndSaysWhy) {
  open(R"(<Node nodeId="1"/>)");
  EXPECT_FALSE(driver.enabled("remove"));
  EXPECT_EQ(disabledReason("remove"), "[60082]");
  EXPECT_FALSE(driver.tryClick("remove"));
  driver.press("nodes", host::Key::deleteKey);
  driver.click("ok");
  expectClosedWithoutSending();
}

TEST_F(NodeRemovalPage, AfterTheLastRowRemoveIsDisabled) {
  open(FourNodes);
  driver.select("nodes", {1, 2, 3});
  driver.click("remove");
  EXPECT_TRUE(driver.enabled("remove"));
  EXPECT_EQ(disabledReason("remove"), "");
  driver.click("remove");
  EXPECT_TRUE(driver.rows("nodes").empty());
  EXPECT_FALSE(driver.enabled("remove"));
  driver.click("ok");
  EXPECT_EQ(driver.result(), IDOK);
}

TEST_F(NodeRemovalPage, RemovingWithoutASelectionSelectsTheFirstRow) {
  open(FourNodes);
  driver.select("nodes", {});
  driver.click("remove");
  EXPECT_EQ(driver.rows("nodes").size(), 4U);
  EXPECT_EQ(driver.selection("nodes"), Rows{0});
  driver.click("ok");
  expectClosedWithoutSending();
}

TEST_F(NodeRemovalPage, RemovesWhatIsSelectedAlsoWhenTheListIsSorted) {
  open(FourNodes);
  driver.sort("nodes", 0);
  driver.sort("nodes", 0);
  driver.select("nodes", {0});
  driver.click("remove");
  EXPECT_EQ(driver.column("nodes", 0), (Texts{"1", "2", "3"}));
  driver.click("ok");
  expectSent(R"(<Node nodeId="4"/>)");
}

TEST_F(NodeRemovalPage, OkWithoutRemovalsSendsNothing) {
  open(FourNodes);
  driver.type("activation", "31/02/2024 00:00:00");
  driver.click("ok");
  expectClosedWithoutSending();
}

TEST_F(NodeRemovalPage, AnInvalidActivationDateIsRefused) {
  open(FourNodes);
  driver.click("remove");
  expectActivationDateIsChecked();
}

TEST_F(NodeRemovalPage, AFailedWriteKeepsThePageAndWhatWasRemoved) {
  open(FourNodes);
  driver.click("remove");
  expectFailedWriteKeepsThePage();
  EXPECT_XML_EQ("<deviceCfg><E08 ActDate='20250315100000W'><Node nodeId='1'/></E08></deviceCfg>",
                driver.channel().last().request);
}

TEST_F(NodeRemovalPage, AfterAFailedWriteTheListCanStillBeWorkedOn) {
  open(FourNodes);
  driver.click("remove");
  driver.channel().failWith("Locked.");
  driver.click("ok");
  driver.answer(host::MessageAnswer::cancel);
  EXPECT_EQ(driver.column("nodes", 0), (Texts{"2", "3", "4"}));
  driver.click("remove");
  driver.channel().forget();
  driver.click("ok");
  expectSent(R"(<Node nodeId="1"/><Node nodeId="2" colour="warm"><Lamp w="70"/></Node>)");
}

TEST_F(NodeRemovalPage, CancelDiscardsTheRemovals) {
  open(FourNodes);
  driver.click("remove");
  driver.click("cancel");
  EXPECT_EQ(driver.result(), IDCANCEL);
  expectNothingSent();
}

TEST_F(NodeRemovalPage, WithoutTheSectionNothingCanBeRemoved) {
  for (const char* reply : {"<deviceCfg/>", "<deviceCfg><ZelLamp/></deviceCfg>"}) {
    openReply(reply);
    EXPECT_TRUE(driver.rows("nodes").empty());
    EXPECT_FALSE(driver.enabled("remove"));
    driver.click("ok");
    expectClosedWithoutSending();
  }
  driver.channel().replyEmpty();
  driver.show<CDlgE08CfgZelLampManager>(&manager.driver, nullptr);
  EXPECT_FALSE(driver.enabled("remove"));
  driver.click("ok");
  EXPECT_EQ(driver.result(), IDOK);
}

TEST_F(NodeRemovalPage, WhatThePageDoesNotKnowGoesBackAsItCame) {
  for (const int size : RoundTripSizes) {
    SCOPED_TRACE(size);
    std::mt19937 random(static_cast<unsigned>(size) + 2);
    std::string read;
    std::string written;
    Rows removed;
    for (int i = 0; i < size; ++i) {
      const Unknown other = unknown(random);
      const std::string id = other.before + "nodeId=\"" + std::to_string(i) + "\"";
      read += "<Node" + id + " Reference=\"r\"" + other.after + "latitude=\"1\" longitude=\"2\">" +
              other.children + "</Node>";
      if (i % 2 != 0) continue;
      removed.push_back(static_cast<std::size_t>(i));
      written += "<Node" + id + other.after + ">" + other.children + "</Node>";
    }
    open(read, "a='1' b='2'");
    driver.click("ok");
    expectClosedWithoutSending();
    if (size == 0) continue;
    open(read, "a='1' b='2'");
    driver.select("nodes", removed);
    driver.click("remove");
    driver.click("ok");
    expectSent(written, std::string("a='1' b='2' ") + NowStamp);
    driver.channel().forget();
  }
}

TEST_F(NodeRemovalPage, FiftyThousandNodesAreRemovedAtOnce) {
  constexpr std::size_t Count = 50000;
  std::string read;
  for (std::size_t i = 0; i < Count; ++i)
    read += "<Node nodeId=\"" + std::to_string(i) + "\" Reference=\"r\" latitude=\"1\"/>";
  open(read + R"(<Node nodeId="kept" Reference="r"/>)");
  Rows all(Count);
  for (std::size_t i = 0; i < Count; ++i) all[i] = i;
  driver.select("nodes", all);
  driver.click("remove");
  EXPECT_EQ(driver.column("nodes", 0), Texts{"kept"});
  driver.click("ok");
  ASSERT_EQ(driver.result(), IDOK);
  const XmlDocument sent = support::parsedXml(driver.channel().last().request);
  EXPECT_EQ(sent.Root()->FirstChild()->ChildCount(), Count);
}

// --- what it edits

TEST_F(NodeRemovalPage, TheChangesAreTheValuesThatGo) {
  open(std::string(FourNodes) + R"(<Node nodeId="5" latitude="1"/>)");
  EXPECT_EQ(changesOn(driver.dialog()), Texts{});
  driver.select("nodes", {1, 2});
  driver.click("remove");
  EXPECT_EQ(changesOn(driver.dialog()),
            (Texts{"2 Reference [35538]:  -> null", "2 latitude [35861]: 41.50 -> null",
                   "2 longitude [35860]: 2.20 -> null", "3 Reference [35538]: Bridge 3 -> null"}));
}

TEST_F(NodeRemovalPage, TheDateIsAFaultOnceANodeIsRemoved) {
  open(FourNodes);
  driver.type("activation", "31/02/2024 00:00:00");
  EXPECT_EQ(faultsOn(driver.dialog()), Texts{});
  driver.click("remove");
  EXPECT_EQ(faultsOn(driver.dialog()), Texts{"null ActDate: [38408]"});
}

}  // namespace
