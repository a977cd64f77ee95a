#include <QtCore/QFile>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QTableView>

#include "editor/history/history_window.h"
#include "editor/history/page_companion.h"
#include "editor/window/exchange_view.h"
#include "tests/editor/support/page_rig.h"

namespace {

using editor::HistoryWindow;

class History : public support::PageRig {
 protected:
  void SetUp() override {
    controller_.hold("L01", "<L01 name=\"old\" hourIni=\"10\"/>");
    controller_.holdAfterWrite("L01", "<L01 name=\"new\" hourIni=\"10\"/>");
  }
  /// Changes the controller's name and sends it.
  void rename() {
    start();
    work({press("general"), typed("name", "new"), press("ok"), [] {}});
    ASSERT_EQ(controller_.writes().size(), 1U);
  }
  std::function<void()> openHistory() {
    return [this] {
      const auto buttons = frontEnd_.topWindow()->findChildren<QPushButton*>();
      for (QPushButton* button : buttons)
        if (button->text() == "[60408]") button->click();
    };
  }
  HistoryWindow* historyWindow() { return frontEnd_.topWindow()->findChild<HistoryWindow*>(); }
};

TEST_F(History, ListsTheSendsOfTheDeviceWithWhatWasReadBefore) {
  rename();
  window_->tabs().setCurrentWidget(window_->history());
  QCoreApplication::processEvents();
  ASSERT_EQ(window_->history()->model().rowCount(), 1);
  const workbench::JournalEntry& entry = window_->history()->model().entryAt(0);
  EXPECT_EQ(entry.deviceId, "{A}");
  EXPECT_NE(entry.document.find("name=\"new\""), std::string::npos);
  EXPECT_NE(entry.before.find("name=\"old\""), std::string::npos);
  EXPECT_TRUE(editor::HistoryModel::sentText(entry).startsWith("[60416](name,old,new)\n"));
  window_->history()->showDevice("{B}");
  EXPECT_EQ(window_->history()->model().rowCount(), 0);
}

TEST_F(History, OneClickPutsTheFormerValuesIntoTheOpenPageAndSendsNothing) {
  rename();
  work({press("general"), [this] { EXPECT_EQ(text("name"), "new"); }, openHistory(),
        [this] {
          ASSERT_NE(historyWindow(), nullptr);
          ASSERT_TRUE(historyWindow()->formerButton().isEnabled());
          historyWindow()->formerButton().click();
          EXPECT_EQ(historyWindow()->outcome(), "[60412](1,1)");
        },
        [this] {
          EXPECT_EQ(text("name"), "old");
          EXPECT_EQ(controller_.writes().size(), 1U);
          historyWindow()->close();
        },
        press("ok"), [] {}});
  ASSERT_EQ(controller_.writes().size(), 2U);
  EXPECT_NE(controller_.writes()[1].find("<E01 name=\"old\"/>"), std::string::npos);
}

TEST_F(History, OtherDialogsGetNoHistory) {
  start();
  work({[this] {
    for (const QPushButton* button : frontEnd_.topWindow()->findChildren<QPushButton*>())
      EXPECT_NE(button->text(), "[60408]");
  }});
}

class ReadBackTest : public History {
 protected:
  /// What the exchange list says of the latest exchange.
  QString latestResult() {
    const auto* table = window_->tabs().widget(0)->findChild<QTableView*>();
    return table->model()->index(0, 3).data().toString();
  }
  std::size_t reads() const {
    std::size_t count = 0;
    for (const auto& entry : workspace_->record().entries())
      if (entry.kind == host::CommandKind::get) ++count;
    return count;
  }
};

TEST_F(ReadBackTest, AfterAPageSentItsSectionIsReadAndComparedOnce) {
  rename();
  EXPECT_EQ(reads(), 3U) << "the menu, the page, and once more";
  EXPECT_EQ(latestResult(), "[60421](1)");
}

TEST_F(ReadBackTest, AValueThatTheControllerDidNotTakeIsTold) {
  controller_.holdAfterWrite("L01", "<L01 name=\"NEW\" hourIni=\"10\"/>");
  rename();
  EXPECT_EQ(latestResult(), "[60422](1,1)");
}

TEST_F(ReadBackTest, SwitchedOffOrWithoutAnySendNothingIsRead) {
  preferences_.readBack = false;
  rename();
  EXPECT_EQ(reads(), 2U);
  preferences_.readBack = true;
  start();
  work({press("general"), press("ok"), [] {}});
  EXPECT_EQ(reads(), 2U);
  EXPECT_EQ(controller_.writes().size(), 1U);
}

}  // namespace
