#include "device/communication_settings_dialog.h"

#include "tests/device/device_definition_fixture.h"

namespace device_test {
namespace {

const std::string General =
    "<reply><ZelLamp Id='LM-0001'><L01 ipCom='192.168.1.20' ipMask='255.255.255.0'"
    " ipGtw='192.168.1.1' ipDhcp='N' PrimaryDns='9.9.9.9' SecondaryDns='1.1.1.1'"
    " ipLoc='10.1.1.1' ipMaskLoc='255.0.0.0' PortWS='8080' Pse='5000' name='Depot'/></ZelLamp>"
    "</reply>";
const std::string NothingWritten = "<deviceCfg><E01/></deviceCfg>";

class CommunicationSettings : public testing::Test {
 protected:
  void open(const std::string& reply = General) {
    document = support::parsedXml(reply);
    driver.show<XCDlgAdvancedCfgZelLampManager>(nullptr, &document,
                                                XCBasicString(u"driver=Z&address=192.168.1.20"));
  }
  void expectMessage(const std::string& text, MessageButtons buttons,
                     MessageAnswer answer = MessageAnswer::ok) {
    ASSERT_EQ(driver.top(), TopKind::message) << "expected the message " << text;
    EXPECT_EQ(driver.message().text, text);
    EXPECT_EQ(driver.message().buttons, buttons);
    driver.answer(answer);
  }
  void expectSent(const std::string& xml) {
    ASSERT_EQ(driver.channel().count(), 1U);
    EXPECT_EQ(driver.channel().last().command, 2);
    EXPECT_EQ(driver.channel().last().kind, host::CommandKind::put);
    EXPECT_EQ(driver.channel().last().uri, "driver=Z&address=192.168.1.20");
    EXPECT_XML_EQ(xml, driver.channel().last().request);
    EXPECT_XML_EQ(xml, document);
  }

