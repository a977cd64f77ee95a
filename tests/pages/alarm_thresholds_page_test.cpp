#include "pages/alarm_thresholds_page.h"

#include "tests/pages/section_page_test.h"
#include "tests/support/edited_page.h"

namespace {

using namespace pages_test;
using support::changesOn;
using support::faultsOn;
using support::TopKind;

// One row of each generation with every threshold, and one more of each that has less.
constexpr const char* FourRows = R"(
  <Node Id="1" vf="0.2.9" blinkActive="1" blinkTime="2" blinkTimes="3" blinkTotalTime="4"
        brokenActive="5" brokenTime="6" capacitorReactive="7" capacitorTime="8"/>
  <Node Id="2" vf="0.3.0" powerLamp="11" timeAlarm="12" percentageAlarm="13" factorPower="0.9"
        blinkTime="14" blinkTimes="15" colour="warm" Fh="20240101000000"><Lamp w="70"/></Node>
  <Lamp Id="3" blinkTime="2"/>
  <Lamp powerLamp="11" blinkActive="99" Id="4" vf="1"/>)";

constexpr const char* OldEdits[] = {"blinkActive",       "blinkTime",    "blinkTimes",
                                    "blinkTotalTime",    "brokenActive", "brokenTime",
                                    "capacitorReactive", "capacitorTime"};
constexpr const char* NewEdits[] = {"powerLamp",   "timeAlarm",    "percentageAlarm",
                                    "factorPower", "newBlinkTime", "newBlinkTimes"};

class AlarmThresholdsPage : public SectionPage<CDlgE07CfgZelLampManager> {
 protected:
  AlarmThresholdsPage() : SectionPage("L07", "E07") {}
};

TEST_F(AlarmThresholdsPage, ShowsEachGenerationInItsList) {
  open(FourRows);
  EXPECT_EQ(driver.title(), "[303] - Main street");
  EXPECT_EQ(driver.columns(6558),
            (Texts{"[24516]", "BlA", "BlT", "BlTs", "BlTT", "BrA", "BrT", "CR", "CT"}));
  EXPECT_EQ(driver.columns(6595), (Texts{"[24516]", "PL", "TA", "PA", "FP", "BlT", "BlTs"}));
  EXPECT_EQ(driver.rows("oldNodes"),
            (std::vector<Texts>{{"1", "1", "2", "3", "4", "5", "6", "7", "8"},
                                {"3", "", "2", "", "", "", "", "", ""}}));
  EXPECT_EQ(driver.rows("newNodes"), (std::vector<Texts>{{"2", "11", "12", "13", "0.9", "14", "15"},
                                                         {"4", "11", "", "", "", "", ""}}));
  EXPECT_EQ(driver.selection("oldNodes"), Rows{0});
  EXPECT_EQ(driver.selection("newNodes"), Rows{0});
  Texts shown;
  for (const char* edit : OldEdits) shown.push_back(driver.text(edit));
  for (const char* edit : NewEdits) shown.push_back(driver.text(edit));
  EXPECT_EQ(shown,
            (Texts{"1", "2", "3", "4", "5", "6", "7", "8", "11", "12", "13", "0.9", "14", "15"}));
}

TEST_F(AlarmThresholdsPage, CaptionsCarryTheirUnits) {
  open(FourRows);
  const std::pair<int, const char*> texts[] = {{6557, "[303]"},       {6609, "[38489] < 0.3.0"},
                                               {6577, "[38482]"},     {6561, "[38477] (W)"},
                                               {6562, "[38478] (s)"}, {6563, "[38479]"},
                                               {6564, "[38480] (s)"}, {6578, "[38483]"},
                                               {6565, "[38477] (W)"}, {6566, "[38441] (s)"},
                                               {6579, "[35481]"},     {6567, "[38481] (W)"},
                                               {6568, "[38442] (s)"}, {6608, "[38489] >= 0.3.0"},
                                               {6596, "[38439] (W)"}, {6597, "[38478] (s)"},
                                               {6598, "[38479]"},     {6599, "[38440] (s)"},
                                               {6600, "[38443]"},     {6601, "[133]"},
                                               {6559, "[32055]"},     {1, "[36777]"},
                                               {2, "[312]"}};
  for (const auto& [id, text] : texts) EXPECT_EQ(driver.text(id), text) << id;
  EXPECT_EQ(driver.control("activation").id(), 6560);
}

