#include "pages/general_settings_page.h"

#include <gtest/gtest.h>

#include "tests/support/dialog_driver.h"
#include "tests/support/lamp_manager.h"
#include "tests/support/xml_compare.h"

namespace {

using support::TopKind;

constexpr const char* FullSection = R"(
  Fh="20240331023000" AccInacTimeout="10" AccSimulMax="4" IPNTP="10.0.0.1" NTPMaxDeviation="5"
  IPftp="10.0.0.2" FTPUser="reports" FTPPwd="clear" PathReports="/r" RetryFtp="3" TimeBetwFtp="60"
  FtpServer="Y" FtpsServer="N" mailHost="mail.example" mailUser="hidden" mailPassword="hidden"
  mainMail="a@example" destinationMail="b@example" Priority="Y" TimeSendReq="7" TimeDisconNode="8"
  RetryDisconNode="9" TimeRetryInterval="11" ValuesCheckDelay="12" MaxOrderOutdate="13"
  TimeDelayRestart="14" activeFilterTime="2" hourIni="1" hourEnd="25" name="Bridge"
  ReportFormat="1" viewNodes="N" TimeZone="0" unknown="kept by the controller")";

class GeneralSettingsPage : public testing::Test {
 protected:
  void open(const std::string& attributes = FullSection) {
    openReply("<deviceCfg><ZelLamp><L01 " + attributes + "/></ZelLamp></deviceCfg>");
  }
  void openReply(const std::string& reply) {
    driver.channel().replyWith(reply);
    driver.show<CDlgE01CfgZelLampManager>(&manager.driver, nullptr);
    ASSERT_EQ(driver.top(), TopKind::dialog);
    EXPECT_XML_EQ("<deviceCfg><L01/></deviceCfg>", driver.channel().last().request);
    driver.channel().forget();
  }
  void expectSent(const std::string& document) {
    ASSERT_EQ(driver.channel().count(), 1U);
    EXPECT_EQ(driver.channel().last().command, 2);
    EXPECT_XML_EQ(document, driver.channel().last().request);
  }

  support::LampManager manager;
  support::DialogDriver driver;
};

TEST_F(GeneralSettingsPage, ShowsEveryFieldOfTheSection) {
  open();
  const std::pair<const char*, const char*> texts[] = {{"AccInacTimeout", "10"},
                                                       {"AccSimulMax", "4"},
                                                       {"IPNTP", "10.0.0.1"},
                                                       {"NTPMaxDeviation", "5"},
                                                       {"IPftp", "10.0.0.2"},
                                                       {"FTPUser", "reports"},
                                                       {"FTPPwd", "clear"},
                                                       {"PathReports", "/r"},
                                                       {"RetryFtp", "3"},
                                                       {"TimeBetwFtp", "60"},
                                                       {"mailHost", "mail.example"},
                                                       {"mainMail", "a@example"},
                                                       {"destinationMail", "b@example"},
                                                       {"TimeSendReq", "7"},
                                                       {"TimeDisconNode", "8"},
                                                       {"RetryDisconNode", "9"},
                                                       {"TimeRetryInterval", "11"},
                                                       {"ValuesCheckDelay", "12"},
                                                       {"MaxOrderOutdate", "13"},
                                                       {"TimeDelayRestart", "14"},
                                                       {"hourIni", "1"},
                                                       {"hourEnd", "25"},
                                                       {"name", "Bridge"}};
  for (const auto& [name, text] : texts) EXPECT_EQ(driver.text(name), text) << name;
  const std::pair<const char*, const char*> choices[] = {{"FtpServer", "[35472]"},
                                                         {"FtpsServer", "[36454]"},
                                                         {"Priority", "[35472]"},
                                                         {"activeFilterTime", "[35460]"},
                                                         {"ReportFormat", "[38316]"},
                                                         {"viewNodes", "[36454]"},
                                                         {"TimeZone", "Madrid - París - Berlin"}};
  for (const auto& [name, text] : choices) EXPECT_EQ(driver.selectedItem(name), text) << name;
  EXPECT_EQ(driver.title(), "[32346]");
}

