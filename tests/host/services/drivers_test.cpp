#include "host/services/drivers.h"

#include <gtest/gtest.h>

#include <map>

namespace {

bool configureA(CWnd*, XCDriver*) {
  return true;
}
bool listA(CWnd*, XCDriver*, XCNameList& names, const XCListFlags&, int, XCBasicString) {
  names.push_back(u"A");
  return true;
}
bool listB(CWnd*, XCDriver*, XCNameList& names, const XCListFlags&, int, XCBasicString) {
  names.push_back(u"B");
  return false;
}
XCDlgOptions* createPanel(CWnd*, XCDriver*) {
  return nullptr;
}

class Registrations : public testing::Test {
 protected:
  ~Registrations() override {
    host::removeRegistration(first);
    host::removeRegistration(second);
  }
  const host::DriverClass first{"First", u"FIRST"};
  const host::DriverClass second{"Second", u"SECOND"};
};

TEST_F(Registrations, AClassIsFoundByItsType) {
  EXPECT_EQ(host::findRegistration(u"FIRST"), nullptr);
  EXPECT_TRUE(XCDriverServices::Add(first, &configureA, &listA, &listB));
  EXPECT_TRUE(XCDriverServices::Add(second, &configureA, &listA, &listB));
  const host::DriverRegistration* found = host::findRegistration(u"FIRST");
  ASSERT_NE(found, nullptr);
  EXPECT_EQ(found->deviceClass, &first);
  EXPECT_EQ(found->configure, &configureA);
  XCNameList names;
  EXPECT_TRUE(found->listA(nullptr, nullptr, names, {}, 0, u""));
  EXPECT_FALSE(found->listB(nullptr, nullptr, names, {}, 0, u""));
  EXPECT_EQ(names, (XCNameList{u"A", u"B"}));
  EXPECT_EQ(found->createChildOptions, nullptr);
  EXPECT_EQ(host::findRegistration(u"first"), nullptr);
}

TEST_F(Registrations, AClassRegistersOnce) {
  EXPECT_TRUE(XCDriverServices::Add(first, &configureA, &listA, &listB));
  EXPECT_FALSE(XCDriverServices::Add(first, nullptr, nullptr, nullptr));
  EXPECT_EQ(host::findRegistration(u"FIRST")->configure, &configureA);
}

TEST_F(Registrations, TheFactoryOfThePanelComesAfterTheClassAndOnce) {
  EXPECT_FALSE(XCDriverServices::AddCreateChildOptionsDlg(first, &createPanel));
  EXPECT_TRUE(XCDriverServices::Add(first, &configureA, &listA, &listB));
  EXPECT_TRUE(XCDriverServices::AddCreateChildOptionsDlg(first, &createPanel));
  EXPECT_FALSE(XCDriverServices::AddCreateChildOptionsDlg(first, &createPanel));
  EXPECT_EQ(host::findRegistration(u"FIRST")->createChildOptions, &createPanel);
}

TEST_F(Registrations, ARemovedClassMayRegisterAgain) {
  EXPECT_TRUE(XCDriverServices::Add(first, &configureA, &listA, &listB));
  host::removeRegistration(first);
  EXPECT_EQ(host::findRegistration(u"FIRST"), nullptr);
  EXPECT_TRUE(XCDriverServices::Add(first, &configureA, &listA, &listB));
}

TEST(DriverClass, TheLampManagersClassServesItsType) {
  const host::DriverClass& lampManager = XCDriverDeviceZelLampManager::GetThisClass();
  EXPECT_EQ(lampManager.name, "XCDriverDeviceZelLampManager");
  EXPECT_EQ(lampManager.type, u"ZELLAMPMANAGER");
  EXPECT_EQ(&lampManager, &XCDriverDeviceZelLampManager::GetThisClass());
}

TEST(DriverRegistry, ADriverIsLockedByTheIdOfItsDevice) {
  class Registry : public host::DriverRegistry {
   public:
    XCDriver* find(std::u16string_view id) override { return id == u"{1}" ? &driver : nullptr; }
    XCDriver driver{u"ZELLAMP", u"node 7", u"{1}", u"by the church"};
  } registry;
  EXPECT_EQ(XCDriver::LockDriver(u"{1}"), nullptr) << "no registry yet";
  host::setDriverRegistry(&registry);
  EXPECT_EQ(XCDriver::LockDriver(u"{1}"), &registry.driver);
  EXPECT_EQ(XCDriver::LockDriver(u"{2}"), nullptr);
  EXPECT_EQ(registry.driver.Type(), u"ZELLAMP");
  EXPECT_EQ(registry.driver.Identifier(), u"node 7");
  EXPECT_EQ(registry.driver.Name(), u"{1}");
  EXPECT_EQ(registry.driver.Description(), u"by the church");
  host::setDriverRegistry(nullptr);
}

}  // namespace
