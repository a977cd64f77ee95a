#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QtCore/QDeadlineTimer>
#include <QtCore/QProcess>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <fstream>

#include "tests/editor/support/page_rig.h"

namespace {

class Draft : public support::PageRig {
 protected:
  void SetUp() override {
    controller_.hold("L01", "<L01 name=\"old\" hourIni=\"10\" FTPPwd=\"secret\"/>");
    controller_.hold("L04", "<L04><Node nodeId='1' Reference='a'/></L04>");
  }
  std::vector<std::filesystem::path> drafts() const {
    std::vector<std::filesystem::path> found;
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator(state() / "drafts", ignored))
      if (entry.path().extension() == ".json") found.push_back(entry.path());
    return found;
  }
  std::string draftText() const {
    std::ifstream file(drafts().at(0));
    return {std::istreambuf_iterator<char>(file), {}};
  }
  /// Waits for the pause in which the draft is written.
  std::function<void()> awaitDraft() {
    return until([this] { return !drafts().empty(); });
  }
  QMessageBox* offer() { return frontEnd_.topWindow()->findChild<QMessageBox*>(); }
  std::function<void()> answerOffer(int button) {
    return [this, button] {
      QMessageBox* box = offer();
      ASSERT_NE(box, nullptr);
      EXPECT_TRUE(box->text().startsWith("[60430](")) << box->text().toStdString();
      box->buttons().at(button)->click();
    };
  }
  /// Leaves a draft behind as a program does that ends in the midst of its work.
  void crash() {
    start();
    work({press("general"), typed("name", "typed"), awaitDraft(), [this] {
            std::filesystem::copy_file(drafts().at(0), folder_.path() / "kept");
            kept_ = drafts().at(0);
          }});
    std::filesystem::copy_file(folder_.path() / "kept", kept_);
  }

  std::filesystem::path kept_;
};

TEST_F(Draft, WhatIsTypedIsKeptForItsOwnerAndDroppedOnCancel) {
  start();
  work({press("general"), typed("name", "typed"), typed("FTPPwd", "hunter2"), awaitDraft(),
        [this] {
          const auto file = drafts().at(0);
          struct stat found {};
          ASSERT_EQ(::stat(file.c_str(), &found), 0);
          EXPECT_EQ(found.st_mode & 0777U, 0600U);
          ASSERT_EQ(::stat(file.parent_path().c_str(), &found), 0);
          EXPECT_EQ(found.st_mode & 0777U, 0700U);
          EXPECT_NE(draftText().find("\"name\":\"typed\""), std::string::npos) << draftText();
          EXPECT_EQ(draftText().find("hunter2"), std::string::npos);
          EXPECT_EQ(draftText().find("hourIni"), std::string::npos) << "it was not touched";
        },
        press("cancel"), [] {}});
  EXPECT_TRUE(drafts().empty());
}

TEST_F(Draft, ItIsDroppedOnOk) {
  start();
  work({press("general"), typed("name", "typed"), awaitDraft(), press("ok"), [] {}});
  EXPECT_EQ(controller_.writes().size(), 1U);
  EXPECT_TRUE(drafts().empty());
}

TEST_F(Draft, WhatIsTypedBackIsNoDraft) {
  start();
  work({press("general"), typed("name", "typed"), awaitDraft(), typed("name", "old"),
        until([this] { return drafts().empty(); }), [] {}});
}

TEST_F(Draft, AfterACrashItIsOfferedAndPutIntoThePage) {
  crash();
  start();
  work({press("general"), [] {}, answerOffer(0), [this] { EXPECT_EQ(text("name"), "typed"); },
        press("ok"), [] {}});
  ASSERT_EQ(controller_.writes().size(), 1U);
  EXPECT_NE(controller_.writes()[0].find("<E01 name=\"typed\"/>"), std::string::npos);
  EXPECT_TRUE(drafts().empty());
}

TEST_F(Draft, NoLeavesThePageAsItWasRead) {
  crash();
  start();
  work({press("general"), [] {}, answerOffer(1), [this] { EXPECT_EQ(text("name"), "old"); },
        press("cancel"), [] {}});
  EXPECT_TRUE(drafts().empty());
}

TEST_F(Draft, WhatThePageRefusesIsToldAndTheRestIsPutIn) {
  crash();
  std::ofstream(kept_) << R"({"when":"2025-03-15T10:00:00.000Z",)"
                       << R"("fields":{"name":"typed","TimeZone":"?"}})";
  start();
  work({press("general"), [] {}, answerOffer(0),
        [this] {
          QMessageBox* told = offer();
          ASSERT_NE(told, nullptr);
          EXPECT_TRUE(told->text().startsWith("[60412](1,0)")) << told->text().toStdString();
          EXPECT_TRUE(told->text().contains("TimeZone")) << told->text().toStdString();
          told->buttons().at(0)->click();
        },
        [this] { EXPECT_EQ(text("name"), "typed"); }, press("cancel"), [] {}});
}