TEST_F(GeneralSettingsPage, NeverShowsTheMailAccountAndHidesItsTyping) {
  open();
  for (const char* name : {"mailUser", "mailPassword"}) {
    EXPECT_EQ(driver.text(name), "") << name;
    EXPECT_TRUE(driver.as<host::EditControl>(name).isPassword()) << name;
  }
  for (const char* name : {"FTPUser", "FTPPwd"})
    EXPECT_FALSE(driver.as<host::EditControl>(name).isPassword()) << name;
}

TEST_F(GeneralSettingsPage, OffersTheItemsOfEveryListInOrder) {
  open();
  using Items = std::vector<std::string>;
  const Items noYes = {"[36454]", "[35472]"};
  for (const char* name : {"FtpServer", "FtpsServer", "viewNodes"})
    EXPECT_EQ(driver.items(name), noYes) << name;
  EXPECT_EQ(driver.items("Priority"), (Items{"[37012]", "[35472]"}));
  EXPECT_EQ(driver.items("activeFilterTime"), (Items{"[36454]", "[35472]", "[35460]"}));
  EXPECT_EQ(driver.items("ReportFormat"), (Items{"[714]", "[38316]"}));
  EXPECT_EQ(driver.items("TimeZone"),
            (Items{"Madrid - París - Berlin", "Londres - Lisboa", "Atenas - Helsinki",
                   "Buenos Aires", "Brasil", "Colombia", "Centro América"}));
}

TEST_F(GeneralSettingsPage, LabelsAndUnitsStandBesideTheFields) {
  open();
  const std::pair<const char*, const char*> captions[] = {{"AccInacTimeoutLabel", "[38372]"},
                                                          {"AccInacTimeoutUnit", "[34979]"},
                                                          {"NTPMaxDeviationUnit", "[32232]"},
                                                          {"TimeBetwFtpUnit", "[32232]"},
                                                          {"TimeRetryIntervalUnit", "[32232]"},
                                                          {"ValuesCheckDelayUnit", "[32232]"},
                                                          {"MaxOrderOutdateUnit", "[32232]"},
                                                          {"TimeDelayRestartUnit", "[32232]"},
                                                          {"frame1", "[38342]"},
                                                          {"frame2", "[38343]"},
                                                          {"frame3", "[38344]"},
                                                          {"frame4", "[38345]"},
                                                          {"frame5", "[38346]"},
                                                          {"frame6", "[38347]"},
                                                          {"frame7", "[38348]"},
                                                          {"frame8", "[38349]"},
                                                          {"clockLabel", "[32055]"},
                                                          {"setClock", "[36777]"},
                                                          {"ok", "[311]"},
                                                          {"cancel", "[312]"}};
  for (const auto& [name, text] : captions) EXPECT_EQ(driver.text(name), text) << name;
}

TEST_F(GeneralSettingsPage, OkWithoutChangesSendsNothingAndCloses) {
  open();
  driver.click("ok");
  EXPECT_EQ(driver.result(), IDOK);
  EXPECT_EQ(driver.channel().count(), 0U);
  EXPECT_EQ(driver.cursorLog(), (std::vector{host::CursorShape::wait, host::CursorShape::arrow}));
}

TEST_F(GeneralSettingsPage, ChangingTheTimeZoneSendsItAlone) {
  open();
  driver.choose("TimeZone", "Brasil");
  driver.click("ok");
  expectSent(R"(<deviceCfg><E01 TimeZone="4"/></deviceCfg>)");
  EXPECT_EQ(driver.result(), IDOK);
}

TEST_F(GeneralSettingsPage, SeveralChangesGoInTheOrderOfTheSection) {
  open();
  driver.choose("TimeZone", "Colombia");
  driver.type("name", "Café \"<&>\"");
  driver.type("AccSimulMax", "");
  driver.choose("activeFilterTime", 0);
  driver.type("AccInacTimeout", "007");
  driver.click("ok");
  expectSent(R"(<deviceCfg><E01 AccInacTimeout="007" AccSimulMax="" activeFilterTime="0"
                name="Café &quot;&lt;&amp;&gt;&quot;" TimeZone="5"/></deviceCfg>)");
}

