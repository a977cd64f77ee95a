#include <gmock/gmock.h>

#include <QtCore/QTimer>
#include <QtGui/QClipboard>
#include <QtTest/QTest>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableView>
#include <QtWidgets/QTreeView>
#include <map>
#include <regex>

#include "host/services/files.h"
#include "tests/automation/script_process.h"
#include "tests/editor/support/controller_process.h"
#include "tests/editor/support/shown_texts.h"
#include "tests/editor/support/window_rig.h"
#include "tests/support/xml_compare.h"

namespace {

using host::TextId;
using test::ScriptProcess;

constexpr int Lamps = 25;

// The configuration with every id replaced by the place where it stood first: two configurations
// are then equal when the same elements share an id.
std::string withoutIds(const std::string& xml) {
  static const std::regex id(
      R"(\{[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[0-9A-F]{4}-[0-9A-F]{12}\})");
  std::map<std::string, std::size_t> places;
  std::string out;
  std::size_t from = 0;
  for (std::sregex_iterator found(xml.begin(), xml.end(), id), end; found != end; ++found) {
    const auto at = static_cast<std::size_t>(found->position());
    const std::size_t place = places.try_emplace(found->str(), places.size() + 1).first->second;
    out += xml.substr(from, at - from) + "{" + std::to_string(place) + "}";
    from = at + static_cast<std::size_t>(found->length());
  }
  return out + xml.substr(from);
}

/// A controller is declared twice, by a person at the windows and by the scripted user, each in an
/// empty configuration of its own.
class DeclareDevice : public support::WindowRig {
 protected:
  DeclareDevice()
      : controller_(folder_ / "controller",
                    {"--nodes", QString::number(Lamps), "--seed", "3", "--id", "LM-000042"}) {
    options_.verifyNew = options_.verifyExisting = true;
  }
  void SetUp() override {
    ASSERT_NE(controller_.port(), 0) << "the controller does not start";
    reopen();
    workspace_->channel().setProgress(&exchange_);
    tree().view().setFocus();
  }
  QString port() const { return QString::number(controller_.port()); }
  void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(&tree().view(), key, modifiers);
  }

  // --- the person at the windows

  void declareInWindows() {
    whileOpen([this] { key(Qt::Key_N, Qt::ControlModifier); },
              [this] {
                type("name", "North");
                type("description", "Calle <Mayor> & \"Plaza\"");
                type("address", "127.0.0.1");
                type("socket", port());
                type("ftpAddress", "192.0.2.1");
                type("ftpUser", "reports");
                type("ftpPassword", "hunter2");
                press("ok");
              });
  }
  void groupInWindows() {
    whileOpen([this] { key(Qt::Key_G, Qt::ControlModifier); },
              [this] {
                type("name", "Square");
                type("reference", "1");
                QCoreApplication::processEvents();
                press("addMatching");
                press("ok");
              });
  }
  // Presses the first button of the message that will open, be it after an exchange.
  void answerNextMessage() {
    QTimer::singleShot(1, window_.get(), [this] {
      if (auto* box = dynamic_cast<QMessageBox*>(QApplication::activeModalWidget()))
        QTest::mouseClick(box->buttons().front(), Qt::LeftButton);
      else
        answerNextMessage();
    });
  }
  void updateNodesInWindows() {
    tree().chooseDevice(workbench::DeviceCatalogue::devices().front()->Value("id"));
    whileOpen([this] { key(Qt::Key_F5); },
              [this] {
                answerNextMessage();
                QTest::mouseClick(frontEnd_.topWindow()->body().renderer(6593)->focusWidget(),
                                  Qt::LeftButton);
                press("cancel");
              });
  }

  // --- the scripted user

  static void sendText(ScriptProcess& script, const char* id, const std::string& text) {
    script.ok({{"do", "type"}, {"id", id}, {"text", text}});
  }
  static void sendClick(ScriptProcess& script, const nlohmann::json& id) {
    script.ok({{"do", "click"}, {"id", id}});
  }
  void declareByScript(ScriptProcess& script) const {
    script.ok({{"do", "editor.newDevice"}});
    sendText(script, "name", "North");
    sendText(script, "description", "Calle <Mayor> & \"Plaza\"");
    sendText(script, "address", "127.0.0.1");
    sendText(script, "socket", port().toStdString());
    sendText(script, "ftpAddress", "192.0.2.1");
    sendText(script, "ftpUser", "reports");
    sendText(script, "ftpPassword", "hunter2");
    EXPECT_EQ(script.ok({{"do", "click"}, {"id", "ok"}}).at("closed").at("result"), "ok");
  }
  static void groupByScript(ScriptProcess& script) {
    script.ok({{"do", "editor.newGroup"}, {"device", "North"}});
    sendText(script, "name", "Square");
    sendText(script, "reference", "1");
    sendClick(script, "addMatching");
    sendClick(script, "ok");
  }
  static void updateNodesByScript(ScriptProcess& script) {
    script.ok({{"do", "editor.updateNodes"}, {"device", "North"}});
    sendClick(script, 6593);
    script.ok({{"do", "answer"}, {"button", "ok"}});
    sendClick(script, "cancel");
  }
  std::unique_ptr<ScriptProcess> startScript() const {
    return std::make_unique<ScriptProcess>(
        std::vector<std::string>{"--config", (folder_ / "script").string()});
  }
  std::string byScript() const { return contentOf(folder_ / "script" / "configuration.xml"); }
  static std::string contentOf(const std::filesystem::path& file) {
    std::string content;
    std::string cause;
    EXPECT_TRUE(host::readFile(file, 10'000'000, content, cause)) << cause;
    return content;
  }

