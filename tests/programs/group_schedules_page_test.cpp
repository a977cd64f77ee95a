#include "programs/group_schedules_page.h"

#include "tests/programs/group_schedules_fixture.h"

namespace {

using lamp::ProgramKind;
using support::Cells;
using support::GroupSchedules;
using support::Selection;
using support::TopKind;

// --- opening

TEST_F(GroupSchedules, AnIntervalPageShowsNodesAndCaptions) {
  open();
  EXPECT_EQ(driver.title(), "[38551] - Main street");
  const Cells columns{"[24516]", "T1", "P1", "T2", "P2", "T3", "P3", "T4", "P4"};
  EXPECT_EQ(driver.columns("nodes"), columns);
  EXPECT_EQ(driver.columns("groups"),
            (Cells{"[382]", "T1", "P1", "T2", "P2", "T3", "P3", "T4", "P4"}));
  EXPECT_EQ(driver.rows("nodes"),
            (std::vector<Cells>{{"1", "10", "100", "20", "80", "30", "60", "40", "40"},
                                {"2", "11", "100", "21", "81", "31", "61", "41", "41"},
                                {"3", "11", "100", "21", "82", "31", "61", "41", "41"}}));
  EXPECT_EQ(driver.selection("nodes"), Selection{});
  EXPECT_EQ(fields(), Cells(8));
  EXPECT_EQ(driver.text("step1"), "[232] 1");
  EXPECT_EQ(driver.text("step4"), "[232] 4");
  EXPECT_EQ(driver.text("timeLabel2"), "[666] ([34979])");
  EXPECT_EQ(driver.text("powerLabel3"), "[24534] (%)");
  EXPECT_EQ(driver.text("activation"), "15/03/2025 10:00:00");
  EXPECT_EQ(driver.image("ok"), "OK-16.png");
  EXPECT_EQ(driver.image("cancel"), "CANCEL-16.png");
  EXPECT_TRUE(driver.enabled("time1"));
}

TEST_F(GroupSchedules, AClockPageShowsStartsAndDisablesTheFirst) {
  openClock();
  EXPECT_EQ(
      driver.rows("nodes"),
      (std::vector<Cells>{{"1", "18:05", "100", "22:15", "80", "01:00", "60", "05:45", "40"},
                          {"2", "00:00", "100", "22:15", "80", "01:00", "60", "06:00", "40"}}));
  EXPECT_EQ(driver.text("timeLabel2"), "[38404]");
  EXPECT_FALSE(driver.enabled("time1"));
  EXPECT_EQ(driver.control("time1").disabledReason().ToUtf8(), "[60087]");
  EXPECT_TRUE(driver.enabled("time2"));
  EXPECT_TRUE(driver.enabled("power1"));
  EXPECT_FALSE(driver.tryType("time1", "01:00"));
}

TEST_F(GroupSchedules, EveryChildOfTheSectionIsANodeWhateverItsName) {
  open("<Node Id='1'/><lamp Id='2'/><x/>");
  EXPECT_EQ(driver.column("nodes", 0), (Cells{"1", "2", ""}));
}

TEST_F(GroupSchedules, AReplyWithoutTheSectionLeavesTheListEmpty) {
  openReply("<deviceCfg><ZelLamp><L17><Node Id='1'/></L17></ZelLamp></deviceCfg>");
  EXPECT_TRUE(driver.rows("nodes").empty());
  driver.click("ok");
  expectClosedWithNothingSent();
}

TEST_F(GroupSchedules, AFailedReadIsShownAndThePageStaysClosed) {
  driver.channel().failWith("no answer");
  driver.show<CDlgE06CfgZelLampManager>(&manager.driver, nullptr, ProgramKind::interval);
  EXPECT_EQ(driver.message().text, "no answer");
  driver.answer(host::MessageAnswer::ok);
  EXPECT_EQ(driver.result(), IDCANCEL);
}

TEST_F(GroupSchedules, GroupsAreThoseOfTheControllersOwnGroup) {
  configureUsualGroups();
  open();
  EXPECT_EQ(driver.rows("groups"),
            (std::vector<Cells>{{"Bridge", "", "", "", "", "", "", "", ""},
                                {"Park", "", "", "", "", "", "", "", ""},
                                {"Meters", "", "", "", "", "", "", "", ""},
                                {"Unplugged", "", "", "", "", "", "", "", ""}}));
}

TEST_F(GroupSchedules, AMissingStepOfTheWayToTheGroupsLeavesTheirListEmpty) {
  const char* const configurations[] = {
      "<configuration/>", "<configuration><deviceGroups/></configuration>",
      "<configuration><deviceGroups><groups/></deviceGroups></configuration>",
      "<configuration><deviceGroups><groups><group><id>Main "
      "street</id></group></groups></deviceGroups></configuration>",
      "<configuration><deviceGroups><groups><group><id>main street</id><groups><group><id>A</id>"
      "</group></groups></group></groups></deviceGroups></configuration>"};
  for (const char* configuration : configurations) {
    XCMainCfg::Get().Document().Parse(configuration);
    open();
    EXPECT_TRUE(driver.rows("groups").empty()) << configuration;
    driver.click("cancel");
  }
}

// --- selecting

TEST_F(GroupSchedules, SeveralNodesShowWhatTheyHaveInCommon) {
  open();
  driver.select("nodes", {1});
  EXPECT_EQ(fields(), (Cells{"11", "100", "21", "81", "31", "61", "41", "41"}));
  driver.select("nodes", {1, 2});
  EXPECT_EQ(fields(), (Cells{"11", "100", "21", "", "31", "61", "41", "41"}));
  driver.select("nodes", {0, 1, 2});
  EXPECT_EQ(fields(), (Cells{"", "100", "", "", "", "", "", ""}));
}

TEST_F(GroupSchedules, StartsAreComparedAsTheyAreShown) {
  openClock();
  driver.select("nodes", {0, 1});
  EXPECT_EQ(fields(), (Cells{"", "100", "22:15", "80", "01:00", "60", "", "40"}));
}

TEST_F(GroupSchedules, FillingTheFieldsWritesNothingBack) {
  openClock();
  const auto before = driver.rows("nodes");
  driver.select("nodes", {0, 1});
  driver.select("nodes", {0});
  driver.select("nodes", {});
  EXPECT_EQ(driver.rows("nodes"), before);
  driver.click("ok");
  expectClosedWithNothingSent();
}

TEST_F(GroupSchedules, FieldsKeepTheirTextsWhenNoNodeIsSelected) {
  open();
  driver.select("nodes", {0});
  driver.select("nodes", {});
  EXPECT_EQ(driver.text("time1"), "10");
  driver.type("time1", "77");
  EXPECT_EQ(driver.column("nodes", 1), (Cells{"10", "11", "11"}));
}

TEST_F(GroupSchedules, SelectingAGroupSelectsItsLampsAndShowsTheirValues) {
  configureUsualGroups();
  open();
  driver.select("nodes", {0});
  driver.select("groups", {1});
  EXPECT_EQ(driver.selection("nodes"), (Selection{1, 2}));
  EXPECT_EQ(driver.selection("groups"), Selection{1});
  const Cells common{"11", "100", "21", "", "31", "61", "41", "41"};
  EXPECT_EQ(fields(), common);
  EXPECT_EQ(groupCells(1), (Cells{"Park", "11", "100", "21", "", "31", "61", "41", "41"}));
  EXPECT_EQ(groupCells(0), (Cells{"Bridge", "", "", "", "", "", "", "", ""}));
}

TEST_F(GroupSchedules, SelectingSeveralGroupsSelectsTheLampsOfAll) {
  configureUsualGroups();
  open();
  driver.select("groups", {0, 1, 2});
  EXPECT_EQ(driver.selection("nodes"), (Selection{0, 1, 2}));
  const Cells shown{"", "100", "", "", "", "", "", ""};
  EXPECT_EQ(fields(), shown);
  EXPECT_EQ(groupCells(0), (Cells{"Bridge", "", "100", "", "", "", "", "", ""}));
  EXPECT_EQ(groupCells(1), (Cells{"Park", "", "100", "", "", "", "", "", ""}));
  EXPECT_EQ(groupCells(2), (Cells{"Meters", "", "", "", "", "", "", "", ""}));
}

TEST_F(GroupSchedules, AGroupWithoutLampsSelectsNothingAndKeepsItsCells) {
  configureUsualGroups();
  open();
  driver.select("nodes", {0});
  driver.select("groups", {2});
  EXPECT_EQ(driver.selection("nodes"), Selection{});
  EXPECT_EQ(driver.text("time1"), "10");
  EXPECT_EQ(groupCells(2), (Cells{"Meters", "", "", "", "", "", "", "", ""}));
}

TEST_F(GroupSchedules, ALampWithoutARowIsSkipped) {
  configureUsualGroups();
  open();
  driver.select("groups", {3});
  EXPECT_EQ(driver.top(), TopKind::dialog);
  EXPECT_EQ(driver.selection("nodes"), Selection{});
  EXPECT_EQ(groupCells(3), (Cells{"Unplugged", "", "", "", "", "", "", "", ""}));
}

TEST_F(GroupSchedules, AGroupKeepsItsCellsWhenAnotherIsSelected) {
  configureUsualGroups();
  open();
  driver.select("groups", {0});
  driver.select("groups", {1});
  EXPECT_EQ(groupCells(0), (Cells{"Bridge", "", "100", "", "", "", "", "", ""}));
  EXPECT_EQ(driver.selection("nodes"), (Selection{1, 2}));
}

TEST_F(GroupSchedules, SelectingNodesDeselectsTheGroups) {
  configureUsualGroups();
  open();
  driver.select("groups", {0, 1});
  driver.select("nodes", {2});
  EXPECT_EQ(driver.selection("groups"), Selection{});
  EXPECT_EQ(driver.selection("nodes"), Selection{2});
  EXPECT_EQ(driver.text("power2"), "82");
}

TEST_F(GroupSchedules, DeselectingTheLastGroupDeselectsItsLamps) {
  configureUsualGroups();
  open();
  driver.select("groups", {1});
  driver.select("groups", {});
  EXPECT_EQ(driver.selection("nodes"), Selection{});
}

TEST_F(GroupSchedules, AGroupFindsTheFirstNodeOfANameAlsoInASortedList) {
  configureGroups({{"Bridge", {"{L1}"}}});
  open("<Node Id='1' time1='9'/><Node Id='2' time1='5'/><Node Id='1' time1='1'/>");
  driver.select("groups", {0});
  EXPECT_EQ(driver.selection("nodes"), Selection{0});
  driver.select("groups", {});
  driver.sort("nodes", 1);
  driver.select("groups", {0});
  EXPECT_EQ(driver.selection("nodes"), Selection{0});
  EXPECT_EQ(driver.text("time1"), "1");
}

// --- editing

TEST_F(GroupSchedules, TypingWithSeveralNodesSelectedSetsAll) {
  open();
  driver.select("nodes", {1, 2});
  EXPECT_EQ(driver.text("power2"), "");
  driver.type("power2", "55");
  driver.type("time4", "7");
  EXPECT_EQ(driver.rows("nodes"),
            (std::vector<Cells>{{"1", "10", "100", "20", "80", "30", "60", "40", "40"},
                                {"2", "11", "100", "21", "55", "31", "61", "7", "41"},
                                {"3", "11", "100", "21", "55", "31", "61", "7", "41"}}));
}

TEST_F(GroupSchedules, TypingWithAGroupSelectedSetsItsLampsAndShowsItInTheGroup) {
  configureUsualGroups();
  open();
  driver.select("groups", {1, 2});
  driver.type("time3", "99");
  driver.type("power3", "33");
  EXPECT_EQ(driver.column("nodes", 5), (Cells{"30", "99", "99"}));
  EXPECT_EQ(driver.column("nodes", 6), (Cells{"60", "33", "33"}));
  EXPECT_EQ(groupCells(1), (Cells{"Park", "11", "100", "21", "", "99", "33", "41", "41"}));
  EXPECT_EQ(groupCells(2), (Cells{"Meters", "", "", "", "", "", "", "", ""}));
}

TEST_F(GroupSchedules, AGroupOfLampsWithoutRowsShowsWhatIsTypedAndKeepsNothing) {
  configureUsualGroups();
  open();
  driver.select("groups", {3});
  driver.type("time1", "5");
  EXPECT_EQ(groupCells(3), (Cells{"Unplugged", "5", "", "", "", "", "", "", ""}));
  const auto* groups = XCMainCfg::Get().Root()->Node("deviceGroups/groups/group?id=%s?/groups",
                                                     XCBasicString(u"Main street"));
  EXPECT_XML_EQ(
      "<group><id>Unplugged</id><devices><device><id>{L9}</id></device></devices></group>",
      groups->Node("group?id=%s?", XCBasicString(u"Unplugged")));
  driver.click("ok");
  expectClosedWithNothingSent();
}

TEST_F(GroupSchedules, AStartIsTypedUnderItsMask) {
  openClock();
  driver.select("nodes", {0, 1});
  driver.type("time4", "2359");
  EXPECT_EQ(driver.text("time4"), "23:59");
  EXPECT_EQ(driver.column("nodes", 7), (Cells{"23:59", "23:59"}));
  driver.type("time2", "7:5");
  EXPECT_EQ(driver.text("time2"), "75:00");
  driver.type("time2", "");
  EXPECT_EQ(driver.column("nodes", 3), (Cells{"00:00", "00:00"}));
}

TEST_F(GroupSchedules, NumbersTakeThreeDigitsAndNothingElse) {
  open();
  driver.select("nodes", {0});
  driver.type("time1", "1234");
  driver.type("power1", "-4.5x6789");
  EXPECT_EQ(driver.text("time1"), "123");
  EXPECT_EQ(driver.text("power1"), "456");
}

TEST_F(GroupSchedules, AnEditIsWrittenBackBehindItsOwnNotice) {
  open();
  driver.select("nodes", {0});
  auto& page = driver.dialog();
  // What the program itself puts into an edit while nothing is being filled is a change as well; it
  // reaches the rows when the posted message is handled.
  page.SetDlgItemText(driver.control("time1").id(), u"500");
  EXPECT_EQ(driver.column("nodes", 1).front(), "10");
  page.DispatchPosted();
  EXPECT_EQ(driver.column("nodes", 1).front(), "500");
}

}  // namespace
