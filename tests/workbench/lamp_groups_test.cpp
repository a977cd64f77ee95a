#include "workbench/lamp_groups.h"

#include <gmock/gmock.h>

#include "host/resources/text_id.h"
#include "tests/support/xml_compare.h"
#include "tests/workbench/group_fixture.h"

namespace {

using host::TextId;
using testing::ElementsAre;
using workbench::GroupContent;
using workbench::LampGroups;
using Node = XmlDocument::XmlNode;

class LampGroupsTest : public test::GroupTest {};

TEST_F(LampGroupsTest, AreThoseInsideOfTheGroupWithTheControllersName) {
  EXPECT_THAT(names(), ElementsAre("Square"));
  EXPECT_TRUE(LampGroups(device(u"West")).all().empty());
  EXPECT_EQ(LampGroups::contentOf(square()),
            (GroupContent{u"Square", {u"{c}", u"{gone}", u"{a}"}}));
}

TEST_F(LampGroupsTest, ANewOneStandsBehindTheOthers) {
  groups().add({u"Avenue", {u"{a}", u"{d}"}});
  EXPECT_THAT(names(), ElementsAre("Square", "Avenue"));
  EXPECT_XML_EQ(
      "<group><id>Avenue</id><devices><device><id>{a}</id></device>"
      "<device><id>{d}</id></device></devices></group>",
      *groups().named(u"Avenue"));
}

TEST_F(LampGroupsTest, TheFirstOneOfAControllerMakesItsGroupToo) {
  XCMainCfg::Get().Root()->RemoveChild(XCMainCfg::Get().Root()->Node("deviceGroups"));
  LampGroups(device(u"West")).add({u"Avenue", {}});
  EXPECT_XML_EQ(
      "<deviceGroups><groups><group><id>West</id><devices/><groups>"
      "<group><id>Avenue</id><devices/></group></groups></group></groups></deviceGroups>",
      *XCMainCfg::Get().Root()->Node("deviceGroups"));
}

TEST_F(LampGroupsTest, AChangeKeepsWhatItDoesNotKnow) {
  LampGroups::change(square(), {u"Market", {u"{b}", u"{c}"}});
  EXPECT_XML_EQ(
      "<group><id>Market</id><note>by hand</note><devices>"
      "<device><id>{b}</id></device><device><id>{c}</id><since>2024</since></device>"
      "</devices></group>",
      *groups().named(u"Market"));
}

TEST_F(LampGroupsTest, OnlyAGroupOfTheControllerIsRemoved) {
  Node& gone = square();
  EXPECT_FALSE(LampGroups(device(u"West")).remove(gone));
  EXPECT_TRUE(groups().remove(gone));
  EXPECT_FALSE(groups().has(gone));
  EXPECT_FALSE(groups().remove(gone)) << "it is gone already";
  EXPECT_TRUE(names().empty());
}

struct NameRow {
  const char16_t* name;
  std::optional<TextId> fault;
};

TEST_F(LampGroupsTest, ANameIsFreeAndCanBeUsed) {
  for (const NameRow& row : {NameRow{u"Avenue", std::nullopt},
                             {u"", TextId::GroupNameEmpty},
                             {u" x", TextId::NameInvalid},
                             {u"a/b", TextId::NameInvalid},
                             {u"Square", TextId::GroupNameTaken},
                             {u"SQUARE", TextId::GroupNameTaken},
                             {u"North", std::nullopt}})
    EXPECT_EQ(groups().nameFault(row.name, nullptr), row.fault) << XCBasicString(row.name).ToUtf8();
  EXPECT_EQ(groups().nameFault(u"SQUARE", &square()), std::nullopt) << "its own name";
}

TEST_F(LampGroupsTest, LampsAreTheChildDevicesThatHaveAnId) {
  north().Node("childDevices")->NewChild("childDevice").SetValue("name", u"5");
  EXPECT_EQ(groups().lamps().size(), 4U);
  EXPECT_TRUE(LampGroups(device(u"West")).lamps().empty());
}

// --- a controller that gets another name

TEST_F(LampGroupsTest, FollowTheControllersName) {
  Node& renamed = north();
  renamed.SetValue("name", u"South");
  LampGroups(renamed).followRename(u"North");
  EXPECT_EQ(XCMainCfg::Get().Root()->Node("deviceGroups/groups/group?id=%s?", u"North"), nullptr);
  EXPECT_EQ(LampGroups(device(u"South")).all().size(), 1U);
}

class RenamedController : public test::GroupTest {
 protected:
  Node& rename() {
    Node& renamed = north();
    renamed.SetValue("name", u"South");
    return renamed;
  }
  Node* group(const char16_t* name) {
    return XCMainCfg::Get().Root()->Node("deviceGroups/groups/group?id=%s?", name);
  }
  Node& makeGroup(const char16_t* name) {
    Node& made = XCMainCfg::Get().Root()->Node("deviceGroups/groups")->NewChild("group");
    made.SetValue("id", name);
    return made;
  }
};

TEST_F(RenamedController, TakesItsGroupsIntoTheOneThatTheDialogMade) {
  Node& made = makeGroup(u"South");
  made.NewChild("devices").NewChild("device").SetValue("id", u"{new}");
  LampGroups(rename()).followRename(u"North");
  EXPECT_EQ(group(u"North"), nullptr);
  ASSERT_NE(made.Node("groups/group"), nullptr);
  EXPECT_EQ(made.Node("groups/group")->Value("id"), u"Square");
  EXPECT_EQ(made.Node("devices/device")->Value("id"), u"{new}");
}

TEST_F(RenamedController, LeavesAGroupOfThatNameWithGroupsOfItsOwn) {
  makeGroup(u"South").NewChild("groups").NewChild("group").SetValue("id", u"Mine");
  LampGroups(rename()).followRename(u"North");
  EXPECT_NE(group(u"North"), nullptr) << "nothing is lost";
  EXPECT_EQ(group(u"South")->Node("groups")->ChildCount(), 1U);
}

TEST_F(RenamedController, LeavesTheGroupToAnotherDeviceThatHasTheName) {
  device(u"West").SetValue("name", u"North");
  Node& renamed = north();
  renamed.SetValue("name", u"South");
  LampGroups(renamed).followRename(u"North");
  EXPECT_NE(group(u"North"), nullptr);
  EXPECT_EQ(group(u"South"), nullptr);
}

}  // namespace
