#include <gtest/gtest.h>

#include "driver/configuration_menu.h"
#include "tests/support/dialog_driver.h"
#include "tests/support/lamp_manager.h"
#include "tests/support/xml_compare.h"

namespace {

using support::TopKind;

struct Entry {
  int button;
  const char* caption;
  const char* opens;
  const char* reads;
};

// In the order of the menu.
constexpr Entry Entries[] = {
    {6358, "[32346]", "CDlgE01CfgZelLampManager", "<deviceCfg><L01/></deviceCfg>"},
    {6512, "[35538]", "CDlgE04CfgZelLampManager", "<deviceCfg><L04/></deviceCfg>"},
    {6528, "[38434]", "CDlgE05CfgZelLampManager", "<deviceCfg><L05/></deviceCfg>"},
    {6581, "[303]", "CDlgE07CfgZelLampManager", "<deviceCfg><L07/></deviceCfg>"},
    {6587, "[38446]", "CDlgE08CfgZelLampManager", "<deviceCfg><L04/></deviceCfg>"},
    {6616, "[38520]", "CDlgE09CfgZelLampManager", "<deviceCfg><L04/></deviceCfg>"},
    {6623, "[38552]", "CDlgE11CfgZelLampManager", "<deviceCfg><L04/></deviceCfg>"},
};

class MenuOpensPages : public testing::Test {
 protected:
  MenuOpensPages() {
    driver.channel().replyWith("<deviceCfg/>");
    driver.show<XCDeviceCfgZelLampManager>(nullptr, &manager.driver, manager.element());
  }

  support::LampManager manager;
  support::DialogDriver driver;
};

TEST_F(MenuOpensPages, EveryButtonOpensItsPageOverItsSection) {
  for (const Entry& entry : Entries) {
    SCOPED_TRACE(entry.opens);
    EXPECT_EQ(driver.text(entry.button), entry.caption);
    driver.channel().replyWith("<deviceCfg/>");
    driver.click(entry.button);
    ASSERT_EQ(driver.dialog().ClassName(), entry.opens);
    EXPECT_XML_EQ(entry.reads, driver.channel().last().request);
    EXPECT_EQ(driver.channel().last().parameter("identifier"), "LM-0001");
    driver.click("cancel");
    EXPECT_EQ(driver.dialog().ClassName(), "XCDeviceCfgZelLampManager");
  }
}

TEST_F(MenuOpensPages, TheButtonsStandInTheOrderOfTheMenu) {
  std::vector<int> shown;
  for (const auto& control : driver.dialog().Controls())
    for (const Entry& entry : Entries)
      if (entry.button == control->id()) shown.push_back(control->id());
  std::vector<int> expected;
  for (const Entry& entry : Entries) expected.push_back(entry.button);
  EXPECT_EQ(shown, expected);
}

const host::LayoutItem* find(const host::LayoutItem& item, int id) {
  if (item.controlId == id) return &item;
  for (const host::LayoutItem& part : item.items)
    if (const host::LayoutItem* found = find(part, id)) return found;
  return nullptr;
}

TEST_F(MenuOpensPages, TheNodePowerStandsAmongThePrograms) {
  const host::LayoutItem* programs = find(driver.dialog().Arrangement(), 6527);
  ASSERT_NE(programs, nullptr);
  EXPECT_NE(find(*programs, 6528), nullptr);
  EXPECT_EQ(find(*programs, 6581), nullptr);
  EXPECT_TRUE(driver.visible(6527));
}

}  // namespace
