#include "pages/node_command_page.h"

#include "tests/pages/section_page_test.h"
#include "tests/support/edited_page.h"

namespace {

using namespace pages_test;
using support::changesOn;
using support::faultsOn;
using support::TopKind;

constexpr const char* ThreeNodes = R"(
  <Node nodeId="1" Reference="Bridge 1" latitude="41.50" longitude="2.10"/>
  <Node nodeId="2" zone="7" Reference="" latitude="41.50" longitude="2.20" colour="warm">
    <Lamp w="70"/></Node>
  <Node nodeId="3"/>)";

class NodeCommandPage : public SectionPage<CDlgE11CfgZelLampManager> {
 protected:
  NodeCommandPage() : SectionPage("L04", "E11") {}
};

TEST_F(NodeCommandPage, OpensWithAllNodesNoneSelectedAndOkDisabled) {
  open(ThreeNodes, "Fh='20240331023000'");
  EXPECT_EQ(driver.title(), "[38552] - Main street");
  EXPECT_EQ(driver.columns(6619), (Texts{"[24516]", "[35538]", "[35861]", "[35860]"}));
  EXPECT_EQ(driver.rows("nodes"), (std::vector<Texts>{{"1", "Bridge 1", "41.50", "2.10"},
                                                      {"2", "", "41.50", "2.20"},
                                                      {"3", "", "", ""}}));
  EXPECT_TRUE(driver.selection("nodes").empty());
  EXPECT_FALSE(driver.enabled("ok"));
  EXPECT_EQ(disabledReason("ok"), "[60081]");
  EXPECT_EQ(driver.text("activation"), Now);
  EXPECT_EQ(driver.as<host::ListControl>("nodes").columnWidths(503),
            (std::vector<int>{100, 200, 100, 103}));
}

TEST_F(NodeCommandPage, NamesItsControls) {
  open(ThreeNodes);
  const std::pair<int, const char*> texts[] = {
      {6618, "[38552]"}, {6627, "[38555]"}, {6621, "[32055]"}, {1, "[24544]"}, {2, "[312]"}};
  for (const auto& [id, text] : texts) EXPECT_EQ(driver.text(id), text) << id;
  EXPECT_EQ(driver.image("ok"), "OK-16.png");
  EXPECT_EQ(driver.control("activation").id(), 6622);
}

TEST_F(NodeCommandPage, OnlyChildrenTaggedNodeAreListed) {
  open(R"(<node nodeId="1"/><BlackList><Node nodeId="2"/></BlackList><Node nodeId="3"/>)");
  EXPECT_EQ(driver.column("nodes", 0), Texts{"3"});
}

TEST_F(NodeCommandPage, TheSelectionEnablesAndDisablesOk) {
  open(ThreeNodes);
  driver.select("nodes", {0, 2});
  EXPECT_TRUE(driver.enabled("ok"));
  EXPECT_EQ(disabledReason("ok"), "");
  driver.select("nodes", {});
  EXPECT_FALSE(driver.enabled("ok"));
  EXPECT_EQ(disabledReason("ok"), "[60081]");
  driver.press("nodes", host::Key::enter);
  EXPECT_EQ(driver.top(), TopKind::dialog) << "Enter does not press a disabled OK";
}

TEST_F(NodeCommandPage, NamesTheSelectedNodesByWhatIsNoDescription) {
  open(ThreeNodes, R"(version="2" Fh="20240331023000")");
  driver.select("nodes", {1, 2});
  driver.click("ok");
  expectSent(R"(<Node nodeId="2" zone="7" colour="warm"><Lamp w="70"/></Node><Node nodeId="3"/>)");
}

TEST_F(NodeCommandPage, NamesThemInTheOrderOfTheList) {
  open(ThreeNodes);
  driver.sort("nodes", 0);
  driver.sort("nodes", 0);
  driver.select("nodes", {0, 2});
  driver.click("ok");
  expectSent(R"(<Node nodeId="3"/><Node nodeId="1"/>)");
}