TEST_F(AlarmThresholdsPage, ColumnsShareTheWidthInTenthsAndEighths) {
  open(FourRows);
  EXPECT_EQ(driver.as<host::ListControl>("oldNodes").columnWidths(509),
            (std::vector<int>{100, 50, 50, 50, 50, 50, 50, 50, 59}));
  EXPECT_EQ(driver.as<host::ListControl>("newNodes").columnWidths(407),
            (std::vector<int>{100, 50, 50, 50, 50, 50, 57}));
}

TEST_F(AlarmThresholdsPage, TheFirmwareTellsTheGeneration) {
  const std::pair<const char*, bool> versions[] = {
      {"vf='0.2.9'", true},  {"vf='0.3.0'", false}, {"vf='0.3'", false}, {"vf='0.10.0'", false},
      {"vf='1'", false},     {"vf=''", true},       {"", true},          {"vf='0.3.1'", false},
      {"vf='0.2.99'", true}, {"vf='x'", true}};
  for (const auto& [version, old] : versions) {
    open("<Node Id='1' " + std::string(version) + "/>");
    EXPECT_EQ(driver.rows("oldNodes").size(), old ? 1U : 0U) << version;
    EXPECT_EQ(driver.rows("newNodes").size(), old ? 0U : 1U) << version;
    driver.closeAll();
  }
}

TEST_F(AlarmThresholdsPage, EveryNodeIsToldByItsOwnFirmwareWhateverStandsBeforeIt) {
  open(R"(<Node Id="1" vf="0.2.9"/><Node Id="2"/><Node Id="3" vf="0.3.0"/><Node Id="4"/>
          <Node Id="5" vf="x"/><Node vf="0.3.0" Id="6"/><Node Id="7" vf=""/><Node Id="8" vf="1"/>
          <Node Id="9" vf="0.2.9"/>)");
  const auto identities = [&](const char* list) {
    std::string all;
    for (const auto& row : driver.rows(list)) all += row.front();
    return all;
  };
  EXPECT_EQ(identities("oldNodes"), "124579");
  EXPECT_EQ(identities("newNodes"), "368");
}

TEST_F(AlarmThresholdsPage, WithoutOldNodesOnlyTheNewOnesAreVisible) {
  open(R"(<Node Id="1" vf="0.3.0"/>)");
  for (int id = 6561; id <= 6579; ++id) EXPECT_FALSE(driver.visible(id)) << id;
  for (const int id : {6558, 6609}) EXPECT_FALSE(driver.visible(id)) << id;
  for (const int id : {6557, 6595, 6608, 6559, 6560, 1, 2}) EXPECT_TRUE(driver.visible(id)) << id;
  for (int id = 6596; id <= 6607; ++id) EXPECT_TRUE(driver.visible(id)) << id;
  EXPECT_FALSE(driver.tryType("blinkActive", "1"));
}

bool arranges(const host::LayoutItem& item, int id) {
  return item.controlId == id ||
         std::any_of(item.items.begin(), item.items.end(),
                     [id](const host::LayoutItem& part) { return arranges(part, id); });
}

TEST_F(AlarmThresholdsPage, TheOldNodesStandInTheArrangementOnlyWhenThereAreSome) {
  open(R"(<Node Id="1" vf="0.3.0"/>)");
  EXPECT_FALSE(arranges(driver.dialog().Arrangement(), 6609));
  EXPECT_FALSE(arranges(driver.dialog().Arrangement(), 6569));
  EXPECT_TRUE(arranges(driver.dialog().Arrangement(), 6608));
  driver.closeAll();
  open(FourRows);
  for (const auto& control : driver.dialog().Controls())
    EXPECT_TRUE(arranges(driver.dialog().Arrangement(), control->id())) << control->name();
  for (const auto& control : driver.dialog().Controls())
    EXPECT_TRUE(control->isVisible()) << control->name();
}

TEST_F(AlarmThresholdsPage, WithoutNewNodesBothGroupsAreVisible) {
  open(R"(<Node Id="1"/>)");
  EXPECT_TRUE(driver.visible("oldNodes"));
  EXPECT_TRUE(driver.visible("newNodes"));
}

