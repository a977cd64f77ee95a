#include "device/node_update_dialog.h"

#include "driver/options_dialog.h"
#include "host/dialogs/extension_module.h"
#include "tests/device/device_definition_fixture.h"

namespace device_test {
namespace {

std::string list(const std::string& nodes) {
  return "<deviceCfg><ZelLamp Id='LM-0001'><L03>" + nodes + "</L03></ZelLamp></deviceCfg>";
}

class NodeUpdate : public DeviceDefinition {
 protected:
  XCUpdateNodesZelLampManager& openUpdate() {
    return driver.show<XCUpdateNodesZelLampManager>(nullptr, &manager.driver, manager.element());
  }
  std::string configuration() { return support::compactXml(XCMainCfg::Get().Document()); }
  std::vector<std::string> ids() {
    std::vector<std::string> found;
    for (const auto& child : manager.element()->Node("childDevices")->Children())
      found.push_back(child.Value("id").ToUtf8());
    return found;
  }
};

TEST_F(NodeUpdate, OpensWithoutReadingAndNamesTheDevice) {
  openUpdate();
  EXPECT_EQ(driver.dialog().ClassName(), "XCUpdateNodesZelLampManager");
  EXPECT_EQ(driver.title(), "[38473] - Main street");
  const struct {
    int id;
    const char* name;
    const char* text;
  } controls[] = {{6590, "updateGroup", "[38003]"},
                  {6591, "syncLabel", "[60041]"},
                  {6593, "sync", "[38475]"},
                  {6592, "asyncLabel", "[60042]"},
                  {6594, "async", "[38475]"},
                  {1, "ok", "[311]"},
                  {2, "cancel", "[312]"}};
  for (const auto& control : controls) {
    EXPECT_EQ(driver.control(control.id).name(), control.name);
    EXPECT_EQ(driver.text(control.id), control.text) << control.name;
  }
  EXPECT_EQ(driver.image("ok"), "OK-16.png");
  EXPECT_EQ(driver.image("cancel"), "CANCEL-16.png");
  expectAllArranged(driver.dialog());
  EXPECT_EQ(driver.channel().count(), 0U);
}

TEST_F(NodeUpdate, EachButtonReadsTheListInItsWayAndUpdatesAtOnce) {
  const std::pair<const char*, const char*> buttons[] = {{"sync", "Sync"}, {"async", "Async"}};
  openUpdate();
  for (const auto& [button, type] : buttons) {
    driver.channel().replyWith(list("<Node nodeId='n1' Reference='Corner'/>"));
    driver.click(button);
    expectMessage("[38476]");
    EXPECT_EQ(driver.channel().last().command, 1);
    EXPECT_EQ(driver.channel().last().kind, host::CommandKind::get);
    EXPECT_XML_EQ("<deviceCfg><L03 type='" + std::string(type) + "'/></deviceCfg>",
                  driver.channel().last().request);
    ASSERT_EQ(driver.posted().size(), 1U);
    EXPECT_EQ(driver.posted()[0].message, 1025U);
    driver.clearLogs();
    EXPECT_EQ(driver.top(), TopKind::dialog) << "it stays open";
  }
  EXPECT_XML_EQ(
      "<deviceGroups><groups><group><id>Main street</id><devices><device>"
      "<id>{00000000-0000-4000-8000-000000000001}</id></device></devices></group></groups>"
      "</deviceGroups>",
      root()->Node("deviceGroups"));
}

TEST_F(NodeUpdate, AnyOtherCallerAsksWithoutAType) {
  XCUpdateNodesZelLampManager update(nullptr, &manager.driver, manager.element());
  driver.channel().replyWith(list(""));
  driver.run([&] { update.updateNodes(0); });
  expectMessage("[38476]");
  EXPECT_XML_EQ("<deviceCfg><L03/></deviceCfg>", driver.channel().last().request);
}

TEST_F(NodeUpdate, ASecondUpdateReusesTheIdsOfTheFirst) {
  openUpdate();
  driver.channel().replyWith(list("<Node nodeId='n1'/><Node nodeId='n2'/>"));
  driver.click("sync");
  expectMessage("[38476]");
  const std::vector<std::string> first = ids();
  driver.channel().replyWith(list("<Node nodeId='n2'/><Node nodeId='n3'/><Node nodeId='n1'/>"));
  driver.click("async");
  expectMessage("[38476]");
  ASSERT_EQ(ids().size(), 3U);
  EXPECT_EQ(ids()[0], first[1]);
  EXPECT_EQ(ids()[2], first[0]);
}

TEST_F(NodeUpdate, TheNineParametersComeFromTheDevice) {
  openUpdate();
  driver.channel().replyWith(list(""));
  driver.click("sync");
  EXPECT_EQ(driver.channel().last().uri,
            "driver=ZELLAMPMANAGER&type=ZELLAMPMANAGER&identifier=LM-0001&address=192.168.1.20&"
            "socket=8080&ftpAddress=192.168.1.2&ftpPort=21&ftpUser=lamps&ftpPassword=secret");
}

TEST_F(NodeUpdate, AFailedReadIsToldAndChangesNothing) {
  openUpdate();
  driver.channel().replyWith(list("<Node nodeId='n1'/>"));
  driver.click("sync");
  expectMessage("[38476]");
  driver.clearLogs();
  const std::string before = configuration();
  driver.channel().failWith("no answer");
  driver.click("sync");
  expectMessage("no answer\r\n\r\n[329]");
  driver.channel().failWith("");
  driver.click("async");
  expectMessage("[329]");
  driver.channel().cancel();
  driver.click("sync");
  expectOpen();
  EXPECT_EQ(configuration(), before);
  EXPECT_TRUE(driver.posted().empty());
}

TEST_F(NodeUpdate, AReplyWithoutListIsToldAndNotNotified) {
  openUpdate();
  driver.channel().replyWith("<deviceCfg/>");
  driver.click("sync");
  expectMessage("[38278]");
  driver.channel().replyEmpty();
  driver.click("sync");
  expectMessage("[38278]");
  EXPECT_TRUE(driver.posted().empty());
}

TEST_F(NodeUpdate, ClosesByBothButtonsAndChangesNothing) {
  const std::string before = configuration();
  openUpdate();
  driver.click("ok");
  expectClosed(IDOK);
  openUpdate();
  driver.click("cancel");
  expectClosed(IDCANCEL);
  EXPECT_EQ(configuration(), before);
}

// --- from the options panel

TEST_F(NodeUpdate, TheOptionsPanelOffersItWithItsOwnImage) {
  driver.show<CDlgOptionsZelLampManager>(nullptr, &manager.driver);
  EXPECT_EQ(driver.text("generic1"), "[38473]");
  EXPECT_EQ(driver.image("generic1"), "4527.png");
  EXPECT_TRUE(driver.enabled("generic1") && driver.visible("generic1"));
}

TEST_F(NodeUpdate, TheOptionsPanelRunsItSynchronouslyWithoutShowingIt) {
  driver.show<CDlgOptionsZelLampManager>(nullptr, &manager.driver);
  driver.channel().replyWith(list("<Node nodeId='n1'/>"));
  driver.click("generic1");
  expectMessage("[38476]");
  EXPECT_EQ(driver.dialog().ClassName(), "CDlgOptionsZelLampManager");
  EXPECT_XML_EQ("<deviceCfg><L03 type='Sync'/></deviceCfg>", driver.channel().last().request);
  EXPECT_EQ(ids().size(), 1U);
  EXPECT_TRUE(driver.closed().empty());
}

TEST_F(NodeUpdate, FromTheOptionsPanelItSucceedsEvenWhenTheReadFails) {
  CDlgOptionsZelLampManager panel(nullptr, &manager.driver);
  bool result = false;
  driver.channel().failWith("no answer");
  driver.run([&] { result = panel.SetupGeneric1(); });
  expectMessage("no answer\r\n\r\n[329]");
  EXPECT_TRUE(result);
}

TEST_F(NodeUpdate, ADriverWithoutDeviceElementContactsNothing) {
  root()->Node("commSystem")->RemoveChild(manager.element());
  CDlgOptionsZelLampManager panel(nullptr, &manager.driver);
  CDlgOptionsZelLampManager withoutDriver(nullptr, nullptr);
  bool result = true;
  bool resultWithout = true;
  driver.run([&] {
    result = panel.SetupGeneric1();
    resultWithout = withoutDriver.SetupGeneric1();
  });
  EXPECT_FALSE(result);
  EXPECT_FALSE(resultWithout);
  EXPECT_EQ(driver.channel().count(), 0U);
  EXPECT_EQ(driver.top(), TopKind::none);
}

// --- the host constructs it by name

class OneDriver : public host::DriverRegistry {
 public:
  explicit OneDriver(XCDriver& driver) : driver_(driver) { host::setDriverRegistry(this); }
  ~OneDriver() override { host::setDriverRegistry(nullptr); }
  XCDriver* find(std::u16string_view deviceId) override {
    return driver_.Identifier() == deviceId ? &driver_ : nullptr;
  }

