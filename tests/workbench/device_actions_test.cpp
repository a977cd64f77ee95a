#include "workbench/device_actions.h"

#include <gtest/gtest.h>

#include "host/dialogs/extension_module.h"
#include "host/services/identity.h"
#include "host/services/setup.h"
#include "tests/support/dialog_driver.h"
#include "tests/support/faulty_files.h"
#include "tests/support/temp_folder.h"

namespace {

using support::DialogDriver;
using support::TopKind;
using workbench::ActionResult;
using workbench::ConfigurationStore;
using workbench::DeviceActions;
using workbench::DeviceCatalogue;
using Node = XmlDocument::XmlNode;

constexpr int Definition = 9100;
constexpr int Update = 9101;
constexpr int NameEdit = 6307;

// Takes the name of a device; knows whether the host leaves the device out of the comparison.
class DefinitionFake : public XCBaseDlg {
 public:
  DefinitionFake(CWnd* parent, Node* device, Node* configuration)
      : XCBaseDlg(Definition, parent), device_(device), configuration_(configuration) {}
  bool OnInitDialog() override {
    SetDlgItemText(NameEdit, device_->Value("name"));
    return XCBaseDlg::OnInitDialog();
  }
  void OnOK() override {
    if (!IsNameAllowed(GetDlgItemText(NameEdit), configuration_->Node("commSystem"))) return;
    device_->SetValue("name", GetDlgItemText(NameEdit));
    EndDialog(IDOK);
  }

 private:
  Node* device_;
  Node* configuration_;
};

// Changes the device as soon as it opens, and ends with Cancel.
class UpdateFake : public XCBaseDlg {
 public:
  UpdateFake(CWnd* parent, Node* device) : XCBaseDlg(Update, parent), device_(device) {}
  bool OnInitDialog() override {
    device_->SetValue("identifier", u"updated");
    return XCBaseDlg::OnInitDialog();
  }

 private:
  Node* device_;
};

bool configured(CWnd* parent, XCDriver* driver) {
  host::services().frontEnd().ask({parent, u"configuring " + driver->Name().str()});
  return true;
}

bool listed(CWnd*, XCDriver* driver, XCNameList& names, const XCListFlags& flags, int number,
            XCBasicString text) {
  names.push_back(driver->Identifier());
  return flags.test(4) && number == 0 && text.IsEmpty();
}

host::ExtensionModule makeModule() {
  host::ExtensionModule module;
  module.name = "fakes";
  module.templates = {{Definition,
                       [] {
                         return host::DialogTemplate{Definition,
                                                     "DefinitionFake",
                                                     "",
                                                     {host::edit(NameEdit, "name", 64),
                                                      host::okButton(), host::cancelButton()}};
                       }},
                      {Update, [] {
                         return host::DialogTemplate{
                             Update, "UpdateFake", "", {host::okButton(), host::cancelButton()}};
                       }}};
  module.deviceDialogs = {{"XCDlgNewModifyZelLampManager",
                           [](CWnd* parent, Node* device, Node* configuration) {
                             return std::make_unique<DefinitionFake>(parent, device, configuration);
                           }},
                          {"XCUpdateNodesZelLampManager", [](CWnd* parent, Node* device, Node*) {
                             return std::make_unique<UpdateFake>(parent, device);
                           }}};
  return module;
}

class DeviceActionsTest : public testing::Test {
 protected:
  static constexpr const char* Start =
      "<configuration><commSystem>"
      "<device><id>{1}</id><driver>ZELLAMPMANAGER</driver><name>North</name></device>"
      "<device><id>{2}</id><driver>TCP</driver><name>Meter</name></device>"
      "</commSystem><deviceGroups><groups><group><id>South</id></group>"
      "<group><id>North</id></group></groups></deviceGroups></configuration>";