TEST_F(AlarmThresholdsPage, TheActivationDateStartsAtTheSectionsStamp) {
  expectActivationDateStartsAtTheStamp(FourRows);
}

TEST_F(AlarmThresholdsPage, SeveralSelectedRowsShowWhatTheyHaveInCommon) {
  open(FourRows);
  driver.select("newNodes", {0, 1});
  EXPECT_EQ(driver.text("powerLamp"), "11");
  EXPECT_EQ(driver.text("timeAlarm"), "");
  EXPECT_EQ(driver.text("blinkActive"), "1") << "the other list's edits stay";
  driver.select("oldNodes", {0, 1});
  EXPECT_EQ(driver.text("blinkTime"), "2");
  EXPECT_EQ(driver.text("blinkActive"), "");
  EXPECT_EQ(driver.text("newBlinkTime"), "") << "set by the new list alone";
  driver.select("oldNodes", {});
  EXPECT_EQ(driver.text("blinkTime"), "2");
  driver.click("ok");
  expectClosedWithoutSending();
}

TEST_F(AlarmThresholdsPage, EachEditSetsItsColumnInItsList) {
  open(FourRows);
  driver.select("oldNodes", {0, 1});
  driver.select("newNodes", {1});
  std::size_t column = 0;
  for (const char* edit : OldEdits) driver.type(edit, std::to_string(20 + ++column));
  column = 0;
  for (const char* edit : NewEdits) driver.type(edit, std::to_string(40 + ++column));
  EXPECT_EQ(driver.rows("oldNodes"),
            (std::vector<Texts>{{"1", "21", "22", "23", "24", "25", "26", "27", "28"},
                                {"3", "21", "22", "23", "24", "25", "26", "27", "28"}}));
  EXPECT_EQ(driver.rows("newNodes"),
            (std::vector<Texts>{{"2", "11", "12", "13", "0.9", "14", "15"},
                                {"4", "41", "42", "43", "44", "45", "46"}}));
  driver.click("ok");
  expectSent(R"(
    <Node nodeId="1" vf="0.2.9"><Alarms blinkActive="21" blinkTime="22" blinkTimes="23"
          blinkTotalTime="24" brokenActive="25" brokenTime="26" capacitorReactive="27"
          capacitorTime="28"/></Node>
    <Node nodeId="2" vf="0.3.0" colour="warm"><Lamp w="70"/><Alarms powerLamp="11" blinkTime="14"
          blinkTimes="15" timeAlarm="12" percentageAlarm="13" factorPower="0.9"/></Node>
    <Lamp nodeId="3"><Alarms blinkActive="21" blinkTime="22" blinkTimes="23" blinkTotalTime="24"
          brokenActive="25" brokenTime="26" capacitorReactive="27" capacitorTime="28"/></Lamp>
    <Lamp blinkActive="99" nodeId="4" vf="1"><Alarms powerLamp="41" blinkTime="45" blinkTimes="46"
          timeAlarm="42" percentageAlarm="43" factorPower="44"/></Lamp>)");
}

TEST_F(AlarmThresholdsPage, AThresholdThatANodeLacksGoesInEmpty) {
  open(R"(<Node Id="1" blinkTime="2" powerLamp="other generation"/>
          <Node Id="2" vf="0.3" blinkTime="3" brokenTime="other generation"/>)",
       R"(Fh="20240331023000" zone="n")");
  driver.type("newBlinkTime", "4");
  driver.click("ok");
  expectSent(R"(<Node nodeId="1" powerLamp="other generation"><Alarms blinkActive="" blinkTime="2"
          blinkTimes="" blinkTotalTime="" brokenActive="" brokenTime="" capacitorReactive=""
          capacitorTime=""/></Node>
      <Node nodeId="2" vf="0.3" brokenTime="other generation"><Alarms powerLamp="" blinkTime="4"
          blinkTimes="" timeAlarm="" percentageAlarm="" factorPower=""/></Node>)",
             R"(ActDate="20240331023000W" zone="n")");
}

