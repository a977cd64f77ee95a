#include <gtest/gtest.h>

#include <memory>

#include "driver/options_dialog.h"
#include "host/services/drivers.h"
#include "tests/support/dialog_driver.h"
#include "tests/support/lamp_manager.h"

extern "C" bool InitializeUsrDriver_ZelLampManager();

namespace {

using support::TopKind;

class Entry : public testing::Test {
 protected:
  ~Entry() override { host::removeRegistration(XCDriverDeviceZelLampManager::GetThisClass()); }

  const host::DriverRegistration& registration() {
    return *host::findRegistration(u"ZELLAMPMANAGER");
  }

  bool listed = false;
  bool answered = false;
  XCNameList names;
  support::LampManager manager;
  support::DialogDriver driver;

  void list(XCDriverServices::List callback, XCListFlags flags) {
    driver.run([this, callback, flags] {
      listed = callback(nullptr, &manager.driver, names, flags, 0, XCBasicString());
      answered = true;
    });
  }
};

TEST_F(Entry, RegistersTheDeviceClassWithAllItsCallbacks) {
  EXPECT_TRUE(InitializeUsrDriver_ZelLampManager());
  EXPECT_EQ(registration().deviceClass, &XCDriverDeviceZelLampManager::GetThisClass());
  EXPECT_NE(registration().configure, nullptr);
  EXPECT_NE(registration().listA, nullptr);
  EXPECT_NE(registration().listB, nullptr);
  EXPECT_NE(registration().createChildOptions, nullptr);
}

TEST_F(Entry, RefusedByTheHostRegistersNothingElse) {
  ASSERT_TRUE(XCDriverServices::Add(XCDriverDeviceZelLampManager::GetThisClass(), nullptr, nullptr,
                                    nullptr));
  EXPECT_FALSE(InitializeUsrDriver_ZelLampManager());
  EXPECT_EQ(registration().createChildOptions, nullptr);
}

TEST_F(Entry, ConfigureIsTrueExactlyWhenThePanelEndedWithOk) {
  ASSERT_TRUE(InitializeUsrDriver_ZelLampManager());
  bool configured = false;
  driver.run([&] { configured = registration().configure(nullptr, &manager.driver); });
  ASSERT_EQ(driver.top(), TopKind::dialog);
  EXPECT_EQ(driver.dialog().ClassName(), "CDlgOptionsZelLampManager");
  EXPECT_FALSE(configured);
  driver.click("ok");
  EXPECT_TRUE(configured);
}

TEST_F(Entry, ConfigureOfADriverThatIsNoDevicesOpensAPanelThatOffersNothing) {
  ASSERT_TRUE(InitializeUsrDriver_ZelLampManager());
  XCDriver lamp(u"ZELLAMP", u"0001", u"0001", u"Gate");
  driver.run([&] { registration().configure(nullptr, &lamp); });
  ASSERT_EQ(driver.top(), TopKind::dialog);
  EXPECT_FALSE(driver.tryClick("driver").done);
}

TEST_F(Entry, ListAOffersTheBoardForTheFlags2And4) {
  ASSERT_TRUE(InitializeUsrDriver_ZelLampManager());
  for (const unsigned long long bits : {1ULL << 2, 1ULL << 4, 1ULL << 2 | 1ULL << 4}) {
    names = {u"another", u"main street.IOBOARD"};
    list(registration().listA, XCListFlags(bits));
    EXPECT_TRUE(answered && listed) << bits;
    EXPECT_EQ(names, XCNameList{u"Main street.IOBOARD"}) << bits;
  }
}

TEST_F(Entry, ListAComesBackEmptyWhenTheBoardIsListedAlready) {
  ASSERT_TRUE(InitializeUsrDriver_ZelLampManager());
  names = {u"another", u"Main street.IOBOARD"};
  list(registration().listA, XCListFlags(1U << 2));
  EXPECT_TRUE(listed);
  EXPECT_TRUE(names.empty());
}

TEST_F(Entry, ListARefusesEveryOtherFlag) {
  ASSERT_TRUE(InitializeUsrDriver_ZelLampManager());
  XCListFlags flags;
  flags.set();
  flags.reset(2);
  flags.reset(4);
  names = {u"kept"};
  list(registration().listA, flags);
  ASSERT_EQ(driver.top(), TopKind::message);
  EXPECT_EQ(driver.message().text, "[32239]");
  EXPECT_EQ(driver.message().buttons, host::MessageButtons::ok);
  driver.answer(host::MessageAnswer::ok);
  EXPECT_FALSE(listed);
  EXPECT_EQ(names, XCNameList{u"kept"});
}

TEST_F(Entry, ListBRefusesWhateverItIsAsked) {
  ASSERT_TRUE(InitializeUsrDriver_ZelLampManager());
  names = {u"kept"};
  list(registration().listB, XCListFlags(1U << 2 | 1U << 4));
  ASSERT_EQ(driver.top(), TopKind::message);
  EXPECT_EQ(driver.message().text, "[32239]");
  driver.answer(host::MessageAnswer::ok);
  EXPECT_FALSE(listed);
  EXPECT_EQ(names, XCNameList{u"kept"});
}

// An editor's window that can't take children.
TEST_F(Entry, TheFactoryAnswersNoneWhenThePanelCannotBeShown) {
  ASSERT_TRUE(InitializeUsrDriver_ZelLampManager());
  driver.refuseChildren();
  XCDlgOptions* panel = nullptr;
  driver.run([&] { panel = registration().createChildOptions(nullptr, &manager.driver); });
  EXPECT_EQ(panel, nullptr);
}

TEST_F(Entry, TheFactoryMakesAChildPanelInTheColourOfWindows) {
  ASSERT_TRUE(InitializeUsrDriver_ZelLampManager());
  std::unique_ptr<XCDlgOptions> panel;
  driver.run([&] { panel.reset(registration().createChildOptions(nullptr, &manager.driver)); });
  ASSERT_NE(panel, nullptr);
  EXPECT_TRUE(panel->IsChild());
  EXPECT_EQ(panel->BackgroundColor(), GetSysColor(COLOR_WINDOW));
  EXPECT_FALSE(panel->GetDlgItem(IDOK).isVisible()) << "a child has nothing to close";
  driver.run([&] { panel.reset(); });
}

}  // namespace
