#include "editor/window/main_window.h"

#include <gtest/gtest.h>

#include <QtCore/QTimer>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTreeView>
#include <fstream>

#include "editor/dialogs/dialog_window.h"
#include "editor/window/configuration_tree.h"
#include "editor/window/device_panel.h"
#include "tests/support/temp_folder.h"
#include "tests/support/texts.h"

namespace {

using host::TextId;

constexpr const char* OneDevice =
    "<configuration><commSystem><device><id>{A}</id><driver>ZELLAMPMANAGER</driver>"
    "<type>ZELLAMPMANAGER</type><name>North</name></device></commSystem></configuration>";

/// The window over a configuration in a folder of the test, with the real plug-in.
class MainWindow : public testing::Test {
 protected:
  void open(const std::string& configuration) {
    std::ofstream(folder_.path() / "configuration.xml") << configuration;
    workbench::ProgramPaths paths;
    paths.texts = support::textsFolder();
    paths.images = LAMP_IMAGES_FOLDER;
    paths.plugin = LAMP_PLUGIN;
    workbench::WorkspaceOptions options;
    options.configuration = folder_.path();
    options.verifyNew = options.verifyExisting = false;
    workspace_ = std::make_unique<workbench::Workspace>(paths, options);
    std::string cause;
    ASSERT_TRUE(workspace_->open(frontEnd_, cause)) << cause;
    window_ = std::make_unique<editor::MainWindow>(
        *workspace_, frontEnd_, exchange_, editor::EditorPreferences(), support::textsFolder());
    window_->show();
    QCoreApplication::processEvents();
  }
  void TearDown() override {
    window_.reset();
    workspace_.reset();
  }
  QAction& action(TextId text) { return *window_->action(text); }
  /// Does something once the modal window that @p opener opens is shown.
  void whileOpen(const std::function<void()>& opener, std::function<void()> script) {
    QTimer::singleShot(0, window_.get(), std::move(script));
    opener();
    QCoreApplication::processEvents();
  }

  support::TempFolder folder_;
  editor::QtFrontEnd frontEnd_;
  editor::ExchangeWindow exchange_;
  std::unique_ptr<workbench::Workspace> workspace_;
  std::unique_ptr<editor::MainWindow> window_;
};

TEST_F(MainWindow, AnEmptyConfigurationOffersTheFirstStep) {
  open("<configuration/>");
  auto* first = window_->findChild<QPushButton*>();
  ASSERT_NE(first, nullptr);
  EXPECT_TRUE(first->isVisible());
  EXPECT_TRUE(action(TextId::ActionNewDevice).isEnabled());
  EXPECT_FALSE(action(TextId::ActionModify).isEnabled());
  EXPECT_FALSE(action(TextId::ActionRemove).isEnabled());
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
              editor::DialogBody& body = frontEnd_.topWindow()->body();
              const auto type = [&](int id, const char* text) {
                QTest::keyClicks(body.renderer(id)->focusWidget(), text);
              };
              type(6307, "South");
              type(6308, "127.0.0.1");
              type(6344, "127.0.0.1");
              QTest::mouseClick(body.renderer(IDOK)->focusWidget(), Qt::LeftButton);
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
  std::ifstream file(folder_.path() / "configuration.xml");
  const std::string saved((std::istreambuf_iterator<char>(file)), {});
  EXPECT_NE(saved.find("<calendar>Winter</calendar>"), std::string::npos);
}

}  // namespace