  void SetUp() override {
    folder.write("configuration.xml", Start);
    std::string cause;
    ASSERT_TRUE(store.open(cause)) << cause;
    host::registerModule(module);
    host::setDriverRegistry(&catalogue);
  }
  void TearDown() override {
    driver.closeAll();
    host::removeRegistration(XCDriverDeviceZelLampManager::GetThisClass());
    host::setDriverRegistry(nullptr);
    host::unregisterModule(module);
    XCMainCfg::Get().Document().Clear();
  }

  void run(const std::function<ActionResult()>& action) {
    driver.run([this, action] { result = action(); });
  }
  Node* device(const char16_t* name) { return DeviceCatalogue::deviceNamed(name); }
  std::string onDisk() { return folder.read("configuration.xml"); }
  bool diskHas(const std::string& text) { return onDisk().find(text) != std::string::npos; }

  support::TempFolder folder;
  ConfigurationStore store{folder.path()};
  DeviceCatalogue catalogue;
  DeviceActions actions{store, catalogue};
  host::ExtensionModule module = makeModule();
  ActionResult result;
  DialogDriver driver;
};

TEST_F(DeviceActionsTest, ANewDeviceHasIdDriverAndTypeAndJoinsWithOk) {
  run([&] { return actions.newDevice(nullptr); });
  driver.type(NameEdit, "West");
  EXPECT_EQ(device(u"West"), nullptr);
  driver.click("ok");
  EXPECT_TRUE(result.done);
  const Node* made = device(u"West");
  ASSERT_NE(made, nullptr);
  EXPECT_EQ(made->Tag(), "device");
  EXPECT_EQ(made->Value("driver"), u"ZELLAMPMANAGER");
  EXPECT_EQ(made->Value("type"), u"ZELLAMPMANAGER");
  EXPECT_EQ(made->Value("id").Length(), 38U);
  EXPECT_NE(XCDriver::LockDriver(made->Value("id")), nullptr);
  EXPECT_EQ(onDisk(), store.text());
}

TEST_F(DeviceActionsTest, ACancelledNewDeviceLeavesTheFileAlone) {
  run([&] { return actions.newDevice(nullptr); });
  driver.click("cancel");
  EXPECT_EQ(onDisk(), Start);
}

TEST_F(DeviceActionsTest, ADeviceMayKeepItsNameInAnotherCaseButNotTakeAnothers) {
  run([&] { return actions.modifyDevice(nullptr, *device(u"North")); });
  driver.type(NameEdit, "meter");
  driver.click("ok");
  EXPECT_EQ(driver.top(), TopKind::dialog);
  driver.type(NameEdit, "NORTH");
  driver.click("ok");
  EXPECT_EQ(driver.top(), TopKind::none);
  EXPECT_TRUE(diskHas("<name>NORTH</name>"));
}

TEST_F(DeviceActionsTest, WhatADialogChangedIsSavedWhateverItAnswered) {
  run([&] { return actions.updateNodes(nullptr, *device(u"North")); });
  EXPECT_FALSE(diskHas("updated"));
  driver.click("cancel");
  EXPECT_TRUE(diskHas("<identifier>updated</identifier>"));
}

TEST_F(DeviceActionsTest, ARemovedDeviceTakesTheGroupOfItsNameAlong) {
  EXPECT_NE(XCDriver::LockDriver(u"{1}"), nullptr);
  run([&] { return actions.removeDevice(nullptr, *device(u"North")); });
  EXPECT_TRUE(result.done);
  EXPECT_EQ(XCDriver::LockDriver(u"{1}"), nullptr);
  EXPECT_FALSE(diskHas("North"));
  EXPECT_TRUE(diskHas("<id>South</id>"));
}

TEST_F(DeviceActionsTest, ADeviceCanBeRemovedUnderItsDialog) {
  run([&] { return actions.modifyDevice(nullptr, *device(u"North")); });
  driver.run([&] { actions.removeDevice(nullptr, *device(u"North")); });
  driver.type(NameEdit, "Ghost");
  driver.click("ok");
  EXPECT_FALSE(diskHas("Ghost"));
}

TEST_F(DeviceActionsTest, CallbacksGetTheDevicesDriver) {
  XCDriverServices::Add(XCDriverDeviceZelLampManager::GetThisClass(), configured, listed, nullptr);
  run([&] { return actions.configure(nullptr, *device(u"North")); });
  EXPECT_EQ(driver.message().text, "configuring North");
  driver.answer(host::MessageAnswer::ok);
  EXPECT_TRUE(result.done);

  XCNameList names = {u"x"};
  bool answer = false;
  XCListFlags flags;
  flags.set(4);
  run([&] {
    return actions.list(nullptr, *device(u"North"), workbench::ListCallback::A, flags, names,
                        answer);
  });
  EXPECT_TRUE(answer);
  EXPECT_EQ(names, (XCNameList{u"x", u"{1}"}));
  run([&] {
    return actions.list(nullptr, *device(u"North"), workbench::ListCallback::B, flags, names,
                        answer);
  });
  EXPECT_FALSE(result.done);
}

TEST_F(DeviceActionsTest, WhatIsNotThereIsRefusedWithAReason) {
  run([&] { return actions.configure(nullptr, *device(u"North")); });
  EXPECT_EQ(result.reason, u"[60322](ZELLAMPMANAGER,North)");
  run([&] { return actions.modifyDevice(nullptr, *device(u"Meter")); });
  EXPECT_EQ(result.reason, u"[60320](Meter)");
  run([&] { return actions.updateNodes(nullptr, *device(u"Meter")); });
  EXPECT_FALSE(result.done);
  host::unregisterModule(module);
  run([&] { return actions.newDevice(nullptr); });
  EXPECT_EQ(result.reason, u"[60321](XCDlgNewModifyZelLampManager)");
  run([&] { return actions.updateNodes(nullptr, *device(u"North")); });
  EXPECT_EQ(result.reason, u"[60321](XCUpdateNodesZelLampManager)");
}

TEST_F(DeviceActionsTest, ADialogThatThePlugInCantMakeIsRefused) {
  host::unregisterModule(module);
  module.deviceDialogs[1].create = [](CWnd*, Node*, Node*) { return std::unique_ptr<XCBaseDlg>(); };
  host::registerModule(module);
  run([&] { return actions.updateNodes(nullptr, *device(u"North")); });
  EXPECT_EQ(result.reason, u"[60323](North)");
}

TEST_F(DeviceActionsTest, AConfigurationThatCanOnlyBeReadIsNotDefinedUpon) {
  ConfigurationStore second(folder.path(), std::chrono::milliseconds(0));
  std::string cause;
  ASSERT_TRUE(second.open(cause));
  DeviceActions reading(second, catalogue);
  run([&] { return reading.newDevice(nullptr); });
  EXPECT_EQ(result.reason.ToUtf8(), second.readOnlyReason());
  run([&] { return reading.removeDevice(nullptr, *device(u"North")); });
  EXPECT_EQ(result.reason.ToUtf8(), second.readOnlyReason());
}

TEST_F(DeviceActionsTest, ASaveThatFailsIsShownAndTriedAgainWithTheNextAction) {
  support::FaultyFiles files;
  files.fail(support::FaultyFiles::Operation::writeNew, "the disk is full");
  run([&] { return actions.removeDevice(nullptr, *device(u"North")); });
  EXPECT_EQ(driver.message().icon, host::MessageIcon::error);
  const std::string file = store.file().string();
  EXPECT_EQ(driver.message().text, "[60033](" + file + ",the disk is full)") << "the path once";
  driver.answer(host::MessageAnswer::ok);
  EXPECT_EQ(onDisk(), Start);
  files.repair();
  run([&] { return actions.newDevice(nullptr); });
  driver.click("cancel");
  EXPECT_FALSE(diskHas("North"));
}

}  // namespace