  support::ControllerProcess controller_;
};

TEST_F(DeclareDevice, InWindowsAndByScriptMakesTheSameConfiguration) {
  declareInWindows();
  const auto script = startScript();
  declareByScript(*script);

  ASSERT_EQ(workbench::DeviceCatalogue::devices().size(), 1U);
  const XmlDocument::XmlNode& device = *workbench::DeviceCatalogue::devices().front();
  EXPECT_EQ(device.Value("identifier"), u"LM-000042") << "asked from the controller";
  EXPECT_EQ(device.Node("childDevices")->ChildCount(), std::size_t{Lamps});
  EXPECT_EQ(tree().chosenDevice(), &device) << "the new device is chosen";
  EXPECT_XML_EQ(withoutIds(byScript()), withoutIds(onDisk()));
}

TEST_F(DeclareDevice, GroupsOfLampsAndANodeUpdateAreTheSameToo) {
  const auto script = startScript();
  declareInWindows();
  declareByScript(*script);
  groupInWindows();
  groupByScript(*script);
  const workbench::LampGroups groups(*workbench::DeviceCatalogue::devices().front());
  ASSERT_EQ(groups.all().size(), 1U);
  const auto before = workbench::LampGroups::contentOf(*groups.all().front());
  EXPECT_GT(before.lamps.size(), 0U);
  EXPECT_LT(before.lamps.size(), std::size_t{Lamps});
  updateNodesInWindows();
  updateNodesByScript(*script);

  EXPECT_EQ(workspace_->record().entries().size(), 3U) << "identity, nodes, nodes again";
  ASSERT_EQ(groups.all().size(), 1U) << "it survived the node update";
  EXPECT_EQ(workbench::LampGroups::contentOf(*groups.all().front()), before);
  EXPECT_XML_EQ(withoutIds(byScript()), withoutIds(onDisk()));
}

TEST_F(DeclareDevice, WhatWasSavedLoadsAgainAndIsEqual) {
  declareInWindows();
  groupInWindows();
  const std::string saved = onDisk();
  const std::string shown = workspace_->store().text();
  EXPECT_EQ(saved, shown);
  reopen();
  EXPECT_EQ(workspace_->store().text(), shown);
  const auto script = startScript();
  declareByScript(*script);
  groupByScript(*script);
  const std::string told = script->ok({{"do", "editor.config"}}).at("xml");
  EXPECT_EQ(script->end(), 0);
  EXPECT_EQ(startScript()->ok({{"do", "editor.config"}}).at("xml"), told);
  EXPECT_XML_EQ(withoutIds(told), withoutIds(shown));
}

TEST_F(DeclareDevice, ThePasswordIsReadNowhereInTheWindows) {
  const auto expectHidden = [](const QWidget& widget) {
    const QStringList texts = support::shownTexts(widget);
    ASSERT_TRUE(texts.join(' ').contains("North")) << "the texts are found at all";
    EXPECT_FALSE(texts.join(' ').contains("hunter2"));
  };
  declareInWindows();
  auto* exchanges = window_->findChild<QTableView*>();
  ASSERT_GE(exchanges->model()->rowCount(), 2);
  for (int row = 0; row < exchanges->model()->rowCount(); ++row) {
    exchanges->selectRow(row);
    expectHidden(*window_);
  }
  whileOpen([this] { key(Qt::Key_F2); },
            [&] {
              expectHidden(*frontEnd_.topWindow());
              auto* password = dynamic_cast<QLineEdit*>(renderer("ftpPassword").focusWidget());
              ASSERT_NE(password, nullptr);
              EXPECT_EQ(password->displayText().size(), 7) << "a sign for each character";
              QGuiApplication::clipboard()->setText("before");
              QTest::keyClick(password, Qt::Key_A, Qt::ControlModifier);
              QTest::keyClick(password, Qt::Key_C, Qt::ControlModifier);
              EXPECT_EQ(QGuiApplication::clipboard()->text(), "before") << "it can't be copied out";
              press("cancel");
            });
}

}  // namespace
