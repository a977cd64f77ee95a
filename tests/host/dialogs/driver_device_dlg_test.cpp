#include "host/dialogs/driver_device_dlg.h"

#include <gtest/gtest.h>

#include "host/services/setup.h"
#include "tests/support/dialog_driver.h"
#include "tests/support/xml_compare.h"

using support::DialogDriver;

namespace {

class DriverDevice : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(XCMainCfg::Get().Document().Parse(
        "<configuration><commSystem><device><id>{1}</id><description>on the hill</description>"
        "</device></commSystem><viewSetups><viewSetup><driverId>{2}</driverId></viewSetup>"
        "</viewSetups></configuration>"));
    device = XCMainCfg::Get().DeviceNode(u"{1}");
  }
  void TearDown() override { XCMainCfg::Get().Document().Clear(); }

  // Shows the dialog as the lamp manager does: without period, with history.
  void showWithHistory(XmlDocument::XmlNode* viewSetup) {
    driver.run([this, viewSetup] {
      XCDlgDriverDeviceCfg dialog(nullptr, &lamps, device, viewSetup);
      dialog.DisablePeriod();
      dialog.EnableHistoric();
      result = dialog.DoModal();
    });
  }
  std::string viewSetups() {
    return support::compactXml(*XCMainCfg::Get().Root()->Node("viewSetups"));
  }

  XCDriver lamps{u"ZELLAMPMANAGER", u"{1}", u"North", u"of the driver"};
  XmlDocument::XmlNode* device = nullptr;
  int result = 0;
  DialogDriver driver;
};

TEST_F(DriverDevice, ShowsNameAndDescriptionAndWhatIsOffered) {
  showWithHistory(nullptr);
  EXPECT_EQ(driver.title(), "Lamp manager - North");
  EXPECT_EQ(driver.text("name"), "North");
  EXPECT_EQ(driver.text("description"), "on the hill");
  EXPECT_TRUE(driver.visible("historic"));
  EXPECT_FALSE(driver.visible("period"));
  EXPECT_FALSE(driver.visible("periodLabel"));
  EXPECT_FALSE(driver.tryType("name", "x").done);
}

TEST_F(DriverDevice, WithoutAnElementTheDriversDescriptionIsShown) {
  device = nullptr;
  showWithHistory(nullptr);
  EXPECT_EQ(driver.text("description"), "of the driver");
}

TEST_F(DriverDevice, OkAddsAViewSetupWhereThereIsNone) {
  showWithHistory(nullptr);
  driver.check("historic", true);
  driver.click("ok");
  EXPECT_EQ(result, IDOK);
  EXPECT_XML_EQ(
      "<viewSetups><viewSetup><driverId>{2}</driverId></viewSetup>"
      "<viewSetup><driverId>{1}</driverId><historic>T</historic></viewSetup></viewSetups>",
      viewSetups());
}

TEST_F(DriverDevice, OkAddsTheListOfViewSetupsToo) {
  XmlDocument::XmlNode* root = XCMainCfg::Get().Root();
  root->RemoveChild(root->Node("viewSetups"));
  showWithHistory(nullptr);
  driver.click("ok");
  EXPECT_XML_EQ(
      "<viewSetups><viewSetup><driverId>{1}</driverId><historic>F</historic></viewSetup>"
      "</viewSetups>",
      viewSetups());
}

TEST_F(DriverDevice, CancelChangesNothing) {
  const std::string before = XCMainCfg::Get().Document().ToString();
  showWithHistory(nullptr);
  driver.check("historic", true);
  driver.click("cancel");
  EXPECT_EQ(result, IDCANCEL);
  EXPECT_EQ(XCMainCfg::Get().Document().ToString(), before);
}

TEST_F(DriverDevice, AnExistingViewSetupIsShownAndChanged) {
  XmlDocument::XmlNode* setup = XCMainCfg::Get().ViewSetup(u"{2}");
  ASSERT_NE(setup, nullptr);
  setup->SetValue("historic", u"T");
  setup->SetValue("period", u"15");
  setup->SetValue("other", u"kept");
  showWithHistory(setup);
  EXPECT_TRUE(driver.checked("historic"));
  driver.check("historic", false);
  driver.click("ok");
  EXPECT_XML_EQ(
      "<viewSetups><viewSetup><driverId>{2}</driverId><historic>F</historic>"
      "<period>15</period><other>kept</other></viewSetup></viewSetups>",
      viewSetups());
}

TEST_F(DriverDevice, ThePeriodIsOfferedUnlessItIsDisabled) {
  XmlDocument::XmlNode* setup = XCMainCfg::Get().ViewSetup(u"{2}");
  setup->SetValue("period", u"15");
  driver.show<XCDlgDriverDeviceCfg>(nullptr, &lamps, device, setup);
  EXPECT_FALSE(driver.visible("historic"));
  EXPECT_EQ(driver.text("period"), "15");
  driver.type("period", "6a0");
  driver.click("ok");
  EXPECT_EQ(setup->Value("period"), u"60");
  EXPECT_EQ(setup->Value("historic", u"none"), u"none") << "what is not offered is not written";
}

}  // namespace
