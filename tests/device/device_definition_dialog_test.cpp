#include "device/device_definition_dialog.h"

#include "host/dialogs/extension_module.h"
#include "tests/device/device_definition_fixture.h"

namespace device_test {
namespace {

TEST_F(DeviceDefinition, ShowsTheDevice) {
  openExisting();
  EXPECT_EQ(driver.title(), "[531](Lamp manager)");
  EXPECT_EQ(driver.text("name"), "Main street");
  EXPECT_EQ(driver.text("description"), "From the bridge to the park");
  EXPECT_EQ(driver.text("identifier"), "LM-0001");
  EXPECT_EQ(driver.text("address"), "192.168.1.20");
  EXPECT_EQ(driver.text("socket"), "8080");
  EXPECT_EQ(driver.text("ftpAddress"), "192.168.1.2");
  EXPECT_EQ(driver.text("ftpPort"), "21");
  EXPECT_EQ(driver.text("ftpUser"), "lamps");
  EXPECT_EQ(driver.text("ftpPassword"), "secret");
  EXPECT_EQ(driver.focus(), "name");
}

TEST_F(DeviceDefinition, ANewDeviceStartsWithTheDefaultPorts) {
  openNew();
  EXPECT_EQ(driver.title(), "[530](Lamp manager)");
  for (const char* empty :
       {"name", "description", "identifier", "address", "ftpAddress", "ftpUser", "ftpPassword"})
    EXPECT_EQ(driver.text(empty), "") << empty;
  EXPECT_EQ(driver.text("socket"), "8080");
  EXPECT_EQ(driver.text("ftpPort"), "21");
}

TEST_F(DeviceDefinition, APortThatIsPresentButEmptyShowsAsItIs) {
  manager.element()->SetValue("socket", u"");
  manager.element()->SetValue("ftpPort", u"");
  openExisting();
  EXPECT_EQ(driver.text("socket"), "");
  EXPECT_EQ(driver.text("ftpPort"), "");
}

TEST_F(DeviceDefinition, TheTitleOfAnUnknownDriverIsItsTypeAndAtMost1024Characters) {
  manager.element()->SetValue("driver", std::u16string(2000, u'x'));
  openExisting();
  EXPECT_EQ(driver.title(), "[531](" + std::string(1024 - 6, 'x'));
}

TEST_F(DeviceDefinition, EveryControlHasItsNumberTextAndImage) {
  openExisting();
  const struct {
    int id;
    const char* name;
    const char* text;
  } labels[] = {{6306, "nameLabel", "[355]"},
                {6312, "descriptionLabel", "[284]"},
                {6339, "identifierLabel", "[24516]"},
                {6309, "addressLabel", "[371]"},
                {6310, "socketLabel", "[370]"},
                {6344, "ftpAddressLabel", "[371]"},
                {6355, "ftpPortLabel", "[370]"},
                {6345, "ftpUserLabel", "[38280]"},
                {6347, "ftpPasswordLabel", "[291]"},
                {6356, "ftpGroup", "[38344]"},
                {6328, "advanced", "[850]"},
                {1, "ok", "[311]"},
                {2, "cancel", "[312]"}};
  for (const auto& label : labels) {
    EXPECT_EQ(driver.control(label.id).name(), label.name);
    EXPECT_EQ(driver.text(label.id), label.text) << label.name;
  }
  EXPECT_EQ(driver.image("advanced"), "OPTIONS-16.png");
  EXPECT_EQ(driver.image("ok"), "OK-16.png");
  EXPECT_EQ(driver.image("cancel"), "CANCEL-16.png");
  const struct {
    int id;
    const char* name;
    int limit;
  } edits[] = {{6307, "name", 64},    {6313, "description", 128}, {6340, "identifier", 16},
               {6308, "address", 64}, {6311, "socket", 5},        {6343, "ftpAddress", 64},
               {6354, "ftpPort", 5},  {6346, "ftpUser", 64},      {6348, "ftpPassword", 64}};
  for (const auto& edit : edits) {
    EXPECT_EQ(driver.control(edit.id).name(), edit.name);
    const auto& control = driver.as<host::EditControl>(edit.id);
    EXPECT_EQ(control.limit(), edit.limit) << edit.name;
    EXPECT_EQ(control.isDigitsOnly(), edit.limit == 5) << edit.name;
    EXPECT_EQ(control.isPassword(), edit.id == 6348) << edit.name;
  }
}

TEST_F(DeviceDefinition, EveryControlStandsInTheArrangement) {
  expectAllArranged(openExisting());
}

TEST_F(DeviceDefinition, TypingStopsAtTheLimitsAndPortsTakeDigitsOnly) {
  openExisting();
  driver.type("description", std::string(200, 'd'));
  EXPECT_EQ(driver.text("description").size(), 128U);
  driver.type("socket", "a8b0c80901");
  EXPECT_EQ(driver.text("socket"), "80809");
  driver.type("ftpPort", "-21");
  EXPECT_EQ(driver.text("ftpPort"), "21");
}

TEST_F(DeviceDefinition, WhatTheElementHoldsIsCutAtTheLimitOfItsEdit) {
  manager.element()->SetValue("description", std::u16string(200, u'd'));
  manager.element()->SetValue("socket", u"123456");
  // The 16th and the 17th unit are one character: it goes as a whole.
  manager.element()->SetValue("identifier", u"123456789012345\U0001F6A6");
  openExisting();
  EXPECT_EQ(driver.text("description"), std::string(128, 'd'));
  EXPECT_EQ(driver.text("socket"), "12345");
  EXPECT_EQ(driver.text("identifier"), "123456789012345");
}

// --- OK without verification

TEST_F(DeviceDefinition, OkWritesAllNineValuesOfANewDeviceInTheirOrder) {
  openNew();
  type({{"name", "Harbour"},
        {"description", "East"},
        {"identifier", "LM-7"},
        {"address", "10.0.0.7"},
        {"socket", "00080"},
        {"ftpAddress", "ftp.example.org"},
        {"ftpPort", "2121"},
        {"ftpUser", "lamps"},
        {"ftpPassword", "p&ss <w\"rd>"}});
  driver.click("ok");
  expectClosed(IDOK);
  EXPECT_XML_EQ(
      "<device><id>{D2}</id><driver>ZELLAMPMANAGER</driver><type>ZELLAMPMANAGER</type>"
      "<name>Harbour</name><description>East</description><identifier>LM-7</identifier>"
      "<address>10.0.0.7</address><socket>00080</socket><ftpAddress>ftp.example.org</ftpAddress>"
      "<ftpPort>2121</ftpPort><ftpUser>lamps</ftpUser>"
      "<ftpPassword>p&amp;ss &lt;w\"rd&gt;</ftpPassword></device>",
      device());
  EXPECT_EQ(driver.channel().count(), 0U);
}

TEST_F(DeviceDefinition, UnknownChildrenOfTheDeviceStayAndAttributesToo) {
  manager.element()->NewChild("location", u"pole 7").setAttribute("unit", u"m");
  manager.element()->setAttribute("mark", u"1");
  openExisting();
  driver.type("name", "Main");
  driver.click("ok");
  expectClosed(IDOK);
  EXPECT_XML_EQ(
      "<device mark='1'><id>{D1}</id><driver>ZELLAMPMANAGER</driver><type>ZELLAMPMANAGER</type>"
      "<name>Main</name><description>From the bridge to the park</description>"
      "<identifier>LM-0001</identifier><address>192.168.1.20</address><socket>8080</socket>"
      "<ftpAddress>192.168.1.2</ftpAddress><ftpPort>21</ftpPort><ftpUser>lamps</ftpUser>"
      "<ftpPassword>secret</ftpPassword><location unit='m'>pole 7</location></device>",
      device());
}

TEST_F(DeviceDefinition, OkWithNothingChangedClosesWithCancel) {
  openExisting();
  const std::string before = support::compactXml(device());
  driver.click("ok");
  expectClosed(IDCANCEL);
  EXPECT_EQ(support::compactXml(device()), before);
}

TEST_F(DeviceDefinition, AValueChangedAndChangedBackIsNoChange) {
  openExisting();
  for (const char* field : {"name", "description", "identifier", "address", "socket", "ftpAddress",
                            "ftpPort", "ftpUser", "ftpPassword"}) {
    const std::string before = driver.text(field);
    driver.type(field, "5");
    driver.type(field, before);
  }
  driver.click("ok");
  expectClosed(IDCANCEL);
}

TEST_F(DeviceDefinition, EachFieldAloneCountsAsAChange) {
  for (const char* field : {"name", "description", "identifier", "address", "socket", "ftpAddress",
                            "ftpPort", "ftpUser", "ftpPassword"}) {
    openExisting();
    driver.type(field, "77");
    driver.click("ok");
    expectClosed(IDOK);
    EXPECT_TRUE(device().Value(field) == u"77") << field;
  }
}

TEST_F(DeviceDefinition, ADefaultPortThatTheElementLacksIsAChange) {
  auto& element = *manager.element();
  element.RemoveChild(element.Node("ftpPort"));
  openExisting();
  driver.click("ok");
  expectClosed(IDOK);
  EXPECT_TRUE(device().Value("ftpPort") == u"21");
}

TEST_F(DeviceDefinition, CancelAndTheCloseButtonLeaveTheElementAlone) {
  for (const bool cancel : {true, false}) {
    openExisting();
    const std::string before = support::compactXml(device());
    type({{"name", "Other"}, {"address", "1.2.3.4"}});
    if (cancel)
      driver.click("cancel");
    else
      driver.close();
    expectClosed(IDCANCEL);
    EXPECT_EQ(support::compactXml(device()), before);
  }
}

// --- the node file at the first save

TEST_F(DeviceDefinition, OnlyTheDescriptionChangedContactsNobody) {
  verifyEverything();
  giveChildDevices();
  openExisting();
  driver.type("description", "\"quoted\" <b> & á \U0001F6A6");
  driver.click("ok");
  expectClosed(IDOK);
  EXPECT_EQ(driver.channel().count(), 0U);
  EXPECT_EQ(device().Value("description").ToUtf8(), "\"quoted\" <b> & á \U0001F6A6");
}

TEST_F(DeviceDefinition, TheFirstSaveTurnsTheNodesIntoChildDevicesAndAGroup) {
  verifyEverything();
  openNew();
  typeNewDevice();
  driver.channel().replyWith(Identification);
  driver.channel().replyWith(NodeFile);
  driver.click("ok");
  expectClosed(IDOK);
  EXPECT_EQ(commands(), (std::vector{29, 58}));
  EXPECT_EQ(driver.channel().last().request, "");
  EXPECT_XML_EQ(
      "<device><id>{D2}</id><driver>ZELLAMPMANAGER</driver><type>ZELLAMPMANAGER</type>"
      "<identifier>LM-0002</identifier>"
      "<childDevices><childDevice><id>{00000000-0000-4000-8000-000000000001}</id>"
      "<revision>{00000000-0000-4000-8000-000000000001}</revision><driver>ZELLAMP</driver>"
      "<name>n1</name><description>Corner</description></childDevice></childDevices>"
      "<name>Harbour</name><description/><address>10.0.0.7</address><socket>8080</socket>"
      "<ftpAddress>10.0.0.1</ftpAddress><ftpPort>21</ftpPort><ftpUser/><ftpPassword/></device>",
      device());
  EXPECT_XML_EQ(
      "<deviceGroups><groups><group><id>Harbour</id><devices>"
      "<device><id>{00000000-0000-4000-8000-000000000001}</id></device></devices></group></groups>"
      "</deviceGroups>",
      root()->Node("deviceGroups"));
  EXPECT_TRUE(driver.posted().empty()) << "the first save notifies nobody";
}

TEST_F(DeviceDefinition, ARenamedDeviceWithoutChildDevicesFetchesThemWithoutASearch) {
  verifyEverything();
  openExisting();
  driver.type("name", "Main");
  driver.channel().replyWith(NodeFile);
  driver.click("ok");
  expectClosed(IDOK);
  EXPECT_EQ(commands(), std::vector{58});
  EXPECT_NE(root()->Node("deviceGroups/groups/group?id=%s?", u"Main"), nullptr);
  EXPECT_TRUE(device().Value("identifier") == u"LM-0001") << "the typed value is written last";
}

TEST_F(DeviceDefinition, ANodeFileThatCannotBeReadIsAskedAbout) {
  verifyEverything();
  openExisting();
  driver.type("name", "Main");
  const std::string before = support::compactXml(device());
  driver.channel().failWith("no answer");
  driver.click("ok");
  expectMessage("no answer");
  expectQuestion("[38263]", MessageAnswer::no);
  expectOpen();
  EXPECT_EQ(support::compactXml(device()), before);

  driver.channel().failWith("");
  driver.click("ok");
  expectMessage("[38262]");
  expectQuestion("[38263]", MessageAnswer::yes);
  expectClosed(IDOK);
  EXPECT_TRUE(device().Value("name") == u"Main");
  EXPECT_EQ(device().Node("childDevices"), nullptr);
}

TEST_F(DeviceDefinition, ACancelledNodeFileIsAskedAboutWithoutAMessageBefore) {
  verifyEverything();
  openExisting();
  driver.type("name", "Main");
  driver.channel().cancel();
  driver.click("ok");
  expectQuestion("[38263]", MessageAnswer::no);
  expectOpen();
}

TEST_F(DeviceDefinition, ANodeFileWithoutAListIsToldAndTheDeviceSaved) {
  verifyEverything();
  openExisting();
  driver.type("name", "Main");
  driver.channel().replyWith("<reply><ZelLamp Id='x'/></reply>");
  driver.click("ok");
  expectMessage("[38278]");
  expectClosed(IDOK);
  EXPECT_TRUE(device().Value("name") == u"Main");
  EXPECT_XML_EQ("<childDevices/>", device().Node("childDevices"));
}

TEST_F(DeviceDefinition, UnchangedButWithoutChildDevicesFetchesThemAndClosesWithOk) {
  verifyEverything();
  openExisting();
  driver.channel().replyWith(NodeFile);
  driver.click("ok");
  expectClosed(IDOK);
  EXPECT_EQ(commands(), std::vector{58});
  EXPECT_NE(device().Node("childDevices/childDevice"), nullptr);
  EXPECT_TRUE(device().Value("identifier") == u"LM-0002") << "taken from the node file";
  EXPECT_NE(root()->Node("deviceGroups/groups/group?id=%s?", u"Main street"), nullptr);
}

TEST_F(DeviceDefinition, UnchangedWithoutAnAnswerStaysOpenOnNoAndCancelsOnYes) {
  verifyEverything();
  openExisting();
  const std::string before = support::compactXml(device());
  driver.channel().failWith("no answer");
  driver.click("ok");
  expectMessage("no answer");
  expectQuestion("[38263]", MessageAnswer::no);
  expectOpen();
  driver.channel().cancel();
  driver.click("ok");
  expectQuestion("[38263]", MessageAnswer::yes);
  expectClosed(IDCANCEL);
  EXPECT_EQ(support::compactXml(device()), before);
}

TEST_F(DeviceDefinition, UnchangedWithChildDevicesClosesWithCancelAndContactsNobody) {
  verifyEverything();
  giveChildDevices();
  openExisting();
  driver.click("ok");
  expectClosed(IDCANCEL);
  EXPECT_EQ(driver.channel().count(), 0U);
}

TEST_F(DeviceDefinition, VerificationIsAskedForByWhetherTheDeviceExists) {
  driver.settings().verifyNew(true);
  auto& existing = openExisting();
  EXPECT_FALSE(existing.NeedCheckComm());
  driver.click("cancel");
  auto& fresh = openNew();
  EXPECT_TRUE(fresh.NeedCheckComm());
}

// --- the host constructs it by name

TEST_F(DeviceDefinition, IsFoundByItsNameOverDeviceAndConfiguration) {
  const host::DeviceDialogClass* found = host::findDeviceDialog("XCDlgNewModifyZelLampManager");
  ASSERT_NE(found, nullptr);
  const auto dialog = found->create(nullptr, manager.element(), root());
  ASSERT_NE(dialog, nullptr);
  EXPECT_EQ(dialog->TemplateNumber(), 4530);
  EXPECT_EQ(dialog->ClassName(), "XCDlgNewModifyZelLampManager");
}

// --- the address of the controller

TEST_F(DeviceDefinition, AllNineParametersAreAppendedAsTyped) {
  auto& dialog = openExisting();
  type({{"identifier", ""},
        {"address", "fe80::1"},
        {"socket", ""},
        {"ftpAddress", "a b+c"},
        {"ftpUser", "José & co"},
        {"ftpPassword", "100%=?"}});
  XCBasicString uri;
  EXPECT_TRUE(dialog.addUriParams(uri, true));
  EXPECT_EQ(uri.ToUtf8(),
            "driver=ZELLAMPMANAGER&type=ZELLAMPMANAGER&identifier=&address=fe80%3A%3A1&socket=&"
            "ftpAddress=a%20b%2Bc&ftpPort=21&ftpUser=Jos%C3%A9%20%26%20co&"
            "ftpPassword=100%25%3D%3F");
  XCBasicString more(u"a=b");
  EXPECT_TRUE(dialog.addUriParams(more, false));
  EXPECT_EQ(more.ToUtf8().substr(0, 11), "a=b&driver=");
}

TEST_F(DeviceDefinition, OfADeviceThatWasRemovedMeanwhileNoGroupIsMade) {
  verifyEverything();
  openExisting();
  root()->RemoveChild(edited);
  driver.type("description", "Gone");
  driver.channel().replyWith(NodeFile);
  driver.click("ok");
  expectClosed(IDOK);
  EXPECT_XML_EQ("<deviceGroups/>", root()->Node("deviceGroups"));
}

}  // namespace
}  // namespace device_test
