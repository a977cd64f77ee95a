#include "editor/window/group_commands.h"

#include <gmock/gmock.h>

#include <QtTest/QTest>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QTreeView>

#include "editor/renderers/list_renderer.h"
#include "editor/renderers/list_view.h"
#include "editor/window/device_panel.h"
#include "editor/window/main_menus.h"
#include "tests/editor/support/window_rig.h"

namespace {

using host::TextId;
using testing::ElementsAre;
using testing::IsEmpty;
using Kind = editor::ConfigurationModel::Kind;

constexpr const char* Town =
    "<configuration><commSystem>"
    "<device><id>{1}</id><driver>ZELLAMPMANAGER</driver><name>North</name><childDevices>"
    "<childDevice><id>{a}</id><driver>ZELLAMP</driver><name>L1</name>"
    "<description>Calle Mayor 1</description></childDevice>"
    "<childDevice><id>{b}</id><driver>ZELLAMP</driver><name>L2</name>"
    "<description>Calle Mayor 2</description></childDevice>"
    "<childDevice><id>{c}</id><driver>ZELLAMP</driver><name>L3</name>"
    "<description>Plaza</description></childDevice></childDevices></device>"
    "</commSystem><deviceGroups><groups><group><id>North</id><devices>"
    "<device><id>{a}</id></device><device><id>{b}</id></device><device><id>{c}</id></device>"
    "</devices><groups><group><id>Square</id><devices><device><id>{c}</id></device>"
    "<device><id>{gone}</id></device></devices></group></groups></group>"
    "<group><id>Others</id></group></groups></deviceGroups><viewSetups/></configuration>";

class GroupCommands : public support::WindowRig {
 protected:
  void SetUp() override {
    open(Town);
    view().setFocus();
  }
  QTreeView& view() { return tree().view(); }
  const QAbstractItemModel& model() { return tree().model(); }
  QModelIndex device() { return model().index(0, 0, model().index(0, 0)); }
  QModelIndex own() { return model().index(0, 0, model().index(1, 0)); }
  QModelIndex group(int row) { return model().index(row, 0, own()); }
  QModelIndex square() { return group(0); }

  void choose(const QModelIndex& index, Qt::KeyboardModifiers modifiers = {}) {
    view().expand(index.parent());
    view().scrollTo(index);
    QTest::mouseClick(view().viewport(), Qt::LeftButton, modifiers,
                      view().visualRect(index).center());
    QCoreApplication::processEvents();
  }
  void selectLamps(std::initializer_list<int> rows) {
    Qt::KeyboardModifiers modifiers;
    for (const int row : rows) {
      choose(model().index(row, 0, device()), modifiers);
      modifiers = Qt::ControlModifier;
    }
  }
  void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(&view(), key, modifiers);
    QCoreApplication::processEvents();
  }
  /// The texts of the entries below one.
  std::vector<std::string> below(const QModelIndex& parent) {
    std::vector<std::string> texts;
    for (int row = 0; row < model().rowCount(parent); ++row)
      texts.push_back(model().index(row, 0, parent).data().toString().toStdString());
    return texts;
  }
  std::vector<std::string> context() {
    std::vector<std::string> texts;
    for (const QAction* entry : window_->menus().contextActions())
      texts.push_back(entry->text().remove('&').toStdString());
    return texts;
  }
};

TEST_F(GroupCommands, TheTreeShowsGroupsOfLampsWithTheirLamps) {
  EXPECT_THAT(below(own()), ElementsAre("Square"));
  EXPECT_THAT(below(square()), ElementsAre("L3", "(no longer there)"));
  EXPECT_EQ(model().index(0, 0, square()).data(Qt::ToolTipRole).toString(), "Plaza");
  EXPECT_FALSE(model().index(0, 0, square()).data(Qt::DecorationRole).value<QIcon>().isNull());
}

TEST_F(GroupCommands, ANewGroupIsMadeOfTheLampsSelectedInTheTree) {
  selectLamps({0, 1});
  whileOpen([this] { key(Qt::Key_G, Qt::ControlModifier); },
            [this] {
              type("name", "Avenue");
              press("ok");
            });
  EXPECT_THAT(below(own()), ElementsAre("Square", "Avenue"));
  EXPECT_THAT(below(group(1)), ElementsAre("L1", "L2"));
  EXPECT_EQ(tree().current(), group(1)) << "the new one is chosen";
  EXPECT_NE(onDisk().find("<id>Avenue</id>"), std::string::npos);
}

TEST_F(GroupCommands, TheDialogFillsAGroupByReferenceWithMouseAndKeys) {
  choose(square());
  whileOpen([this] { key(Qt::Key_F2); },
            [this] {
              type("reference", "mayor");
              QCoreApplication::processEvents();
              auto* label = dynamic_cast<QLabel*>(&renderer("matching").widget());
              ASSERT_NE(label, nullptr);
              EXPECT_EQ(label->text(), "2 of 2 lamps match");
              press("addMatching");
              QCoreApplication::processEvents();
              auto& members = dynamic_cast<editor::ListRenderer&>(renderer("members"));
              const QModelIndex gone = members.view().model()->index(1, 0);
              EXPECT_EQ(gone.data().toString(), "(no longer there)");
              QTest::mouseClick(members.view().viewport(), Qt::LeftButton, {},
                                members.view().visualRect(gone).center());
              QTest::keyClick(&members.view(), Qt::Key_Delete);
              press("ok");
            });
  EXPECT_THAT(below(square()), ElementsAre("L3", "L1", "L2"));
}

