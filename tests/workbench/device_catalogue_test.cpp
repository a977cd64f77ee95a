#include "workbench/device_catalogue.h"

#include <gtest/gtest.h>

#include "host/services/setup.h"

namespace {

using workbench::DeviceCatalogue;
using Node = XmlDocument::XmlNode;

constexpr const char* Configuration = R"(<configuration><commSystem>
<device><id>{1}</id><driver>ZELLAMPMANAGER</driver><name>North</name><description>d</description>
 <childDevices>
  <childDevice><id>{11}</id><driver>ZELLAMP</driver><name>0001</name><description>Gate</description></childDevice>
  <other><id>{12}</id></other>
 </childDevices></device>
<device><id>{2}</id><driver>TCP</driver><name>South</name></device>
<device><id>{2}</id><driver>UDP</driver><name>Twin</name></device>
<device><driver>TCP</driver><name>NoId</name></device>
</commSystem></configuration>)";

class DeviceCatalogueTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(XCMainCfg::Get().Document().Parse(Configuration));
    host::setDriverRegistry(&catalogue);
  }
  void TearDown() override {
    host::setDriverRegistry(nullptr);
    XCMainCfg::Get().Document().Clear();
  }
  Node& north() { return *DeviceCatalogue::deviceNamed(u"North"); }

  DeviceCatalogue catalogue;
};

TEST_F(DeviceCatalogueTest, ALampManagerHasItsOwnClass) {
  XCDriver* driver = XCDriver::LockDriver(u"{1}");
  ASSERT_NE(dynamic_cast<XCDriverDeviceZelLampManager*>(driver), nullptr);
  EXPECT_EQ(driver->Type(), u"ZELLAMPMANAGER");
  EXPECT_EQ(driver->Identifier(), u"{1}");
  EXPECT_EQ(driver->Name(), u"North");
  EXPECT_EQ(driver->Description(), u"d");
}

TEST_F(DeviceCatalogueTest, DriversAreFoundWhileTheirElementsAreRemovedAndReleased) {
  ASSERT_NE(XCDriver::LockDriver(u"{1}"), nullptr);
  XmlDocument& document = XCMainCfg::Get().Document();
  for (int i = 0; i < 10; ++i) {
    document.Root()->RemoveChildren();
    for (int more = 0; more < 5000; ++more) document.Root()->NewChild("more");
    document.ReleaseRemoved();
  }
  XCDriver* lamp = XCDriver::LockDriver(u"{11}");
  ASSERT_NE(lamp, nullptr);
  EXPECT_EQ(lamp->Identifier(), u"0001");
}

TEST_F(DeviceCatalogueTest, ALampIsFoundByTheChildsIdAndIdentifiedByItsName) {
  XCDriver* lamp = XCDriver::LockDriver(u"{11}");
  ASSERT_NE(lamp, nullptr);
  EXPECT_EQ(dynamic_cast<XCDriverDevice*>(lamp), nullptr);
  EXPECT_EQ(lamp->Type(), u"ZELLAMP");
  EXPECT_EQ(lamp->Identifier(), u"0001");
  EXPECT_EQ(lamp->Description(), u"Gate");
}

TEST_F(DeviceCatalogueTest, OtherDevicesAreDriversTooAndTheFirstOfTwoIdsCounts) {
  XCDriver* driver = XCDriver::LockDriver(u"{2}");
  ASSERT_NE(driver, nullptr);
  EXPECT_EQ(driver->Name(), u"South");
  EXPECT_EQ(dynamic_cast<XCDriverDeviceZelLampManager*>(driver), nullptr);
  EXPECT_NE(dynamic_cast<XCDriverDevice*>(driver), nullptr);
}

TEST_F(DeviceCatalogueTest, WhatIsNoDeviceIsNotFound) {
  EXPECT_EQ(XCDriver::LockDriver(u"{12}"), nullptr);
  EXPECT_EQ(XCDriver::LockDriver(u"{9}"), nullptr);
  EXPECT_EQ(XCDriver::LockDriver(u""), nullptr);
}

TEST_F(DeviceCatalogueTest, OneDeviceHasOneDriverUntilItsDataChange) {
  XCDriver* before = XCDriver::LockDriver(u"{1}");
  EXPECT_EQ(XCDriver::LockDriver(u"{1}"), before);
  north().SetValue("name", u"Centre");
  XCDriver* after = XCDriver::LockDriver(u"{1}");
  EXPECT_EQ(after->Name(), u"Centre");
  EXPECT_EQ(before->Name(), u"North") << "a driver that was handed out stays as it was";
}

TEST_F(DeviceCatalogueTest, AddedAndRemovedDevicesCountFromTheNextInvalidationOn) {
  XCDriver* before = XCDriver::LockDriver(u"{1}");
  XCMainCfg::Get().Root()->RemoveChild(&north());
  Node& added = XCMainCfg::Get().Root()->Node("commSystem")->NewChild("device");
  added.SetValue("id", u"{3}");
  catalogue.invalidate();
  EXPECT_EQ(XCDriver::LockDriver(u"{1}"), nullptr);
  EXPECT_EQ(XCDriver::LockDriver(u"{11}"), nullptr);
  EXPECT_NE(XCDriver::LockDriver(u"{3}"), nullptr);
  EXPECT_EQ(before->Name(), u"North");
}

TEST_F(DeviceCatalogueTest, FindsDevicesByTheirExactName) {
  EXPECT_NE(DeviceCatalogue::deviceNamed(u"South"), nullptr);
  EXPECT_EQ(DeviceCatalogue::deviceNamed(u"south"), nullptr);
  EXPECT_EQ(DeviceCatalogue::devices().size(), 4U);
}

TEST_F(DeviceCatalogueTest, AnEmptyDocumentHasNoDevices) {
  XCMainCfg::Get().Document().Clear();
  catalogue.invalidate();
  EXPECT_TRUE(DeviceCatalogue::devices().empty());
  EXPECT_EQ(XCDriver::LockDriver(u"{1}"), nullptr);
}

// A child device in front of it, even of a device in front of it, does not hide a device.
TEST_F(DeviceCatalogueTest, ADeviceIsFoundBeforeAChildDeviceWithItsId) {
  ASSERT_TRUE(XCMainCfg::Get().Document().Parse(
      "<configuration><commSystem><device><id>{1}</id><childDevices><childDevice><id>{2}</id>"
      "<driver>ZELLAMP</driver></childDevice></childDevices></device>"
      "<device><id>{2}</id><driver>ZELLAMPMANAGER</driver></device></commSystem></configuration>"));
  catalogue.invalidate();
  EXPECT_NE(dynamic_cast<XCDriverDeviceZelLampManager*>(XCDriver::LockDriver(u"{2}")), nullptr);
}

}  // namespace
