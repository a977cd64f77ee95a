#include "driver/configuration_menu.h"

#include <gtest/gtest.h>

#include "tests/support/dialog_driver.h"
#include "tests/support/lamp_manager.h"
#include "tests/support/xml_compare.h"

namespace {

using support::TopKind;

class ConfigurationMenu : public testing::Test {
 protected:
  XCDeviceCfgZelLampManager& open(const std::string& reply) {
    driver.channel().replyWith(reply);
    return driver.show<XCDeviceCfgZelLampManager>(nullptr, &manager.driver, manager.element());
  }

  std::string general(const std::string& attributes) {
    return "<deviceCfg><ZelLamp Id='LM-0001'><L01 " + attributes + "/></ZelLamp></deviceCfg>";
  }

  support::LampManager manager;
  support::DialogDriver driver;
};

TEST_F(ConfigurationMenu, ReadsTheGeneralSectionOnceAndShowsWhoTheControllerIs) {
  open(general("Mod='LM-500' Vf='2.1' VfComm='1.0' Af='2023' InputsDetected='Y'"));
  EXPECT_EQ(driver.title(), "[523](Lamp manager)") << driver.title();
  EXPECT_EQ(driver.text(5002), "LM-0001");
  EXPECT_EQ(driver.text(5010), "Main street");
  EXPECT_EQ(driver.text(5005), "From the bridge to the park");
  EXPECT_EQ(driver.text(5007), "LM-500");
  EXPECT_EQ(driver.text(5009), "2.1 / 1.0");
  EXPECT_EQ(driver.text(6361), "2023");
  ASSERT_EQ(driver.channel().count(), 1U);
  EXPECT_EQ(driver.channel().last().command, 1);
  EXPECT_XML_EQ("<deviceCfg><L01/></deviceCfg>", driver.channel().last().request);
}

TEST_F(ConfigurationMenu, CaptionsStandAtTheirControls) {
  open(general(""));
  const std::pair<int, const char*> captions[] = {
      {5000, "[282]"}, {5001, "[290]"},   {5003, "[355]"},   {5004, "[284]"},   {5006, "[285]"},
      {5008, "[286]"}, {6360, "[38302]"}, {6358, "[32346]"}, {6512, "[35538]"}, {1, "[419]"}};
  for (const auto& [id, text] : captions) EXPECT_EQ(driver.text(id), text) << id;
  EXPECT_EQ(driver.image(1), "EXIT-16.png");
}

TEST_F(ConfigurationMenu, MissingAttributesShowAsEmpty) {
  open(general(""));
  EXPECT_EQ(driver.text(5007), "");
  EXPECT_EQ(driver.text(5009), " / ");
  EXPECT_EQ(driver.text(6361), "");
}

TEST_F(ConfigurationMenu, WithoutTheGeneralSectionOnlyTheIdentityShows) {
  open("<deviceCfg><ZelLamp Id='LM-0001'/></deviceCfg>");
  EXPECT_EQ(driver.text(5002), "LM-0001");
  EXPECT_EQ(driver.text(5010), "Main street");
  EXPECT_EQ(driver.text(5009), "");
}

TEST_F(ConfigurationMenu, WithoutTheControllersElementNameAndDescriptionShow) {
  open("<deviceCfg/>");
  EXPECT_EQ(driver.text(5002), "");
  EXPECT_EQ(driver.text(5010), "Main street");
  EXPECT_EQ(driver.text(5005), "From the bridge to the park");
}

TEST_F(ConfigurationMenu, AReplyWithoutRootShowsNothingAndLeavesAllButtonsEnabled) {
  driver.channel().replyEmpty();
  driver.show<XCDeviceCfgZelLampManager>(nullptr, &manager.driver, manager.element());
  for (const int id : {5002, 5010, 5005, 5007, 5009, 6361}) EXPECT_EQ(driver.text(id), "") << id;
  for (const auto& control : driver.dialog().Controls())
    EXPECT_TRUE(control->isEnabled()) << control->name();
}

TEST_F(ConfigurationMenu, TheInputsFollowTheReport) {
  EXPECT_TRUE(open(general("InputsDetected='Y'")).InputsDetected());
  driver.closeAll();
  for (const char* value : {"InputsDetected='y'", "InputsDetected='N'", "InputsDetected=''", ""}) {
    auto& menu = open(general(value));
    EXPECT_FALSE(menu.InputsDetected()) << value;
    if (const host::Control* button = menu.FindControl(6630)) {
      EXPECT_FALSE(button->isEnabled()) << value;
      EXPECT_FALSE(button->disabledReason().IsEmpty());
    }
    driver.closeAll();
  }
}

TEST_F(ConfigurationMenu, WithoutTheSectionTheInputsButtonStaysEnabled) {
  auto& menu = open("<deviceCfg><ZelLamp Id='1'/></deviceCfg>");
  EXPECT_FALSE(menu.InputsDetected());
  if (const host::Control* button = menu.FindControl(6630)) {
    EXPECT_TRUE(button->isEnabled());
  }
}

TEST_F(ConfigurationMenu, AReadThatFailsShowsWhyAndTheMenuDoesNotOpen) {
  driver.channel().failWith("No answer.");
  driver.show<XCDeviceCfgZelLampManager>(nullptr, &manager.driver, manager.element());
  ASSERT_EQ(driver.top(), TopKind::message);
  EXPECT_EQ(driver.message().text, "No answer.");
  driver.answer(host::MessageAnswer::ok);
  EXPECT_EQ(driver.top(), TopKind::none);
  EXPECT_EQ(driver.result(), IDCANCEL);
}

TEST_F(ConfigurationMenu, AReadThatFailsWithoutTextShowsTheReadMessage) {
  driver.channel().failWith("");
  driver.show<XCDeviceCfgZelLampManager>(nullptr, &manager.driver, manager.element());
  EXPECT_EQ(driver.message().text, "[330]");
}

TEST_F(ConfigurationMenu, AReadThatTheUserCancelledShowsNothing) {
  driver.channel().cancel();
  driver.show<XCDeviceCfgZelLampManager>(nullptr, &manager.driver, manager.element());
  EXPECT_EQ(driver.top(), TopKind::none);
  EXPECT_EQ(driver.result(), IDCANCEL);
}

TEST_F(ConfigurationMenu, AButtonOpensItsPageAndTheMenuIsThereAgainAfterwards) {
  open(general(""));
  driver.channel().replyWith("<deviceCfg><ZelLamp><L04/></ZelLamp></deviceCfg>");
  driver.click(6512);
  EXPECT_EQ(driver.dialog().ClassName(), "CDlgE04CfgZelLampManager");
  EXPECT_EQ(driver.dialog().TemplateNumber(), 4538);
  driver.click("cancel");
  EXPECT_EQ(driver.dialog().TemplateNumber(), 4528);
}

// The controller is addressed alike from the menu and from its pages.
TEST_F(ConfigurationMenu, MenuAndPagesSendTheSameNineParameters) {
  open(general(""));
  driver.channel().replyWith("<deviceCfg/>");
  driver.click(6358);
  const std::vector<std::pair<std::string, std::string>> expected = {{"driver", "ZELLAMPMANAGER"},
                                                                     {"type", "ZELLAMPMANAGER"},
                                                                     {"identifier", "LM-0001"},
                                                                     {"address", "192.168.1.20"},
                                                                     {"socket", "8080"},
                                                                     {"ftpAddress", "192.168.1.2"},
                                                                     {"ftpPort", "21"},
                                                                     {"ftpUser", "lamps"},
                                                                     {"ftpPassword", "secret"}};
  EXPECT_EQ(driver.channel().exchanges()[0].parameters, expected);
  EXPECT_EQ(driver.channel().exchanges()[1].parameters, expected);
}

TEST_F(ConfigurationMenu, ExitAndCloseSendNothing) {
  open(general(""));
  driver.click("ok");
  EXPECT_EQ(driver.result(), IDOK);
  open(general(""));
  driver.close();
  EXPECT_EQ(driver.result(), IDCANCEL);
  EXPECT_EQ(driver.channel().count(), 2U) << "the two reads";
}

}  // namespace
