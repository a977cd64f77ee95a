#include "editor/window/main_window.h"

#include <unistd.h>

#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QTabWidget>
#include <algorithm>

#include "editor/history/history_view.h"
#include "editor/window/banner.h"
#include "editor/window/device_panel.h"
#include "tests/editor/support/window_rig.h"
#include "tests/support/odd_file.h"

namespace {

using host::TextId;

constexpr const char* OneDevice =
    "<configuration><commSystem><device><id>{A}</id><driver>ZELLAMPMANAGER</driver>"
    "<type>ZELLAMPMANAGER</type><name>North</name></device></commSystem></configuration>";

using MainWindow = support::WindowRig;

TEST_F(MainWindow, AnEmptyConfigurationOffersTheFirstStep) {
  open("<configuration/>");
  const auto buttons = window_->findChildren<QPushButton*>();
  const auto first = std::find_if(buttons.begin(), buttons.end(), [](const QPushButton* button) {
    return button->isVisible() && button->text().startsWith("New lamp manager");
  });
  ASSERT_NE(first, buttons.end());
  EXPECT_TRUE((*first)->isEnabled());
  EXPECT_TRUE(action(TextId::ActionNewDevice).isEnabled());
  EXPECT_FALSE(action(TextId::ActionModify).isEnabled());
  EXPECT_FALSE(action(TextId::ActionRemove).isEnabled());
}

TEST_F(MainWindow, WhatTheNextSaveLosesIsToldUntilItIsSaved) {
  open("<configuration>\n<!-- north first --><commSystem/></configuration>");
  ASSERT_TRUE(window_->banner().isVisible());
  EXPECT_TRUE(window_->banner().text().contains("comments (the first in line 2)"));
  EXPECT_TRUE(window_->banner().text().contains("configuration.xml.previous"));
  whileOpen([this] { action(TextId::ActionNewDevice).trigger(); },
            [this] {
              type("name", "South");
              type("address", "127.0.0.1");
              type("ftpAddress", "127.0.0.1");
              press("ok");
            });
  EXPECT_TRUE(folder_.read("configuration.xml.previous").find("north first") != std::string::npos);
  EXPECT_FALSE(window_->banner().isVisible());
}

TEST_F(MainWindow, WhateverStandsInPlaceOfAPartOfTheHistoryIsTold) {
  for (const support::Odd odd : support::AllOdd) {
    SCOPED_TRACE(nameOf(odd));
    const support::TempFolder state;
    std::filesystem::create_directories(state / "journal");
    std::filesystem::permissions(state.path(), std::filesystem::perms(0711));
    options_.state = state.path();
    open("<configuration/>");
    const support::OddFile thing(state / "journal/sends.jsonl", odd, "{}\n");
    window_->tabs().setCurrentWidget(window_->history());
    const QString shown = window_->statusBar()->currentMessage();
    const std::string refusal = thing.refusal(host::NamedBy::program);
    EXPECT_EQ(shown.isEmpty(), refusal.empty()) << shown.toStdString();
    EXPECT_TRUE(shown.contains(QString::fromStdString(refusal))) << shown.toStdString();
    if (!refusal.empty()) {
      EXPECT_TRUE(shown.contains("sends.jsonl")) << shown.toStdString();
    }
    EXPECT_TRUE(thing.isUntouched());
    window_.reset();
  }
}

TEST_F(MainWindow, TheChosenDeviceShowsItsOptionsPanel) {
  open(OneDevice);
  ASSERT_NE(window_->panel().options(), nullptr);
  const editor::DialogBody* body = frontEnd_.bodyOf(*window_->panel().options());
  ASSERT_NE(body, nullptr);
  EXPECT_TRUE(body->content().isVisible());
  EXPECT_TRUE(action(TextId::ActionOptions).isEnabled());
}

TEST_F(MainWindow, ADeviceIsMadeInItsDialogAndChosen) {
  open("<configuration/>");
  whileOpen([this] { action(TextId::ActionNewDevice).trigger(); },
            [this] {
              ASSERT_NE(frontEnd_.topWindow(), nullptr);
              type("name", "South");
              type("address", "127.0.0.1");
              type("ftpAddress", "127.0.0.1");
              press("ok");
            });
  ASSERT_EQ(workbench::DeviceCatalogue::devices().size(), 1U);
  ASSERT_NE(window_->tree().chosenDevice(), nullptr);
  EXPECT_EQ(window_->tree().chosenDevice()->Value("name").ToUtf8(), "South");
  EXPECT_NE(window_->panel().options(), nullptr);
}

TEST_F(MainWindow, RemovingAsksFirstAndNoKeepsTheDevice) {
  open(OneDevice);
  const auto answer = [](int button) {
    return [button] {
      auto* box = dynamic_cast<QMessageBox*>(QApplication::activeModalWidget());
      ASSERT_NE(box, nullptr);
      QTest::mouseClick(box->buttons()[button], Qt::LeftButton);
    };
  };
  const auto remove = [this] { action(TextId::ActionRemove).trigger(); };
  whileOpen(remove, answer(1));
  EXPECT_EQ(workbench::DeviceCatalogue::devices().size(), 1U);
  whileOpen(remove, answer(0));
  EXPECT_TRUE(workbench::DeviceCatalogue::devices().empty());
  EXPECT_EQ(window_->panel().options(), nullptr);
}

TEST_F(MainWindow, TheLanguageChangesAtOnce) {
  open(OneDevice);
  EXPECT_EQ(action(TextId::ActionQuit).text(), "Quit");
  window_->setLanguage("es");
  EXPECT_EQ(action(TextId::ActionQuit).text(), "Salir");
  const editor::DialogBody* body = frontEnd_.bodyOf(*window_->panel().options());
  ASSERT_NE(body, nullptr);
  auto* button = body->content().findChild<QPushButton*>();
  EXPECT_EQ(button->text().toStdString(), XCLoadString(TextId::DriverSettings).ToUtf8());
}

TEST_F(MainWindow, WhatAPageChangedInTheDeviceIsSaved) {
  open(OneDevice);
  window_->tree().chosenDevice()->SetValue("calendar", u"Winter");
  frontEnd_.postToMainWindow({1025, 0, 0});
  QCoreApplication::processEvents();
  EXPECT_NE(onDisk().find("<calendar>Winter</calendar>"), std::string::npos);
}

// --- two editors on one configuration

TEST_F(MainWindow, TheSecondWindowOnAConfigurationSaysThatItOnlyReads) {
  folder_.write("configuration.xml", OneDevice);
  std::string cause;
  workbench::ConfigurationStore other(folder_.path());
  ASSERT_TRUE(other.open(cause));
  open(OneDevice);
  EXPECT_TRUE(window_->windowTitle().endsWith("(read only)"));
  ASSERT_TRUE(window_->banner().isVisible());
  EXPECT_TRUE(window_->banner().text().contains("can only be read"));
  EXPECT_TRUE(window_->banner().text().contains("process " + QString::number(::getpid())));
  for (const TextId text : {TextId::ActionNewDevice, TextId::ActionModify, TextId::ActionRemove,
                            TextId::ActionUpdateNodes}) {
    EXPECT_FALSE(action(text).isEnabled()) << host::textNumber(text);
    EXPECT_EQ(action(text).toolTip(), window_->banner().text()) << host::textNumber(text);
  }
  EXPECT_TRUE(action(TextId::ActionOptions).isEnabled()) << "the controller can still be read";
}

TEST_F(MainWindow, WhatTheOptionsChangeInAReadOnlyWindowIsToldNotToBeSaved) {
  std::string cause;
  workbench::ConfigurationStore other(folder_.path());
  ASSERT_TRUE(other.open(cause));
  open(OneDevice);
  window_->tree().chosenDevice()->SetValue("calendar", u"Winter");
  frontEnd_.postToMainWindow({1025, 0, 0});
  QCoreApplication::processEvents();
  EXPECT_EQ(onDisk(), OneDevice);
  EXPECT_TRUE(window_->statusBar()->currentMessage().contains("can only be read"));
}

TEST_F(MainWindow, TryAgainTakesUpWhatTheOtherSavedAndTheRightToWrite) {
  std::string cause;
  auto other = std::make_unique<workbench::ConfigurationStore>(folder_.path());
  ASSERT_TRUE(other->open(cause));
  open(OneDevice);
  QPushButton& button = window_->banner().button();
  QTest::mouseClick(&button, Qt::LeftButton);
  EXPECT_TRUE(window_->banner().isVisible()) << "the other one is still there";
  std::string changed = OneDevice;
  changed.replace(changed.find("North"), 5, "South");
  folder_.write("configuration.xml", changed);
  other.reset();
  QTest::mouseClick(&button, Qt::LeftButton);
  EXPECT_FALSE(window_->banner().isVisible());
  EXPECT_FALSE(window_->windowTitle().contains("read only"));
  ASSERT_NE(window_->tree().chosenDevice(), nullptr);
  EXPECT_EQ(window_->tree().chosenDevice()->Value("name"), u"South");
  EXPECT_TRUE(action(TextId::ActionModify).isEnabled());
}

// --- shared ids

TEST_F(MainWindow, SharedIdsAreToldAndNewOnesGivenOnRequest) {
  open(
      "<configuration><commSystem>"
      "<device><id>{1}</id><driver>ZELLAMPMANAGER</driver><name>North</name></device>"
      "<device><id>{1}</id><driver>ZELLAMPMANAGER</driver><name>South</name></device>"
      "</commSystem></configuration>");
  EXPECT_TRUE(window_->windowTitle().endsWith("(read only)"));
  ASSERT_TRUE(window_->banner().isVisible());
  EXPECT_TRUE(window_->banner().text().contains("North and South have the id {1}"));
  EXPECT_FALSE(action(TextId::ActionModify).isEnabled());
  EXPECT_EQ(window_->banner().button().text(), "Give new ids");
  QTest::mouseClick(&window_->banner().button(), Qt::LeftButton);
  EXPECT_FALSE(window_->banner().isVisible());
  EXPECT_FALSE(window_->windowTitle().contains("read only"));
  EXPECT_TRUE(action(TextId::ActionNewDevice).isEnabled());
  const std::string saved = onDisk();
  EXPECT_EQ(saved.find("{1}"), saved.rfind("{1}")) << "the first device keeps its id";
  for (const char16_t* name : {u"North", u"South"}) {
    const auto* device = workbench::DeviceCatalogue::deviceNamed(name);
    EXPECT_EQ(XCDriver::LockDriver(device->Value("id"))->Name(), name);
  }
}

// --- the version before

TEST_F(MainWindow, TheVersionBeforeIsShownAsSuchUntilItIsSaved) {
  folder_.write("configuration.xml.previous", OneDevice);
  openRecovered("<configuration");
  ASSERT_TRUE(window_->banner().isVisible());
  EXPECT_TRUE(window_->banner().text().contains("configuration.xml.damaged"));
  EXPECT_FALSE(window_->banner().button().isVisible());
  ASSERT_NE(window_->tree().chosenDevice(), nullptr);
  window_->tree().chosenDevice()->SetValue("calendar", u"Winter");
  frontEnd_.postToMainWindow({1025, 0, 0});
  QCoreApplication::processEvents();
  EXPECT_FALSE(window_->banner().isVisible());
  EXPECT_EQ(folder_.read("configuration.xml.damaged"), "<configuration");
  EXPECT_NE(onDisk().find("Winter"), std::string::npos);
}

}  // namespace