TEST_F(Draft, ADamagedDraftIsNotOffered) {
  crash();
  std::ofstream(kept_) << "{\"when\":\"x\",\"fields\":{\"name\":";
  start();
  work({press("general"), [] {}, [this] { EXPECT_EQ(offer(), nullptr); }});
}

// Rows are kept by their node.
TEST_F(Draft, RowsOfATableComeBack) {
  controller_.hold("L04",
                   "<L04><Node nodeId='1' Reference='a' latitude='1' longitude='2'/>"
                   "<Node nodeId='2' Reference='b' latitude='1' longitude='2'/></L04>");
  start();
  work({press("nodeTable"), typed("reference", "typed"), awaitDraft(), [this] {
          EXPECT_NE(draftText().find("\"1\":{\"Reference\":\"typed\"}"), std::string::npos)
              << draftText();
        }});
}

TEST_F(Draft, ATaskThatWasAddedComesBack) {
  controller_.hold("L02",
                   "<L02><TP TpTar='1' TpHi='20240605100000S' TpPer='00000001000000' TpCompl='Y' "
                   "TpNode='' TpPrio='2'><TpPro TpReq='L03' TpSend='Y' TpStore='N'/></TP></L02>");
  const auto numbers = [this] {
    const auto& tasks = dynamic_cast<host::ListControl&>(control("tasks"));
    std::string text;
    for (std::size_t row = 0; row < tasks.rowCount(); ++row)
      text += tasks.element(row)->getAttribute(host::XmlName("TpTar")).ToUtf8() + " ";
    return text;
  };
  start();
  work({press("tasks"), press("newTask"), press("newAction"), awaitDraft(), [this] {
          std::filesystem::copy_file(drafts().at(0), folder_.path() / "kept");
          kept_ = drafts().at(0);
        }});
  EXPECT_TRUE(drafts().empty());
  std::filesystem::copy_file(folder_.path() / "kept", kept_);
  start();
  work({press("tasks"), [] {}, answerOffer(0), [&] { EXPECT_EQ(numbers(), "1 2 "); }, press("ok"),
        [] {}});
  ASSERT_EQ(controller_.writes().size(), 1U);
  EXPECT_NE(controller_.writes()[0].find("TpTar=\"2\""), std::string::npos);
}

constexpr const char* FolderVariable = "LAMP_DRAFT_FOLDER";

// The other half of the next test: in a process of its own somebody types and waits to be killed.
class EditorToBeKilled : public Draft {
  void TestBody() override {
    const std::string folder = qgetenv(FolderVariable).toStdString();
    std::filesystem::copy_file(folder + "/configuration.xml", folder_.path() / "configuration.xml",
                               std::filesystem::copy_options::overwrite_existing);
    stateFolder_ = folder + "/state";
    start();
    work({press("general"), typed("FTPPwd", "hunter2"), typed("mailPassword", "hunter3"),
          typed("name", "typed"), until([] { return false; }, 60'000), [] {}});
  }
};

[[maybe_unused]] const auto* const ToBeKilled =
    qEnvironmentVariableIsSet(FolderVariable)
        ? testing::RegisterTest("Draft", "EditorToBeKilled", nullptr, nullptr, __FILE__, __LINE__,
                                []() -> Draft* { return new EditorToBeKilled; })
        : nullptr;

TEST_F(Draft, AnEditorThatIsKilledLosesNothingThatWasTyped) {
  QProcess editor;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(FolderVariable, QString::fromStdString(folder_.path().string()));
  environment.insert("QT_QPA_PLATFORM", "offscreen");
  editor.setProcessEnvironment(environment);
  editor.start(QApplication::applicationFilePath(), {"--gtest_filter=Draft.EditorToBeKilled"});
  ASSERT_TRUE(editor.waitForStarted());
  ASSERT_TRUE(QTest::qWaitFor([this] { return !drafts().empty(); }, 30'000));
  ::kill(static_cast<pid_t>(editor.processId()), SIGKILL);
  ASSERT_TRUE(editor.waitForFinished());
  ASSERT_EQ(editor.exitStatus(), QProcess::CrashExit);
  ASSERT_EQ(drafts().size(), 1U);
  EXPECT_NE(draftText().find("typed"), std::string::npos);
  for (const char* password : {"hunter2", "hunter3", "secret"})
    EXPECT_EQ(draftText().find(password), std::string::npos) << password;
  start();
  work({press("nodeTable"), [] {}, [this] { EXPECT_EQ(offer(), nullptr) << "another page"; }});
  declare("{B}");
  start();
  work({press("general"), [] {}, [this] { EXPECT_EQ(offer(), nullptr) << "another device"; }});
  declare("{A}");
  start();
  work({press("general"), [] {}, answerOffer(0), [this] { EXPECT_EQ(text("name"), "typed"); },
        press("ok"), [] {}});
  ASSERT_EQ(controller_.writes().size(), 1U);
  EXPECT_TRUE(drafts().empty());
  work({press("general"), [] {}, [this] { EXPECT_EQ(offer(), nullptr) << "it was dropped"; }});
}

}  // namespace
