#include "driver/configuration_menu.h"
#include "tests/programs/calendar_editor_fixture.h"

// The menu opens the group schedules and the calendar for the kind of programs that the controller
// has.

namespace {

using host::MessageAnswer;
using support::TopKind;

class ProgramsMenu : public support::CalendarEditor {
 protected:
  XCDeviceCfgZelLampManager& openMenu(const std::string& attributes) {
    driver.channel().replyWith("<deviceCfg><ZelLamp Id='LM-0001'><L01 " + attributes +
                               "/></ZelLamp></deviceCfg>");
    auto& menu =
        driver.show<XCDeviceCfgZelLampManager>(nullptr, &manager.driver, manager.element());
    driver.channel().forget();
    element = support::compactXml(*manager.element());
    return menu;
  }
};

TEST_F(ProgramsMenu, TheInputsOfTheControllerDecideWhichProgramsAreRead) {
  const std::pair<const char*, const char*> cases[] = {{"InputsDetected='Y'", "L17"},
                                                       {"InputsDetected='y'", "L06"},
                                                       {"InputsDetected='N'", "L06"},
                                                       {"", "L06"}};
  for (const auto& [attributes, section] : cases) {
    openMenu(attributes);
    driver.channel().replyWith("<deviceCfg/>");
    driver.click(6552);
    EXPECT_EQ(driver.dialog().ClassName(), "CDlgE06CfgZelLampManager");
    EXPECT_XML_EQ("<deviceCfg><" + std::string(section) + "/></deviceCfg>",
                  driver.channel().last().request);
    EXPECT_EQ(driver.channel().last().parameter("identifier"), "LM-0001");
    driver.closeAll();
  }
}

TEST_F(ProgramsMenu, TheInputsOfTheControllerDecideTheKindOfItsCalendar) {
  for (const char* inputs : {"Y", "N"}) {
    openMenu("InputsDetected='" + std::string(inputs) + "'");
    driver.click(6792);
    EXPECT_EQ(driver.dialog().ClassName(), "XCDeviceCalendarZelLAMPManager");
    EXPECT_EQ(driver.title(), "[32715] - Main street");
    driver.click("dayTypes");
    EXPECT_EQ(driver.enabled("time1"), std::string(inputs) == "N");
    EXPECT_EQ(driver.channel().count(), 0U);
    driver.closeAll();
  }
}

TEST_F(ProgramsMenu, AnAssignedCalendarIsNotedByTheMenu) {
  auto& menu = openMenu("");
  driver.click(6792);
  driver.click("ok");
  EXPECT_EQ(menu.CalendarChanged(), 0);
  driver.click(6792);
  paintAs(1, {2025, 4, 10});
  driver.click("ok");
  enterName("Winter");
  EXPECT_EQ(menu.CalendarChanged(), 1);
  EXPECT_EQ(manager.element()->Value("calendar").ToUtf8(), "Winter");
  EXPECT_TRUE(markedAsChanged());
  EXPECT_EQ(driver.dialog().ClassName(), "XCDeviceCfgZelLampManager");
}

TEST_F(ProgramsMenu, TheWindowsCloseButtonKeepsNothing) {
  openMenu("");
  driver.click(6792);
  paintAs(1, {2025, 4, 10});
  driver.close();
  EXPECT_EQ(driver.dialog().ClassName(), "XCDeviceCfgZelLampManager");
  EXPECT_EQ(support::compactXml(*manager.element()), element);
}

}  // namespace