TEST_F(AlarmThresholdsPage, EditsTakeEightDigitsAndThePowerFactorAnything) {
  open(FourRows);
  const auto expectDigits = [&](const char* edit) {
    driver.type(edit, "-1.2x3456789");
    EXPECT_EQ(driver.text(edit), "12345678") << edit;
  };
  for (const char* edit : OldEdits) expectDigits(edit);
  for (const char* edit : NewEdits)
    if (std::string(edit) != "factorPower") expectDigits(edit);
  driver.type("factorPower", "-0.95 abcd");
  EXPECT_EQ(driver.text("factorPower"), "-0.95 ab");
}

TEST_F(AlarmThresholdsPage, ValuesAreTheControllersToJudge) {
  open(FourRows);
  driver.type("powerLamp", "");
  driver.type("blinkTime", "99999999");
  driver.click("ok");
  EXPECT_EQ(driver.result(), IDOK);
  EXPECT_EQ(driver.channel().count(), 1U);
}

TEST_F(AlarmThresholdsPage, OkWithoutChangesSendsNothingAlsoWithAnotherDate) {
  open(FourRows);
  driver.type("activation", "31/02/2024 00:00:00");
  driver.click("ok");
  expectClosedWithoutSending();
}

TEST_F(AlarmThresholdsPage, AValueChangedBackCountsAsUnchanged) {
  open(FourRows);
  driver.type("powerLamp", "12");
  driver.type("powerLamp", "11");
  driver.click("ok");
  expectClosedWithoutSending();
}

TEST_F(AlarmThresholdsPage, AnInvalidActivationDateIsRefused) {
  open(FourRows);
  driver.type("powerLamp", "12");
  expectActivationDateIsChecked();
}

TEST_F(AlarmThresholdsPage, ANodeWithoutIdentityFailsTheWriteSilently) {
  open(R"(<Node Id="1" vf="1"/><Node vf="1"/>)");
  driver.type("powerLamp", "12");
  driver.click("ok");
  EXPECT_EQ(driver.top(), TopKind::dialog);
  expectNothingSent();
  EXPECT_EQ(driver.column("newNodes", 1), (Texts{"12", ""}));
}

TEST_F(AlarmThresholdsPage, WithoutTheSectionBothListsAreEmpty) {
  for (const char* reply : {"<deviceCfg/>", "<deviceCfg><ZelLamp/></deviceCfg>"}) {
    openReply(reply);
    EXPECT_FALSE(driver.visible("oldNodes"));
    EXPECT_TRUE(driver.rows("newNodes").empty());
    driver.type("powerLamp", "1");
    driver.click("ok");
    expectClosedWithoutSending();
  }
  driver.channel().replyEmpty();
  driver.show<CDlgE07CfgZelLampManager>(&manager.driver, nullptr);
  EXPECT_TRUE(driver.rows("newNodes").empty());
  driver.click("ok");
  EXPECT_EQ(driver.result(), IDOK);
}

TEST_F(AlarmThresholdsPage, AFailedWriteKeepsThePageAndASecondOkSucceeds) {
  open(FourRows);
  driver.type("capacitorTime", "80");
  expectFailedWriteKeepsThePage();
}

TEST_F(AlarmThresholdsPage, CancelDiscardsTheEntries) {
  open(FourRows);
  driver.type("powerLamp", "12");
  driver.click("cancel");
  EXPECT_EQ(driver.result(), IDCANCEL);
  expectNothingSent();
}

