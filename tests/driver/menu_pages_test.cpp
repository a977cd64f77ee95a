#include <gtest/gtest.h>

#include "driver/configuration_menu.h"
#include "tests/support/dialog_driver.h"
#include "tests/support/lamp_manager.h"
#include "tests/support/xml_compare.h"

namespace {

struct Entry {
  int button;
  const char* text;
  const char* opens;
  const char* reads;  // the section; empty for a page that reads nothing
};

// In the order in which the menu shows them.
constexpr Entry Entries[] = {
    {6358, "[32346]", "CDlgE01CfgZelLampManager", "L01"},
    {6461, "[38362]", "CDlgE02CfgZelLampManager", "L02"},
    {6510, "[38003]", "CDlgE03CfgZelLampManager", ""},
    {6512, "[35538]", "CDlgE04CfgZelLampManager", "L04"},
    {6528, "[38434]", "CDlgE05CfgZelLampManager", "L05"},
    {6552, "[38435]", "CDlgE06CfgZelLampManager", "L17"},
    {6581, "[303]", "CDlgE07CfgZelLampManager", "L07"},
    {6587, "[38446]", "CDlgE08CfgZelLampManager", "L04"},
    {6616, "[38520]", "CDlgE09CfgZelLampManager", "L04"},
    {6623, "[38552]", "CDlgE11CfgZelLampManager", "L04"},
    {6630, "[38569]", "CDlgE13CfgZelLampManager", "L13"},
    {6792, "[32685]", "XCDeviceCalendarZelLAMPManager", ""},
};

class MenuPages : public testing::Test {
 protected:
  void open() {
    driver.channel().replyWith(
        "<deviceCfg><ZelLamp Id='1'><L01 InputsDetected='Y'/></ZelLamp></deviceCfg>");
    driver.show<XCDeviceCfgZelLampManager>(nullptr, &manager.driver, manager.element());
    driver.channel().forget();
  }

  support::LampManager manager;
  support::DialogDriver driver;
};

TEST_F(MenuPages, EveryPageHasItsButtonInTheMenusOrder) {
  open();
  std::vector<int> shown;
  for (const auto& control : driver.dialog().Controls())
    if (control->kind() == host::ControlKind::button && control->id() != IDOK)
      shown.push_back(control->id());
  std::vector<int> expected;
  for (const Entry& entry : Entries) {
    expected.push_back(entry.button);
    EXPECT_EQ(driver.text(entry.button), entry.text);
    EXPECT_TRUE(driver.enabled(entry.button)) << entry.button;
  }
  EXPECT_EQ(shown, expected);
}

TEST_F(MenuPages, EveryButtonOpensItsPageWhichReadsItsOwnSection) {
  for (const Entry& entry : Entries) {
    open();
    const std::string section = entry.reads;
    if (!section.empty())
      driver.channel().replyWith("<deviceCfg><ZelLamp><" + section + "/></ZelLamp></deviceCfg>");
    driver.click(entry.button);
    EXPECT_EQ(driver.dialog().ClassName(), entry.opens) << entry.button;
    ASSERT_EQ(driver.channel().count(), section.empty() ? 0U : 1U) << entry.button;
    if (!section.empty()) {
      EXPECT_XML_EQ("<deviceCfg><" + section + "/></deviceCfg>", driver.channel().last().request);
    }
    driver.click("cancel");
    EXPECT_EQ(driver.dialog().ClassName(), "XCDeviceCfgZelLampManager") << entry.button;
    driver.closeAll();
  }
}

}  // namespace
