#include "workbench/group_actions.h"

#include <gmock/gmock.h>

#include "tests/support/faulty_files.h"
#include "tests/workbench/group_fixture.h"

namespace {

using support::TopKind;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using Node = XmlDocument::XmlNode;

class GroupActionsTest : public test::GroupTest {
 protected:
  using Action = std::function<workbench::ActionResult()>;
  void run(const Action& action) {
    driver.run([this, action] { result = action(); });
  }
  void openNew(std::vector<XCBasicString> lamps = {}) {
    run([this, lamps] { return actions.newGroup(nullptr, north(), lamps); });
  }
  void openSquare() {
    run([this] { return actions.modifyGroup(nullptr, north(), square()); });
  }
  std::vector<std::string> others() { return driver.column("others", 0); }
  std::vector<std::string> members() { return driver.column("members", 0); }
};

// --- the dialog

TEST_F(GroupActionsTest, ANewGroupIsNamedFilledAndSaved) {
  openNew();
  EXPECT_EQ(driver.title(), "[60340](North)");
  EXPECT_EQ(driver.focus(), "name");
  EXPECT_THAT(others(), ElementsAre("1", "2", "3", "4"));
  driver.type("name", "Avenue");
  driver.select("others", {1, 3});
  driver.click("moveRight");
  EXPECT_THAT(others(), ElementsAre("1", "3"));
  EXPECT_THAT(members(), ElementsAre("2", "4"));
  driver.click("ok");
  EXPECT_EQ(driver.top(), TopKind::none);
  EXPECT_TRUE(result.done);
  EXPECT_THAT(names(), ElementsAre("Square", "Avenue"));
  EXPECT_THAT(lampsOf(u"Avenue"), ElementsAre("{b}", "{d}"));
  EXPECT_EQ(onDisk(), store.text());
}

TEST_F(GroupActionsTest, ANewGroupBeginsWithTheLampsThatWereSelected) {
  openNew({u"{d}", u"{a}"});
  EXPECT_THAT(members(), ElementsAre("4", "1"));
  EXPECT_THAT(others(), ElementsAre("2", "3"));
}

TEST_F(GroupActionsTest, AControllerWithoutANameGetsNoGroupThatNobodyWouldFind) {
  Node& nameless = device(u"West");
  nameless.SetValue("name", u"");
  const std::string before = store.text();
  run([&] { return actions.newGroup(nullptr, nameless); });
  EXPECT_FALSE(result.done);
  EXPECT_EQ(result.reason.ToUtf8(), "[359]");
  EXPECT_EQ(driver.top(), TopKind::none);
  EXPECT_EQ(store.text(), before);
}

TEST_F(GroupActionsTest, TheFilterNarrowsByTheReferenceAndTellsHowManyMatch) {
  openNew();
  EXPECT_EQ(driver.text("matching"), "[60344](4,4)");
  driver.type("reference", "mayor");
  EXPECT_THAT(others(), ElementsAre("1", "2")) << "whatever the case";
  EXPECT_EQ(driver.text("matching"), "[60344](2,4)");
  EXPECT_EQ(driver.text("othersLabel"), "[60346](4)");
  driver.click("addMatching");
  EXPECT_THAT(members(), ElementsAre("1", "2"));
  EXPECT_THAT(others(), IsEmpty());
  EXPECT_EQ(driver.text("matching"), "[60344](0,2)");
  EXPECT_FALSE(driver.enabled("addMatching"));
  driver.type("reference", "");
  EXPECT_THAT(others(), ElementsAre("3", "4"));
}

TEST_F(GroupActionsTest, LampsAreTakenOutByTheButtonADoubleClickOrDelete) {
  openSquare();
  EXPECT_EQ(driver.title(), "[60341](Square,North)");
  EXPECT_THAT(members(), ElementsAre("3", "[60348]", "1"));
  EXPECT_FALSE(driver.enabled("moveLeft")) << "none is selected";
  driver.doubleClick("members", 2);
  EXPECT_THAT(others(), ElementsAre("1", "2", "4")) << "in the controller's order";
  driver.select("members", {1});
  driver.press("members", host::Key::deleteKey);
  EXPECT_THAT(others(), ElementsAre("1", "2", "4")) << "a lamp that is gone goes nowhere";
  driver.select("members", {0});
  driver.click("moveLeft");
  EXPECT_THAT(members(), IsEmpty());
  driver.doubleClick("others", 3);
  driver.click("ok");
  EXPECT_THAT(lampsOf(u"Square"), ElementsAre("{d}"));
}

TEST_F(GroupActionsTest, ALampOfAnotherControllerIsShownByItsName) {
  device(u"West").NewChild("childDevices").NewChild("childDevice").SetValue("id", u"{gone}");
  device(u"West").Node("childDevices/childDevice")->SetValue("name", u"W1");
  catalogue.invalidate();
  openSquare();
  EXPECT_THAT(members(), ElementsAre("3", "W1", "1"));
  driver.click("ok");
  EXPECT_THAT(lampsOf(u"Square"), ElementsAre("{c}", "{gone}", "{a}"));
}

TEST_F(GroupActionsTest, ARefusedNameKeepsTheDialogOpenWithItsEntries) {
  openNew({u"{a}"});
  for (const auto& [name, text] :
       {std::pair("", "[60349]"), {"square", "[60350]"}, {"a/b", "[32764]"}}) {
    driver.type("name", name);
    driver.click("ok");
    EXPECT_EQ(driver.message().text, text);
    driver.answer(host::MessageAnswer::ok);
    EXPECT_EQ(driver.focus(), "name");
    EXPECT_THAT(members(), ElementsAre("1"));
  }
  driver.click("cancel");
  EXPECT_THAT(names(), ElementsAre("Square"));
}

TEST_F(GroupActionsTest, AGroupIsRenamed) {
  openSquare();
  driver.type("name", "SQUARE");
  driver.click("ok");
  EXPECT_THAT(names(), ElementsAre("SQUARE"));
  EXPECT_THAT(onDisk(), HasSubstr("<note>by hand</note>"));
}

TEST_F(GroupActionsTest, OKWithoutAChangeWritesNothingAndCantBeUndone) {
  openSquare();
  driver.doubleClick("others", 0);
  driver.doubleClick("members", 3);
  driver.click("ok");
  EXPECT_EQ(onDisk(), Start);
  EXPECT_FALSE(actions.canUndo().done);
}

TEST_F(GroupActionsTest, WhatWentMeanwhileIsTold) {
  openSquare();
  groups().remove(square());
  driver.type("name", "Market");
  driver.click("ok");
  EXPECT_EQ(result.reason, u"[60353](Square)");
  openNew();
  driver.type("name", "Market");
  Node& gone = north();
  XCMainCfg::Get().Root()->RemoveChild(&gone);
  driver.click("ok");
  EXPECT_EQ(result.reason, u"[60354](North)");
  EXPECT_THAT(onDisk(), Not(HasSubstr("Market")));
}

// --- without the dialog

TEST_F(GroupActionsTest, LampsAreAddedOnceAndTakenOut) {
  run([this] { return actions.addLamps(nullptr, north(), square(), {u"{b}", u"{a}", u"{b}"}); });
  EXPECT_THAT(lampsOf(u"Square"), ElementsAre("{c}", "{gone}", "{a}", "{b}"));
  run([this] { return actions.takeOutLamps(nullptr, north(), square(), {u"{gone}", u"{d}"}); });
  EXPECT_THAT(lampsOf(u"Square"), ElementsAre("{c}", "{a}", "{b}"));
  EXPECT_THAT(onDisk(), Not(HasSubstr("{gone}")));
}

TEST_F(GroupActionsTest, OnlyALampManagersGroupsAreChanged) {
  run([this] { return actions.newGroup(nullptr, device(u"Meter")); });
  EXPECT_EQ(result.reason, u"[60320](Meter)");
  run([this] { return actions.removeGroup(nullptr, device(u"West"), square()); });
  EXPECT_EQ(result.reason, u"[60353](Square)");
}

TEST_F(GroupActionsTest, AConfigurationThatCanOnlyBeReadIsNotChanged) {
  workbench::ConfigurationStore second(folder.path(), std::chrono::milliseconds(0));
  std::string cause;
  ASSERT_TRUE(second.open(cause));
  workbench::GroupActions reading(second);
  for (const Action& action :
       {Action([&] { return reading.newGroup(nullptr, north()); }),
        Action([&] { return reading.modifyGroup(nullptr, north(), square()); }),
        Action([&] { return reading.removeGroup(nullptr, north(), square()); }),
        Action([&] { return reading.addLamps(nullptr, north(), square(), {u"{d}"}); })}) {
    run(action);
    EXPECT_EQ(result.reason.ToUtf8(), second.readOnlyReason());
  }
  EXPECT_THAT(lampsOf(u"Square"), ElementsAre("{c}", "{gone}", "{a}"));
}

TEST_F(GroupActionsTest, ASaveThatFailsIsShown) {
  support::FaultyFiles files;
  files.fail(support::FaultyFiles::Operation::writeNew, "the disk is full");
  run([this] { return actions.removeGroup(nullptr, north(), square()); });
  EXPECT_THAT(driver.message().text, HasSubstr("the disk is full"));
  driver.answer(host::MessageAnswer::ok);
  EXPECT_TRUE(names().empty());
  EXPECT_EQ(onDisk(), Start);
  files.repair();
  run([this] { return actions.undo(nullptr); });
  EXPECT_THAT(names(), ElementsAre("Square"));
}

// --- undo

TEST_F(GroupActionsTest, ARemovedGroupComesBackWhereItWasWithAllThatItHeld) {
  groups().add({u"Avenue", {u"{a}"}});
  const std::string before = store.text();
  run([this] { return actions.removeGroup(nullptr, north(), square()); });
  EXPECT_THAT(names(), ElementsAre("Avenue"));
  EXPECT_EQ(actions.history().undoable(), u"[60364](Square)");
  run([this] { return actions.undo(nullptr); });
  EXPECT_EQ(store.text(), before);
  EXPECT_EQ(onDisk(), before);
}

TEST_F(GroupActionsTest, EveryChangeIsUndoneAndDoneAgain) {
  const std::string start = store.text();
  openNew({u"{a}"});
  driver.type("name", "Avenue");
  driver.click("ok");
  openSquare();
  driver.type("name", "Market");
  driver.click("ok");
  run([this] { return actions.removeGroup(nullptr, north(), *groups().named(u"Avenue")); });
  const std::string end = store.text();
  for (int i = 0; i < 3; ++i) run([this] { return actions.undo(nullptr); });
  EXPECT_EQ(store.text(), start);
  run([this] { return actions.undo(nullptr); });
  EXPECT_EQ(result.reason, u"[60358]");
  for (int i = 0; i < 3; ++i) run([this] { return actions.redo(nullptr); });
  EXPECT_EQ(store.text(), end);
  EXPECT_EQ(onDisk(), end);
  run([this] { return actions.redo(nullptr); });
  EXPECT_EQ(result.reason, u"[60367]");
}

TEST_F(GroupActionsTest, TheFirstGroupOfAControllerIsUndone) {
  run([this] { return actions.newGroup(nullptr, device(u"West")); });
  driver.type("name", "Avenue");
  driver.click("ok");
  run([this] { return actions.undo(nullptr); });
  EXPECT_TRUE(workbench::LampGroups(device(u"West")).all().empty());
  run([this] { return actions.redo(nullptr); });
  EXPECT_EQ(workbench::LampGroups(device(u"West")).all().size(), 1U);
}

TEST_F(GroupActionsTest, AChangeAfterAnUndoEndsWhatCouldBeDoneAgain) {
  run([this] { return actions.removeGroup(nullptr, north(), square()); });
  run([this] { return actions.undo(nullptr); });
  ASSERT_TRUE(actions.canRedo().done);
  run([this] { return actions.addLamps(nullptr, north(), square(), {u"{d}"}); });
  EXPECT_FALSE(actions.canRedo().done);
}

TEST_F(GroupActionsTest, WhatWasChangedOtherwiseSinceIsNotUndone) {
  run([this] { return actions.removeGroup(nullptr, north(), square()); });
  groups().add({u"Avenue", {}});
  run([this] { return actions.undo(nullptr); });
  EXPECT_EQ(result.reason, u"[60359]");
  EXPECT_THAT(names(), ElementsAre("Avenue"));
  EXPECT_FALSE(actions.canUndo().done) << "it is forgotten";
}

TEST_F(GroupActionsTest, TheGroupsOfARemovedDeviceAreNotUndone) {
  run([this] { return actions.removeGroup(nullptr, north(), square()); });
  XCMainCfg::Get().Root()->RemoveChild(&north());
  run([this] { return actions.undo(nullptr); });
  EXPECT_EQ(result.reason, u"[60359]");
}

TEST_F(GroupActionsTest, UndoGoesOnWhenTheControllerGotAnotherNameAndOtherLamps) {
  run([this] { return actions.removeGroup(nullptr, north(), square()); });
  Node& renamed = north();
  renamed.SetValue("name", u"South");
  workbench::LampGroups(renamed).followRename(u"North");
  XCMainCfg::Get().Root()->Node("deviceGroups/groups/group/devices")->RemoveChildren();
  run([this] { return actions.undo(nullptr); });
  EXPECT_TRUE(result.done);
  EXPECT_EQ(workbench::LampGroups(renamed).all().size(), 1U);
}

TEST_F(GroupActionsTest, TheLatestChangesCanBeUndone) {
  for (std::size_t i = 0; i < workbench::GroupHistory::MostChanges + 5; ++i)
    run([this, i] {
      return i % 2 == 0 ? actions.addLamps(nullptr, north(), square(), {u"{d}"})
                        : actions.takeOutLamps(nullptr, north(), square(), {u"{d}"});
    });
  std::size_t undone = 0;
  for (; actions.canUndo().done; ++undone) run([this] { return actions.undo(nullptr); });
  EXPECT_EQ(undone, workbench::GroupHistory::MostChanges);
}

}  // namespace