TEST_F(NodeCommandPage, WithoutASelectionNothingIsSentAndItCounts) {
  open(ThreeNodes);
  driver.perform([](host::UserInput&, XCBaseDlg& page) {
    page.PressOk();
    return host::Outcome{};
  });
  expectClosedWithoutSending();
}

TEST_F(NodeCommandPage, AnInvalidActivationDateIsRefused) {
  open(ThreeNodes);
  driver.select("nodes", {0});
  expectActivationDateIsChecked();
}

TEST_F(NodeCommandPage, AFailedWriteKeepsThePageAndItsSelection) {
  open(ThreeNodes);
  driver.select("nodes", {0, 1});
  driver.channel().failWith();
  driver.click("ok");
  EXPECT_EQ(driver.message().text, "[329]");
  driver.answer(host::MessageAnswer::cancel);
  EXPECT_EQ(driver.selection("nodes"), (Rows{0, 1}));
  EXPECT_EQ(driver.column("nodes", 1), (Texts{"Bridge 1", "", ""}));
  driver.channel().forget();
  driver.click("ok");
  expectSent(R"(<Node nodeId="1"/>
                <Node nodeId="2" zone="7" colour="warm"><Lamp w="70"/></Node>)");
}

TEST_F(NodeCommandPage, AWriteThatTheUserCancelledShowsNothing) {
  open(ThreeNodes);
  driver.select("nodes", {0});
  driver.channel().cancel();
  driver.click("ok");
  EXPECT_EQ(driver.top(), TopKind::dialog);
}

TEST_F(NodeCommandPage, CancelSendsNothing) {
  open(ThreeNodes);
  driver.select("nodes", {0});
  driver.click("cancel");
  EXPECT_EQ(driver.result(), IDCANCEL);
  expectNothingSent();
}

TEST_F(NodeCommandPage, WithoutTheSectionThereIsNothingToSelect) {
  openReply("<deviceCfg><ZelLamp/></deviceCfg>");
  EXPECT_TRUE(driver.rows("nodes").empty());
  EXPECT_FALSE(driver.enabled("ok"));
  driver.click("cancel");
  driver.channel().replyEmpty();
  driver.show<CDlgE11CfgZelLampManager>(&manager.driver, nullptr);
  EXPECT_FALSE(driver.enabled("ok"));
}

TEST_F(NodeCommandPage, WhatThePageDoesNotKnowGoesBackAsItCame) {
  for (const int size : RoundTripSizes) {
    SCOPED_TRACE(size);
    std::mt19937 random(static_cast<unsigned>(size) + 3);
    std::string read;
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
    open(read);
    if (size == 0) {
      EXPECT_FALSE(driver.enabled("ok"));
      driver.closeAll();
      continue;
    }
    driver.select("nodes", all);
    driver.click("ok");
    expectSent(written);
    driver.channel().forget();
  }
}

TEST_F(NodeCommandPage, TheChangesAreTheNodesThatItNames) {
  open(ThreeNodes);
  EXPECT_EQ(changesOn(driver.dialog()), Texts{});
  driver.type("activation", "31/02/2024 00:00:00");
  EXPECT_EQ(faultsOn(driver.dialog()), Texts{}) << "there is nothing to send";
  driver.select("nodes", {0, 2});
  EXPECT_EQ(changesOn(driver.dialog()),
            (Texts{"1 nodeId [24516]: null -> 1", "3 nodeId [24516]: null -> 3"}));
  EXPECT_EQ(faultsOn(driver.dialog()), Texts{"null ActDate: [38408]"});
  EXPECT_EQ(driver.selection("nodes"), (Rows{0, 2}));
  driver.select("nodes", {});
  EXPECT_EQ(changesOn(driver.dialog()), Texts{});
}

}  // namespace