TEST_F(GeneralSettingsPage, AFieldChangedBackIsNotSent) {
  open();
  driver.type("name", "Other");
  driver.type("name", "Bridge");
  driver.choose("TimeZone", "Brasil");
  driver.choose("TimeZone", "Madrid - París - Berlin");
  driver.click("ok");
  EXPECT_EQ(driver.channel().count(), 0U);
  EXPECT_EQ(driver.result(), IDOK);
}

TEST_F(GeneralSettingsPage, TheMailAccountIsSentWheneverItIsTyped) {
  open();
  driver.type("mailUser", "hidden");  // what the controller holds already
  driver.click("ok");
  expectSent(R"(<deviceCfg><E01 mailUser="hidden"/></deviceCfg>)");
}

TEST_F(GeneralSettingsPage, AnEmptyMailAccountNeverClearsTheControllers) {
  open();
  driver.type("mailPassword", "x");
  driver.type("mailPassword", "");
  driver.click("ok");
  EXPECT_EQ(driver.channel().count(), 0U);
}

TEST_F(GeneralSettingsPage, ValuesOutsideAListSelectNothingAndAreNotSent) {
  open(R"(FtpServer="y" FtpsServer="" Priority="1" activeFilterTime="3" ReportFormat="Y"
          viewNodes="YY" TimeZone="7")");
  for (const char* name : {"FtpServer", "FtpsServer", "Priority", "activeFilterTime",
                           "ReportFormat", "viewNodes", "TimeZone"})
    EXPECT_EQ(driver.selectedIndex(name), std::nullopt) << name;
  driver.click("ok");
  EXPECT_EQ(driver.channel().count(), 0U);
}

TEST_F(GeneralSettingsPage, AnItemPickedOverAForeignValueIsSent) {
  open(R"(FtpServer="y")");
  driver.choose("FtpServer", 1);
  driver.click("ok");
  expectSent(R"(<deviceCfg><E01 FtpServer="Y"/></deviceCfg>)");
}

TEST_F(GeneralSettingsPage, DigitFieldsTakeDigitsOnly) {
  open();
  driver.type("hourIni", "-1a2.3");
  EXPECT_EQ(driver.text("hourIni"), "123");
  driver.type("IPNTP", "ntp.example");
  EXPECT_EQ(driver.text("IPNTP"), "ntp.example");
}

TEST_F(GeneralSettingsPage, WithoutTheSectionEveryFilledFieldIsSent) {
  openReply("<deviceCfg><ZelLamp/></deviceCfg>");
  EXPECT_EQ(driver.text("AccInacTimeout"), "");
  EXPECT_EQ(driver.selectedIndex("TimeZone"), std::nullopt);
  EXPECT_EQ(driver.items("TimeZone").size(), 7U) << "the lists are filled all the same";
  EXPECT_EQ(driver.text("clock"), "15/03/2025 10:00:00") << "the computer's time";
  driver.type("name", "New");
  driver.choose("viewNodes", 0);
  driver.click("ok");
  expectSent(R"(<deviceCfg><E01 name="New" viewNodes="N"/></deviceCfg>)");
}

TEST_F(GeneralSettingsPage, ARefusedWriteKeepsThePageAndItsEntries) {
  open();
  driver.type("name", "Other");
  driver.channel().failWith("The name is too long.");
  driver.click("ok");
  EXPECT_EQ(driver.message().text, "The name is too long.\r\n\r\n[329]");
  EXPECT_EQ(driver.message().buttons, host::MessageButtons::retryCancel);
  driver.answer(host::MessageAnswer::cancel);
  ASSERT_EQ(driver.top(), TopKind::dialog);
  EXPECT_EQ(driver.text("name"), "Other");
  driver.channel().forget();
  driver.click("ok");
  expectSent(R"(<deviceCfg><E01 name="Other"/></deviceCfg>)");
  EXPECT_EQ(driver.result(), IDOK);
}

