#include "driver/options_dialog.h"

#include <gtest/gtest.h>

#include "tests/support/dialog_driver.h"
#include "tests/support/lamp_manager.h"
#include "tests/support/xml_compare.h"

namespace {

using support::TopKind;

class OptionsDialog : public testing::Test {
 protected:
  void open() { driver.show<CDlgOptionsZelLampManager>(nullptr, &manager.driver); }

  support::LampManager manager;
  support::DialogDriver driver;
};

TEST_F(OptionsDialog, OffersDriverAndDeviceAndHidesTheHostsButtons) {
  open();
  EXPECT_EQ(driver.dialog().ClassName(), "CDlgOptionsZelLampManager");
  EXPECT_TRUE(driver.visible("driver") && driver.enabled("driver"));
  EXPECT_TRUE(driver.visible("device") && driver.enabled("device"));
  EXPECT_EQ(driver.image("device"), "ZELLAMPMANAGER-50.png");
  for (const int number : {2, 3, 4}) {
    EXPECT_FALSE(driver.visible(XCDlgOptions::ButtonId(number))) << number;
    EXPECT_FALSE(driver.enabled(XCDlgOptions::ButtonId(number))) << number;
  }
}

TEST_F(OptionsDialog, TheDeviceButtonOpensTheConfigurationMenu) {
  open();
  driver.channel().replyWith("<deviceCfg><ZelLamp Id='LM-0001'><L01/></ZelLamp></deviceCfg>");
  driver.click("device");
  EXPECT_EQ(driver.dialog().ClassName(), "XCDeviceCfgZelLampManager");
  EXPECT_EQ(driver.channel().last().parameter("address"), "192.168.1.20");
  driver.click("ok");
  EXPECT_EQ(driver.dialog().ClassName(), "CDlgOptionsZelLampManager");
}

TEST_F(OptionsDialog, TheDriverButtonOpensTheDriverDialogWithTheViewSetup) {
  XCMainCfg::Get().Root()->Node("viewSetups")->NewChild("viewSetup").SetValue("driverId", u"{D1}");
  XCMainCfg::Get().ViewSetup(u"{D1}")->SetValue("historic", u"T");
  open();
  driver.click("driver");
  EXPECT_EQ(driver.dialog().ClassName(), "XCDlgDriverDeviceCfg");
  EXPECT_TRUE(driver.visible("historic") && driver.checked("historic"));
  EXPECT_FALSE(driver.visible("period")) << "a lamp manager has no period";
  driver.check("historic", false);
  driver.click("ok");
  EXPECT_TRUE(XCMainCfg::Get().ViewSetup(u"{D1}")->Value("historic") == u"F");
}

TEST_F(OptionsDialog, TheDriverDialogOpensWithoutAViewSetupAndMakesOneOnOk) {
  open();
  driver.click("driver");
  EXPECT_EQ(driver.dialog().ClassName(), "XCDlgDriverDeviceCfg");
  EXPECT_FALSE(driver.checked("historic"));
  driver.click("cancel");
  EXPECT_EQ(XCMainCfg::Get().ViewSetup(u"{D1}"), nullptr);
  driver.click("driver");
  driver.check("historic", true);
  driver.click("ok");
  EXPECT_XML_EQ("<viewSetup><driverId>{D1}</driverId><historic>T</historic></viewSetup>",
                XCMainCfg::Get().ViewSetup(u"{D1}"));
}

TEST_F(OptionsDialog, SetupOperationsAreTrueExactlyWhenTheirDialogEndedWithOk) {
  CDlgOptionsZelLampManager panel(nullptr, &manager.driver);
  bool result = false;
  for (const bool ok : {true, false}) {
    driver.run([&] { result = panel.SetupDriver(manager.element()); });
    driver.click(ok ? "ok" : "cancel");
    EXPECT_EQ(result, ok);
    driver.channel().replyWith("<deviceCfg/>");
    driver.run([&] { result = panel.SetupDevice(manager.element()); });
    if (ok)
      driver.click("ok");
    else
      driver.close();
    EXPECT_EQ(result, ok);
  }
}

TEST_F(OptionsDialog, ForADriverThatIsNoDevicesItOffersNothingAndItsOperationsFail) {
  auto& panel = driver.show<CDlgOptionsZelLampManager>(nullptr, nullptr);
  for (const char* button : {"driver", "device", "generic1"}) EXPECT_FALSE(driver.enabled(button));
  driver.run([&] {
    EXPECT_FALSE(panel.SetupDriver(manager.element()));
    EXPECT_FALSE(panel.SetupDevice(manager.element()));
    EXPECT_FALSE(panel.SetupGeneric1());
  });
  EXPECT_EQ(driver.channel().count(), 0U);
  EXPECT_EQ(driver.dialog().ClassName(), "CDlgOptionsZelLampManager") << "nothing opened";
}

}  // namespace
