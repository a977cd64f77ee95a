#include "host/services/setup.h"

#include <gtest/gtest.h>

#include "tests/support/printers.h"
#include "tests/support/xml_compare.h"

namespace {

TEST(Setup, PathsHaveASeparatorBehindFoldersOnly) {
  XCVarnisSetup setup;
  setup.SetConfigurationPath("/some/where");
  EXPECT_EQ(setup.ConfigurationPath(), u"/some/where/");
  setup.SetConfigurationPath("/some/where/");
  EXPECT_EQ(setup.ConfigurationPath(), u"/some/where/");
  setup.SetConfigurationPath("/some/sitio ñ");
  EXPECT_EQ(setup.ConfigurationPath(), u"/some/sitio ñ/");
  setup.SetImageFolder("/images");
  EXPECT_EQ(setup.getImageFilePath(u"OK-16.png"), u"/images/OK-16.png");
}

TEST(Setup, DriverTypesHaveADisplayName) {
  const XCVarnisSetup& setup = XCVarnisSetup::Get();
  EXPECT_EQ(setup.DriverName(u"ZELLAMPMANAGER"), u"Lamp manager");
  EXPECT_EQ(setup.DriverName(u"SOMETHING"), u"SOMETHING") << "a type that is not known";
  EXPECT_EQ(setup.DriverName(u""), u"");
  EXPECT_EQ(setup.DriverImage(u"ZELLAMPMANAGER"), "ZELLAMPMANAGER-20.png");
  EXPECT_EQ(setup.DriverImage(u"ZELLAMP"), "ZELLAMP-20.png");
  EXPECT_EQ(setup.DriverImage(u"SOMETHING"), "DEVICE-20.png");
}

TEST(Setup, TypesThatReachTheirDevicesOverTheNetworkShareTheAddressSpace) {
  for (const char16_t* type : {u"MODBUSTCP", u"MODBUSRTUTCP", u"TCP", u"UDP", u"TCPSERIAL"})
    EXPECT_TRUE(host::sharesAddressSpace(type)) << XCBasicString(type).ToUtf8();
  for (const char16_t* type : {u"ZELLAMP", u"", u"tcp", u"UNKNOWN"})
    EXPECT_FALSE(host::sharesAddressSpace(type)) << XCBasicString(type).ToUtf8();
}

TEST(Setup, MarkersAreSetUntilTheyAreValidated) {
  XCVarnisGuids& guids = XCVarnisGuids::Get();
  constexpr std::size_t Entry = XCVarnisGuids::DeviceConfiguration;
  EXPECT_EQ(Entry, 22U);
  guids.Validate(Entry);
  EXPECT_FALSE(guids.IsInvalid(Entry));
  guids.Invalidate(Entry);
  EXPECT_TRUE(guids.IsInvalid(Entry));
  EXPECT_FALSE(guids.IsInvalid(Entry + 1));
  guids.Validate(Entry);
  EXPECT_FALSE(guids.IsInvalid(Entry));
}

class MainCfg : public testing::Test {
 protected:
  ~MainCfg() override {
    cfg.Document().Clear();
    cfg.SetChangeListener(nullptr);
  }
  XCMainCfg& cfg = XCMainCfg::Get();
};

TEST_F(MainCfg, DevicesAndViewSetupsAreFoundByTheirId) {
  ASSERT_TRUE(cfg.Document().Parse(
      "<configuration><commSystem><device><id>{1}</id><n>1</n></device>"
      "<device><id>a/b?%s</id><n>2</n></device></commSystem>"
      "<viewSetups><viewSetup><driverId>{1}</driverId><n>3</n></viewSetup></viewSetups>"
      "</configuration>"));
  ASSERT_NE(cfg.DeviceNode(u"{1}"), nullptr);
  EXPECT_EQ(cfg.DeviceNode(u"{1}")->Value("n"), u"1");
  EXPECT_EQ(cfg.DeviceNode(u"a/b?%s")->Value("n"), u"2");
  EXPECT_EQ(cfg.DeviceNode(u"{2}"), nullptr);
  EXPECT_EQ(cfg.ViewSetup(u"{1}")->Value("n"), u"3");
  EXPECT_EQ(cfg.ViewSetup(u"{2}"), nullptr);
}

TEST_F(MainCfg, AnEmptyConfigurationHasNeither) {
  cfg.Document().Clear();
  EXPECT_EQ(cfg.DeviceNode(u"{1}"), nullptr);
  EXPECT_EQ(cfg.ViewSetup(u"{1}"), nullptr);
  cfg.Document().Create("configuration");
  EXPECT_EQ(cfg.DeviceNode(u"{1}"), nullptr);
  EXPECT_EQ(cfg.ViewSetup(u"{1}"), nullptr);
}

TEST_F(MainCfg, ItsListenerHearsOfChanges) {
  int heard = 0;
  cfg.NotifyChanged();
  cfg.SetChangeListener([&] { ++heard; });
  cfg.NotifyChanged();
  cfg.NotifyChanged();
  EXPECT_EQ(heard, 2);
}

}  // namespace