TEST_F(GeneralSettingsPage, ARetriedWriteThatSucceedsClosesThePage) {
  open();
  driver.type("name", "Other");
  driver.channel().failWith("Busy.");
  driver.click("ok");
  driver.answer(host::MessageAnswer::retry);
  EXPECT_EQ(driver.result(), IDOK);
  EXPECT_EQ(driver.channel().count(), 2U);
}

TEST_F(GeneralSettingsPage, CancelSendsNothing) {
  open();
  driver.type("name", "Other");
  driver.click("cancel");
  EXPECT_EQ(driver.result(), IDCANCEL);
  EXPECT_EQ(driver.channel().count(), 0U);
}

struct ClockCase {
  const char* typed;
  const char* sent;
};

class ControllerClock : public GeneralSettingsPage,
                        public testing::WithParamInterface<ClockCase> {};

TEST_P(ControllerClock, IsSentWithTheSeasonOfTheEnteredMoment) {
  open();
  driver.type("clock", GetParam().typed);
  driver.click("setClock");
  ASSERT_EQ(driver.channel().count(), 1U);
  EXPECT_EQ(driver.channel().last().command, 9);
  EXPECT_XML_EQ(std::string("<deviceCfg><C06 date=\"") + GetParam().sent + "\"/></deviceCfg>",
                driver.channel().last().request);
  EXPECT_EQ(driver.top(), TopKind::dialog) << "the page stays open, without a message";
}

INSTANTIATE_TEST_SUITE_P(Seasons, ControllerClock,
                         testing::Values(ClockCase{"31/03/2024 02:30:00", "20240331023000W"},
                                         ClockCase{"31/03/2024 03:00:00", "20240331030000S"},
                                         ClockCase{"27/10/2024 01:59:59", "20241027015959S"},
                                         ClockCase{"27/10/2024 02:00:00", "20241027020000W"}));

TEST_F(GeneralSettingsPage, TheClockShowsTheControllersStamp) {
  open();
  EXPECT_EQ(driver.text("clock"), "31/03/2024 02:30:00");
  driver.click("setClock");
  EXPECT_XML_EQ(R"(<deviceCfg><C06 date="20240331023000W"/></deviceCfg>)",
                driver.channel().last().request);
}

TEST_F(GeneralSettingsPage, AShorterStampLeavesItsPiecesEmptyAndKeepsTheSeparators) {
  open(R"(Fh="202403310")");
  EXPECT_EQ(driver.text("clock"), "31/03/2024 0::");
  driver.click("setClock");
  EXPECT_EQ(driver.message().text, "[38408]");
}

TEST_F(GeneralSettingsPage, AnImpossibleClockIsRefusedAndNothingSent) {
  open();
  driver.type("clock", "31/02/2024 10:00:00");
  driver.click("setClock");
  ASSERT_EQ(driver.top(), TopKind::message);
  EXPECT_EQ(driver.message().text, "[38408]");
  driver.answer(host::MessageAnswer::ok);
  EXPECT_EQ(driver.focus(), "clock");
  EXPECT_EQ(driver.selectedCharacters("clock"), (std::pair<std::size_t, std::size_t>{0, 19}));
  EXPECT_EQ(driver.channel().count(), 0U);
}

TEST_F(GeneralSettingsPage, ARefusedClockIsShownOnceWithoutRetry) {
  open();
  driver.channel().failWith("Not now.");
  driver.click("setClock");
  EXPECT_EQ(driver.message().text, "Not now.\r\n\r\n[329]");
  EXPECT_EQ(driver.message().buttons, host::MessageButtons::ok);
  driver.answer(host::MessageAnswer::ok);
  EXPECT_EQ(driver.channel().count(), 1U);
  EXPECT_EQ(driver.top(), TopKind::dialog);
}

TEST_F(GeneralSettingsPage, TheClockIsIndependentOfOkAndCancel) {
  open();
  driver.click("setClock");
  driver.click("cancel");
  EXPECT_EQ(driver.channel().count(), 1U) << "the clock was set at once";
}

}  // namespace