 private:
  XCDriver& driver_;
};

TEST_F(NodeUpdate, IsFoundByItsNameForADeviceThatHasADriver) {
  const host::DeviceDialogClass* found = host::findDeviceDialog("XCUpdateNodesZelLampManager");
  ASSERT_NE(found, nullptr);
  const OneDriver registry(manager.driver);
  const auto dialog = found->create(nullptr, manager.element(), root());
  ASSERT_NE(dialog, nullptr);
  EXPECT_EQ(dialog->TemplateNumber(), 4543);
  XmlDocument::XmlNode& element = *manager.element();
  element.SetValue("id", u"{unknown}");
  EXPECT_EQ(found->create(nullptr, &element, root()), nullptr);
}

TEST_F(NodeUpdate, OfADeviceThatWasRemovedMeanwhileNoGroupIsMade) {
  openUpdate();
  XmlDocument::XmlNode* device = manager.element();
  XCMainCfg::Get().Root()->RemoveChild(device);
  driver.channel().replyWith(list("<Node nodeId='n1'/>"));
  driver.click("sync");
  expectMessage("[38476]");
  EXPECT_XML_EQ("<deviceGroups/>", root()->Node("deviceGroups"));
  EXPECT_NE(device->Node("childDevices/childDevice"), nullptr) << "the dialog goes on";
}

}  // namespace
}  // namespace device_test
