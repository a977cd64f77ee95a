#include "workbench/pages/page_changes.h"

#include "pages/general_settings_page.h"
#include "pages/node_power_page.h"
#include "pages/node_table_page.h"
#include "tests/pages/section_page_test.h"
#include "tests/support/edited_page.h"

namespace {

using namespace pages_test;

using support::changesOn;
using support::faultsOn;

class ChangesOfTheNodeTable : public SectionPage<CDlgE04CfgZelLampManager> {
 protected:
  ChangesOfTheNodeTable() : SectionPage("L04", "E04") {
    open(R"(<Node nodeId="1" Reference="A" latitude="1" longitude="2"/>
            <Extra/><Node nodeId="2" latitude="1" longitude="2"/>
            <Node nodeId="3" Reference="C" latitude="1" longitude="2"/>)");
  }
};

TEST_F(ChangesOfTheNodeTable, AreNoneWhereNothingWasTyped) {
  EXPECT_EQ(changesOn(driver.dialog()), Texts{});
  EXPECT_EQ(faultsOn(driver.dialog()), Texts{});
}

TEST_F(ChangesOfTheNodeTable, AreTheTypedValuesInTheOrderOfTheDocument) {
  driver.select("nodes", {0, 1});
  driver.type("reference", "Pier");
  driver.select("nodes", {0});
  driver.type("longitude", "9");
  EXPECT_EQ(changesOn(driver.dialog()),
            (Texts{"1 Reference [35538]: A -> Pier", "1 longitude [35860]: 2 -> 9",
                   "2 Reference [35538]: null -> Pier"}));
}

TEST_F(ChangesOfTheNodeTable, AreGoneWhenTheValueIsChangedBack) {
  driver.type("reference", "B");
  driver.type("reference", "A");
  EXPECT_EQ(changesOn(driver.dialog()), Texts{});
}

TEST_F(ChangesOfTheNodeTable, FaultsStandInTheOrderOfTheChecksWithTheirMessages) {
  driver.select("nodes", {0, 2});
  driver.type("latitude", "");
  driver.select("nodes", {0});
  driver.type("reference", "a<b");
  driver.select("nodes", {1, 2});
  EXPECT_EQ(faultsOn(driver.dialog()),
            (Texts{"1 Reference: [38657]", "1 latitude: [38408]", "3 latitude: [38408]"}));
  EXPECT_EQ(driver.selection("nodes"), (Rows{1, 2})) << "asking moves no selection";
}

class ChangesOfNodePower : public SectionPage<CDlgE05CfgZelLampManager> {
 protected:
  ChangesOfNodePower() : SectionPage("L05", "E05") {}
};

TEST_F(ChangesOfNodePower, HaveTheUnitInTheCaption) {
  open(R"(<Node Id="1" time="30" power="80"/>)");
  driver.type("power", "070");
  EXPECT_EQ(changesOn(driver.dialog()), (Texts{"1 power [24534] (%): 80 -> 070"}));
}

TEST_F(ChangesOfNodePower, TellWhatAnotherRowLacksAndTheWriteAdds) {
  open(R"(<Node Id="1" time="30" power="80"/><Node Id="2" power="5"/>)");
  EXPECT_EQ(changesOn(driver.dialog()), Texts{}) << "nothing is sent";
  driver.type("power", "70");
  EXPECT_EQ(changesOn(driver.dialog()),
            (Texts{"1 power [24534] (%): 80 -> 70", "2 time [666] ([34979]): null -> "}));
}

TEST_F(ChangesOfNodePower, TheDateIsAFaultOnlyWhileThereIsSomethingToSend) {
  open(R"(<Node Id="1" time="30" power="101"/>)");
  driver.type("activation", "31/02/2024 00:00:00");
  const std::string power = "1 power: [38265]([24534] (%),0,100)";
  EXPECT_EQ(faultsOn(driver.dialog()), Texts{power});
  driver.type("time", "31");
  EXPECT_EQ(faultsOn(driver.dialog()), (Texts{power, "null ActDate: [38408]"}));
}

class ChangesOfGeneralSettings : public SectionPage<CDlgE01CfgZelLampManager> {
 protected:
  ChangesOfGeneralSettings() : SectionPage("L01", "E01") {}
};

TEST_F(ChangesOfGeneralSettings, NameTheFrameWhereACaptionStandsTwiceAndMaskSecrets) {
  open("", R"(IPNTP="ntp" FTPPwd="old" TimeZone="0" mailUser="x" AccInacTimeout="5")");
  EXPECT_EQ(changesOn(driver.dialog()), Texts{});
  driver.type("IPNTP", "time.example");
  driver.type("FTPPwd", "new");
  driver.type("mailUser", "who");
  driver.type("AccInacTimeout", "6");
  driver.choose("TimeZone", "Brasil");
  EXPECT_EQ(changesOn(driver.dialog()),
            (Texts{"null AccInacTimeout [38372] ([34979]): 5 -> 6",
                   "null IPNTP [38343]: [371]: ntp -> time.example",
                   "null FTPPwd [38344]: [291]: *** -> ***",
                   "null mailUser [38345]: [900]: null -> ***", "null TimeZone [34358]: 0 -> 4"}));
}

TEST_F(ChangesOfGeneralSettings, WithoutTheSectionAreWhatWasTyped) {
  openReply("<deviceCfg/>");
  EXPECT_EQ(changesOn(driver.dialog()), Texts{});
  driver.type("name", "North");
  EXPECT_EQ(changesOn(driver.dialog()), (Texts{"null name [38406]: null -> North"}));
}

}  // namespace