TEST_F(GroupCommands, SelectedLampsAreAddedToAGroupFromTheMenu) {
  selectLamps({1, 0});
  EXPECT_THAT(context(), ElementsAre("Add selected lamps to", "New group of lamps…"));
  QMenu* menu = window_->menus().contextActions().front()->menu();
  ASSERT_NE(menu, nullptr);
  emit menu->aboutToShow();
  ASSERT_EQ(menu->actions().front()->text(), "Square");
  menu->actions().front()->trigger();
  EXPECT_THAT(below(square()), ElementsAre("L3", "(no longer there)", "L1", "L2"));
  EXPECT_EQ(tree().selectedLamps().size(), 2U) << "they stay selected";
  EXPECT_EQ(window_->statusBar()->currentMessage(), "The group Square has 4 lamps now.");
}

TEST_F(GroupCommands, DeleteTakesLampsOutOfTheirGroup) {
  view().expand(square());
  choose(model().index(1, 0, square()));
  EXPECT_THAT(context(), ElementsAre("Take out of group", "Modify group…"));
  key(Qt::Key_Delete);
  EXPECT_THAT(below(square()), ElementsAre("L3"));
  EXPECT_EQ(tree().current(), square());
}

TEST_F(GroupCommands, DeleteRemovesAGroupAndUndoBringsItBack) {
  choose(square());
  EXPECT_THAT(context(), ElementsAre("Modify group…", "Remove group", "New group of lamps…"));
  key(Qt::Key_Delete);
  EXPECT_THAT(below(own()), IsEmpty());
  EXPECT_TRUE(window_->statusBar()->currentMessage().contains("Square"));
  EXPECT_EQ(tree().current(), own());
  EXPECT_EQ(action(TextId::ActionUndo).text(), "Undo: removal of group Square");
  key(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_THAT(below(square()), ElementsAre("L3", "(no longer there)"));
  EXPECT_FALSE(action(TextId::ActionUndo).isEnabled());
  key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_THAT(below(own()), IsEmpty());
}

TEST_F(GroupCommands, DeleteInTheSearchFieldRemovesNoGroup) {
  choose(square());
  auto* search = tree().findChild<QLineEdit*>();
  search->setFocus();
  QTest::keyClick(search, Qt::Key_Delete);
  EXPECT_THAT(below(own()), ElementsAre("Square"));
}

TEST_F(GroupCommands, APanelOffersWhatCanBeDoneWithAGroup) {
  choose(square());
  const auto texts = [this] {
    std::vector<std::string> found;
    for (const QToolButton* button : window_->panel().findChildren<QToolButton*>())
      if (button->isVisible()) found.push_back(button->text().remove('&').toStdString());
    return found;
  };
  EXPECT_THAT(texts(), ElementsAre("Modify group…", "Remove group"));
  choose(own());
  EXPECT_THAT(texts(), ElementsAre("New group of lamps…"));
  choose(device());
  EXPECT_THAT(texts(), IsEmpty());
}

TEST_F(GroupCommands, WhatCantBeDoneSaysWhy) {
  choose(model().index(0, 0));
  for (const TextId text : {TextId::ActionNewGroup, TextId::ActionModifyGroup,
                            TextId::ActionTakeOut, TextId::ActionRemoveGroup})
    EXPECT_FALSE(action(text).isEnabled()) << host::textNumber(text);
  EXPECT_EQ(action(TextId::ActionNewGroup).toolTip(), "Select a lamp manager first.");
  EXPECT_EQ(action(TextId::ActionUndo).toolTip(), "There is nothing to undo.");
  choose(model().index(1, 0, model().index(1, 0)));
  EXPECT_EQ(action(TextId::ActionNewGroup).toolTip(), "This group belongs to no lamp manager.");
}

TEST_F(GroupCommands, AReadOnlyConfigurationKeepsItsGroups) {
  std::string cause;
  window_.reset();
  workspace_.reset();
  workbench::ConfigurationStore other(folder_.path());
  ASSERT_TRUE(other.open(cause));
  reopen();
  view().setFocus();
  choose(square());
  for (const TextId text :
       {TextId::ActionNewGroup, TextId::ActionModifyGroup, TextId::ActionRemoveGroup}) {
    EXPECT_FALSE(action(text).isEnabled()) << host::textNumber(text);
    EXPECT_TRUE(action(text).toolTip().contains("can only be read"));
  }
  key(Qt::Key_Delete);
  EXPECT_THAT(below(own()), ElementsAre("Square"));
}

TEST_F(GroupCommands, WhatIsOpenAndSelectedStaysSoWhenTheConfigurationIsReadAgain) {
  view().expand(own());
  view().expand(square());
  selectLamps({0, 2});
  tree().reload();
  EXPECT_THAT(tree().selectedLamps(), ElementsAre(u"{a}", u"{c}"));
  EXPECT_TRUE(view().isExpanded(square()));
  EXPECT_EQ(tree().current(), model().index(2, 0, device()));
}

TEST_F(GroupCommands, LampsOfAGroupAreNoSelectionOfChildDevices) {
  selectLamps({0});
  choose(model().index(0, 0, square()), Qt::ControlModifier);
  EXPECT_THAT(tree().selectedLamps(), IsEmpty());
  EXPECT_THAT(tree().selectedMembers(), IsEmpty());
  EXPECT_FALSE(action(TextId::ActionTakeOut).isEnabled());
}

}  // namespace