TEST_F(AlarmThresholdsPage, WhatThePageDoesNotKnowGoesBackAsItCame) {
  for (const int size : RoundTripSizes) {
    SCOPED_TRACE(size);
    std::mt19937 random(static_cast<unsigned>(size) + 5);
    std::string read;
    std::string written;
    for (int i = 0; i < size; ++i) {
      const Unknown other = unknown(random);
      const bool old = random() % 2 != 0;
      const std::string id = "Id=\"" + std::to_string(i) + "\" ";
      const std::string vf = old ? "vf=\"0.2\" brokenTime=\"b\" " : "vf=\"0.4\" powerLamp=\"p\" ";
      read += "<N" + other.before + id + vf + other.after + ">" + other.children + "</N>";
      written += "<N" + other.before + "nodeId=\"" + std::to_string(i) + "\" " +
                 (old ? "vf=\"0.2\"" : "vf=\"0.4\"") + other.after + ">" + other.children +
                 (old ? R"(<Alarms blinkActive="" blinkTime="7" blinkTimes="" blinkTotalTime=""
                           brokenActive="" brokenTime="b" capacitorReactive="" capacitorTime=""/>)"
                      : R"(<Alarms powerLamp="p" blinkTime="8" blinkTimes="" timeAlarm=""
                           percentageAlarm="" factorPower=""/>)") +
                 "</N>";
    }
    open(read, "a='1' b='2'");
    driver.click("ok");
    expectClosedWithoutSending();
    if (size == 0) continue;
    open(read, "a='1' b='2'");
    const auto setAll = [&](const char* list, const char* edit, const char* value) {
      Rows all(driver.rows(list).size());
      for (std::size_t row = 0; row < all.size(); ++row) all[row] = row;
      if (all.empty()) return;
      driver.select(list, all);
      driver.type(edit, value);
    };
    setAll("oldNodes", "blinkTime", "7");
    setAll("newNodes", "newBlinkTime", "8");
    driver.click("ok");
    expectSent(written, std::string("a='1' b='2' ") + NowStamp);
    driver.channel().forget();
  }
}

// --- what it edits

constexpr const char* Complete = R"(
  <Node Id="1" vf="0.2.9" blinkActive="1" blinkTime="2" blinkTimes="3" blinkTotalTime="4"
        brokenActive="5" brokenTime="6" capacitorReactive="7" capacitorTime="8"/>
  <Node Id="2" vf="0.3.0" powerLamp="11" timeAlarm="12" percentageAlarm="13" factorPower="0.9"
        blinkTime="14" blinkTimes="15"/>)";

TEST_F(AlarmThresholdsPage, EveryThresholdIsAChangeUnderItsCaptionAndFrame) {
  open(Complete);
  EXPECT_EQ(changesOn(driver.dialog()), Texts{});
  for (const char* edit : OldEdits) driver.type(edit, "20");
  for (const char* edit : NewEdits) driver.type(edit, "40");
  EXPECT_EQ(
      changesOn(driver.dialog()),
      (Texts{"1 blinkActive [38482]: [38477] (W): 1 -> 20",
             "1 blinkTime [38482]: [38478] (s): 2 -> 20", "1 blinkTimes [38482]: [38479]: 3 -> 20",
             "1 blinkTotalTime [38480] (s): 4 -> 20",
             "1 brokenActive [38483]: [38477] (W): 5 -> 20", "1 brokenTime [38441] (s): 6 -> 20",
             "1 capacitorReactive [38481] (W): 7 -> 20", "1 capacitorTime [38442] (s): 8 -> 20",
             "2 powerLamp [38439] (W): 11 -> 40", "2 timeAlarm [38440] (s): 12 -> 40",
             "2 percentageAlarm [38443]: 13 -> 40", "2 factorPower [133]: 0.9 -> 40",
             "2 blinkTime [38489] >= 0.3.0: [38478] (s): 14 -> 40",
             "2 blinkTimes [38489] >= 0.3.0: [38479]: 15 -> 40"}));
}

TEST_F(AlarmThresholdsPage, WhatTheWriteAddsIsAChangeToo) {
  open(std::string(Complete) +
       R"(<Node Id="3" vf="1" powerLamp="1" timeAlarm="2" factorPower="3" blinkTime="4"
                blinkTimes="5" brokenTime="other generation"/>)");
  EXPECT_EQ(changesOn(driver.dialog()), Texts{}) << "nothing is sent";
  driver.type("capacitorTime", "9");
  EXPECT_EQ(changesOn(driver.dialog()),
            (Texts{"1 capacitorTime [38442] (s): 8 -> 9", "3 percentageAlarm [38443]: null -> "}));
}

TEST_F(AlarmThresholdsPage, TheDateIsItsOnlyFault) {
  open(FourRows);
  driver.type("activation", "31/02/2024 00:00:00");
  EXPECT_EQ(faultsOn(driver.dialog()), Texts{}) << "there is nothing to send";
  driver.type("powerLamp", "");
  EXPECT_EQ(faultsOn(driver.dialog()), Texts{"null ActDate: [38408]"});
}

}  // namespace