  XmlDocument document;
  support::DialogDriver driver;
};

TEST_F(CommunicationSettings, ShowsTheControllersSettings) {
  open();
  EXPECT_EQ(driver.title(), "[850]");
  const struct {
    int label;
    const char* caption;
    int control;
    const char* name;
    const char* text;
    host::ControlKind kind;
  } fields[] = {
      {6366, "[371]", 6367, "ipCom", "192.168.1.20", host::ControlKind::edit},
      {6368, "[861]", 6369, "ipMask", "255.255.255.0", host::ControlKind::ip},
      {6370, "[862]", 6371, "ipGtw", "192.168.1.1", host::ControlKind::edit},
      {6372, "[37046]", 6373, "ipDhcp", "", host::ControlKind::combo},
      {6374, "[35139]", 6375, "PrimaryDns", "9.9.9.9", host::ControlKind::edit},
      {6376, "[35140]", 6377, "SecondaryDns", "1.1.1.1", host::ControlKind::edit},
      {6378, "[38350]", 6379, "ipLoc", "10.1.1.1", host::ControlKind::edit},
      {6380, "[38351]", 6381, "ipMaskLoc", "255.0.0.0", host::ControlKind::edit},
      {6382, "[38352]", 6383, "PortWS", "8080", host::ControlKind::edit},
      {6384, "[37047]", 6385, "Pse", "5000", host::ControlKind::edit},
  };
  for (const auto& field : fields) {
    SCOPED_TRACE(field.name);
    EXPECT_EQ(driver.text(field.label), field.caption);
    EXPECT_EQ(driver.control(field.control).name(), field.name);
    EXPECT_EQ(driver.text(field.control), field.text);
    EXPECT_EQ(driver.control(field.control).kind(), field.kind);
    const bool shownOnly = field.control == 6379 || field.control == 6381 || field.control == 6385;
    EXPECT_EQ(driver.enabled(field.control), !shownOnly);
  }
  EXPECT_EQ(driver.text(6459), "[38342]");
  EXPECT_EQ(driver.items("ipDhcp"), (std::vector<std::string>{"[36454]", "[35472]"}));
  EXPECT_EQ(driver.selectedIndex("ipDhcp"), 0U);
  EXPECT_TRUE(driver.as<host::EditControl>("PortWS").isDigitsOnly());
  EXPECT_TRUE(driver.as<host::EditControl>("Pse").isDigitsOnly());
  EXPECT_EQ(driver.image("ok"), "OK-16.png");
  EXPECT_EQ(driver.image("cancel"), "CANCEL-16.png");
  expectAllArranged(driver.dialog());
  EXPECT_EQ(driver.channel().count(), 0U) << "the caller has read the section";
}

TEST_F(CommunicationSettings, DhcpChoosesAnEntryForExactlyYAndN) {
  const struct {
    const char* value;
    std::optional<std::size_t> entry;
  } cases[] = {{"N", 0U}, {"Y", 1U}, {"1", {}}, {"y", {}}, {"n", {}}, {"", {}}, {"YY", {}}};
  for (const auto& one : cases) {
    open("<r><ZelLamp><L01 ipDhcp='" + std::string(one.value) + "'/></ZelLamp></r>");
    EXPECT_EQ(driver.selectedIndex("ipDhcp"), one.entry) << one.value;
    driver.click("cancel");
  }
}

TEST_F(CommunicationSettings, AReplyWithoutTheSectionShowsEmptyFieldsAndBothEntries) {
  for (const char* reply : {"<r/>", "<r><ZelLamp/></r>", "<r><ZelLamp><L02/></ZelLamp></r>"}) {
    open(reply);
    EXPECT_EQ(driver.text("ipCom"), "");
    EXPECT_EQ(driver.text("ipMask"), "");
    EXPECT_EQ(driver.selectedIndex("ipDhcp"), std::nullopt);
    EXPECT_EQ(driver.items("ipDhcp").size(), 2U);
    driver.click("cancel");
  }
}

TEST_F(CommunicationSettings, OkWithoutChangesSendsNothingAndLeavesAnElementWithoutAttributes) {
  open();
  driver.click("ok");
  EXPECT_EQ(driver.result(), IDOK);
  EXPECT_EQ(driver.channel().count(), 0U);
  EXPECT_XML_EQ(NothingWritten, document);
}

TEST_F(CommunicationSettings, AFieldChangedAndChangedBackIsNotSent) {
  open();
  driver.type("ipGtw", "10.0.0.1");
  driver.type("ipGtw", "192.168.1.1");
  driver.type("ipMask", "255.0.0.0");
  driver.type("ipMask", "255.255.255.0");
  driver.choose("ipDhcp", 1);
  driver.choose("ipDhcp", 0);
  driver.click("ok");
  EXPECT_EQ(driver.result(), IDOK);
  EXPECT_EQ(driver.channel().count(), 0U);
}

TEST_F(CommunicationSettings, AClearedMaskIsSentAsAllZeros) {
  open();
  driver.type("ipMask", "");
  EXPECT_EQ(driver.text("ipMask"), "0.0.0.0");
  driver.click("ok");
  EXPECT_XML_EQ("<deviceCfg><E01 ipMask='0.0.0.0'/></deviceCfg>", driver.channel().last().request);
}

TEST_F(CommunicationSettings, EachChangedFieldIsSentAlone) {
  const struct {
    const char* field;
    const char* text;
    const char* sent;
  } cases[] = {
      {"ipCom", "lamp.example.org", "<deviceCfg><E01 ipCom='lamp.example.org'/></deviceCfg>"},
      {"ipMask", "255.255.0.0", "<deviceCfg><E01 ipMask='255.255.0.0'/></deviceCfg>"},
      {"ipGtw", "fe80::1", "<deviceCfg><E01 ipGtw='fe80::1'/></deviceCfg>"},
      {"PrimaryDns", "<a> & \"b\"",
       "<deviceCfg><E01 PrimaryDns='&lt;a&gt; &amp; \"b\"'/></deviceCfg>"},
      {"SecondaryDns", " ", "<deviceCfg><E01 SecondaryDns=' '/></deviceCfg>"},
      {"PortWS", "0080", "<deviceCfg><E01 PortWS='0080'/></deviceCfg>"}};
  for (const auto& one : cases) {
    SCOPED_TRACE(one.field);
    driver.channel().forget();
    open();
    driver.type(one.field, one.text);
    driver.click("ok");
    EXPECT_EQ(driver.result(), IDOK);
    expectSent(one.sent);
  }
}

TEST_F(CommunicationSettings, AllChangesAreSentInTheirOrder) {
  open();
  driver.type("PortWS", "81");
  driver.type("SecondaryDns", "6.6.6.6");
  driver.type("PrimaryDns", "5.5.5.5");
  driver.choose("ipDhcp", 1);
  driver.type("ipGtw", "4.4.4.4");
  driver.type("ipMask", "3.3.3.3");
  driver.type("ipCom", "2.2.2.2");
  driver.click("ok");
  EXPECT_EQ(driver.result(), IDOK);
  expectSent(
      "<deviceCfg><E01 ipCom='2.2.2.2' ipMask='3.3.3.3' ipGtw='4.4.4.4' ipDhcp='Y'"
      " PrimaryDns='5.5.5.5' SecondaryDns='6.6.6.6' PortWS='81'/></deviceCfg>");
  EXPECT_EQ(driver.cursorLog(), (std::vector{host::CursorShape::wait, host::CursorShape::arrow}));
}

TEST_F(CommunicationSettings, DhcpIsNotSentWithoutAChosenEntry) {
  open(
      "<r><ZelLamp><L01 ipCom='1' ipGtw='1' ipDhcp='1' PrimaryDns='1' SecondaryDns='1'"
      " PortWS='1'/></ZelLamp></r>");
  driver.type("ipCom", "2");
  driver.click("ok");
  EXPECT_EQ(driver.result(), IDOK);
  expectSent("<deviceCfg><E01 ipCom='2'/></deviceCfg>");
}

TEST_F(CommunicationSettings, DhcpIsSentOnceAnEntryIsChosen) {
  open(
      "<r><ZelLamp><L01 ipCom='1' ipGtw='1' ipDhcp='1' PrimaryDns='1' SecondaryDns='1'"
      " PortWS='1'/></ZelLamp></r>");
  driver.choose("ipDhcp", 0);
  driver.click("ok");
  expectSent("<deviceCfg><E01 ipDhcp='N'/></deviceCfg>");
}

TEST_F(CommunicationSettings, TheFirstEmptyRequiredFieldIsToldAndFocused) {
  open();
  const char* required[] = {"ipCom", "ipGtw", "PrimaryDns", "SecondaryDns", "PortWS"};
  for (const char* field : required) driver.type(field, "");
  for (const char* field : required) {
    driver.click("ok");
    expectMessage("[38408]", MessageButtons::ok);
    EXPECT_EQ(driver.focus(), field);
    EXPECT_EQ(driver.result(), std::nullopt);
    driver.type(field, "7");
  }
  EXPECT_EQ(driver.channel().count(), 0U);
  EXPECT_XML_EQ(General, document) << "nothing is prepared before all is filled";
  driver.click("ok");
  EXPECT_EQ(driver.result(), IDOK);
}

TEST_F(CommunicationSettings, MaskAndDhcpMayBeEmptyAndNothingIsCheckedForItsForm) {
  open(
      "<r><ZelLamp><L01 ipCom='x' ipGtw='y' PrimaryDns='z' SecondaryDns='-' PortWS='1'/>"
      "</ZelLamp></r>");
  driver.type("PortWS", "99999999");
  driver.click("ok");
  EXPECT_EQ(driver.result(), IDOK);
  expectSent("<deviceCfg><E01 PortWS='99999999'/></deviceCfg>");
}

TEST_F(CommunicationSettings, AFailedWriteIsRetriedUntilItSucceeds) {
  open();
  driver.type("PortWS", "81");
  driver.channel().failWith("refused");
  driver.channel().failWith("");
  driver.click("ok");
  expectMessage("refused\r\n\r\n[329]", MessageButtons::retryCancel, MessageAnswer::retry);
  expectMessage("[329]", MessageButtons::retryCancel, MessageAnswer::retry);
  EXPECT_EQ(driver.result(), IDOK);
  ASSERT_EQ(driver.channel().count(), 3U);
  for (const auto& exchange : driver.channel().exchanges()) {
    EXPECT_EQ(exchange.command, 2);
    EXPECT_XML_EQ("<deviceCfg><E01 PortWS='81'/></deviceCfg>", exchange.request);
  }
}

TEST_F(CommunicationSettings, AWriteGivenUpKeepsTheDialogOpenWithItsEntries) {
  open();
  driver.type("PortWS", "81");
  driver.type("ipGtw", "10.0.0.1");
  driver.channel().failWith("refused");
  driver.click("ok");
  expectMessage("refused\r\n\r\n[329]", MessageButtons::retryCancel, MessageAnswer::cancel);
  EXPECT_EQ(driver.result(), std::nullopt);
  EXPECT_EQ(driver.text("PortWS"), "81");
  driver.type("ipGtw", "192.168.1.1");
  driver.channel().forget();
  driver.click("ok");
  EXPECT_EQ(driver.result(), IDOK);
  expectSent("<deviceCfg><E01 PortWS='81'/></deviceCfg>");
}

TEST_F(CommunicationSettings, ACancelledWriteShowsNothingAndStaysOpen) {
  open();
  driver.type("PortWS", "81");
  driver.channel().cancel();
  driver.click("ok");
  EXPECT_EQ(driver.top(), TopKind::dialog);
  EXPECT_EQ(driver.result(), std::nullopt);
}

TEST_F(CommunicationSettings, CancelLeavesTheDocumentAlone) {
  open();
  driver.type("PortWS", "81");
  driver.click("cancel");
  EXPECT_EQ(driver.result(), IDCANCEL);
  EXPECT_EQ(driver.channel().count(), 0U);
  EXPECT_XML_EQ(General, document);
}

// --- as the device definition opens it

class SettingsOfADevice : public DeviceDefinition {
 protected:
  void openSettings() {
    driver.channel().replyWith(General);
    driver.click("advanced");
    ASSERT_EQ(driver.dialog().ClassName(), "XCDlgAdvancedCfgZelLampManager");
  }
};

TEST_F(SettingsOfADevice, AreReadFromTheAddressAsTypedAndWrittenThereToo) {
  openExisting();
  driver.type("address", "192.168.1.99");
  openSettings();
  EXPECT_EQ(commands(), std::vector{1});
  EXPECT_XML_EQ("<advancedCfg><L01/></advancedCfg>", driver.channel().last().request);
  EXPECT_EQ(driver.channel().last().parameter("address"), "192.168.1.99");
  driver.type("ipGtw", "10.0.0.1");
  driver.click("ok");
  ASSERT_EQ(commands(), (std::vector{1, 2}));
  EXPECT_EQ(driver.channel().exchanges()[0].uri, driver.channel().exchanges()[1].uri);
  EXPECT_EQ(driver.channel().last().parameters.size(), 9U);
}

TEST_F(SettingsOfADevice, AReadThatFailsIsToldAndOpensNothing) {
  openExisting();
  driver.channel().failWith("no answer");
  driver.click("advanced");
  expectMessage("no answer");
  expectOpen();
  driver.channel().failWith("");
  driver.click("advanced");
  expectMessage("[330]");
  expectOpen();
  driver.channel().cancel();
  driver.click("advanced");
  expectOpen();
  EXPECT_EQ(driver.dialog().ClassName(), "XCDlgNewModifyZelLampManager");
  driver.click("cancel");
  expectClosed(IDCANCEL);
}

TEST_F(SettingsOfADevice, ANewAddressAndPortReachTheEditsAndTheElement) {
  openExisting();
  openSettings();
  driver.type("ipCom", "10.9.9.9");
  driver.type("PortWS", "81");
  driver.click("ok");
  EXPECT_EQ(driver.text("address"), "10.9.9.9");
  EXPECT_EQ(driver.text("socket"), "81");
  EXPECT_TRUE(device().Value("address") == u"10.9.9.9");
  EXPECT_TRUE(device().Value("socket") == u"81");
  driver.click("cancel");
  expectClosed(IDOK);
}

TEST_F(SettingsOfADevice, OnlyWhatWasSentIsTakenOver) {
  openExisting();
  type({{"address", "192.168.1.99"}, {"socket", "99"}});
  openSettings();
  driver.type("PortWS", "81");
  driver.click("ok");
  EXPECT_EQ(driver.text("address"), "192.168.1.99") << "typed, and not sent";
  EXPECT_TRUE(device().Value("address") == u"192.168.1.20");
  EXPECT_EQ(driver.text("socket"), "81");
  EXPECT_TRUE(device().Value("socket") == u"81");
}

TEST_F(SettingsOfADevice, ConfirmedWithoutChangesTheyTakeNothingOverButCancelThenSaves) {
  openExisting();
  const std::string before = support::compactXml(device());
  openSettings();
  driver.click("ok");
  expectOpen();
  EXPECT_EQ(support::compactXml(device()), before);
  driver.close();
  expectClosed(IDOK);
}

TEST_F(SettingsOfADevice, CancelledTheyLeaveCancelACancel) {
  openExisting();
  openSettings();
  driver.type("ipCom", "10.9.9.9");
  driver.click("cancel");
  EXPECT_EQ(driver.text("address"), "192.168.1.20");
  driver.click("cancel");
  expectClosed(IDCANCEL);
}

TEST_F(SettingsOfADevice, AWriteGivenUpAndThenCancelledTakesNothingOver) {
  openExisting();
  const std::string before = support::compactXml(device());
  openSettings();
  driver.type("ipCom", "10.9.9.9");
  driver.channel().failWith("refused");
  driver.click("ok");
  expectMessage("refused\r\n\r\n[329]", MessageAnswer::cancel);
  driver.click("cancel");
  EXPECT_EQ(driver.text("address"), "192.168.1.20");
  EXPECT_EQ(support::compactXml(device()), before);
}

TEST_F(SettingsOfADevice, ADeviceNotYetSavedStaysUnsavedOnCancel) {
  openNew();
  typeNewDevice();
  driver.channel().replyWith(Identification);
  openSettings();
  driver.type("ipCom", "10.9.9.9");
  driver.click("ok");
  EXPECT_TRUE(device().Value("address") == u"10.9.9.9");
  driver.click("cancel");
  expectClosed(IDCANCEL);
}

TEST_F(SettingsOfADevice, AnAppliedAddressIsNoChangeAnyMore) {
  giveChildDevices();
  verifyEverything();
  openExisting();
  openSettings();
  driver.type("ipCom", "10.9.9.9");
  driver.click("ok");
  driver.channel().forget();
  driver.click("ok");
  expectClosed(IDCANCEL);
  EXPECT_EQ(driver.channel().count(), 0U);
  EXPECT_TRUE(device().Value("address") == u"10.9.9.9") << "the host saves what differs";
}

TEST_F(SettingsOfADevice, AnAddressBeyondTheEditsLimitIsCutThere) {
  openExisting();
  openSettings();
  driver.type("ipCom", std::string(70, 'a'));
  driver.click("ok");
  EXPECT_EQ(driver.text("address"), std::string(64, 'a'));
  EXPECT_EQ(device().Value("address").ToUtf8(), std::string(70, 'a'));
}

}  // namespace
}  // namespace device_test
