#include "editor/window/start.h"

#include <gtest/gtest.h>

#include <QtCore/QTimer>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

#include "host/services/setup.h"
#include "tests/support/temp_folder.h"
#include "tests/support/texts.h"

namespace {

using host::TextId;

constexpr const char* Damaged = "<configuration>\n  <commSystem>\n</configuration>";
constexpr const char* Before =
    "<configuration><commSystem><device><id>{A}</id><name>North</name></device></commSystem>"
    "</configuration>";

/// The start of the editor over a folder, with a person who presses a button of the dialog.
class Start : public testing::Test {
 protected:
  void TearDown() override {
    workspace_.reset();
    XCMainCfg::Get().Document().Clear();
  }

  bool start(const std::string& plugin = LAMP_PLUGIN) {
    workbench::ProgramPaths paths;
    paths.texts = support::textsFolder();
    paths.images = LAMP_IMAGES_FOLDER;
    paths.plugin = plugin;
    workbench::WorkspaceOptions options;
    options.configuration = folder_.path();
    workspace_ = std::make_unique<workbench::Workspace>(paths, options);
    return editor::openAsking(*workspace_, frontEnd_, cause_);
  }

  // Looks at the dialog that will open and presses its button with this number.
  void press(int number) {
    QTimer::singleShot(0, qApp, [this, number] {
      auto* box = dynamic_cast<QMessageBox*>(QApplication::activeModalWidget());
      ASSERT_NE(box, nullptr);
      text_ = box->text();
      more_ = box->informativeText();
      captions_.clear();
      for (const QAbstractButton* button : box->buttons()) captions_ << button->text();
      QTest::mouseClick(box->buttons()[number], Qt::LeftButton);
    });
  }

  std::string onDisk() const { return folder_.read("configuration.xml"); }

  support::TempFolder folder_;
  editor::QtFrontEnd frontEnd_;
  std::unique_ptr<workbench::Workspace> workspace_;
  std::string cause_;
  QString text_;
  QString more_;
  QStringList captions_;
};

TEST_F(Start, AConfigurationThatIsWholeOpensWithoutAQuestion) {
  folder_.write("configuration.xml", Before);
  EXPECT_TRUE(start()) << cause_;
  EXPECT_FALSE(workspace_->store().isRecovered());
}

TEST_F(Start, ADamagedConfigurationIsToldWithFileLineAndCause) {
  folder_.write("configuration.xml", Damaged);
  press(0);
  EXPECT_FALSE(start());
  EXPECT_TRUE(text_.contains(QString::fromStdString((folder_ / "configuration.xml").string())));
  EXPECT_TRUE(text_.contains("line 3")) << text_.toStdString();
  EXPECT_TRUE(more_.contains("no version before")) << more_.toStdString();
  EXPECT_EQ(captions_.size(), 1) << "nothing but to quit";
  EXPECT_EQ(text_.toStdString(), cause_);
  EXPECT_EQ(onDisk(), Damaged);
}

TEST_F(Start, TheVersionBeforeIsOfferedAndOpened) {
  folder_.write("configuration.xml", Damaged);
  folder_.write("configuration.xml.previous", Before);
  press(0);
  ASSERT_TRUE(start()) << cause_;
  EXPECT_EQ(captions_.size(), 2);
  EXPECT_TRUE(more_.contains(editor::momentOfKeptCopy(workspace_->store())));
  EXPECT_TRUE(more_.contains("configuration.xml.damaged"));
  EXPECT_TRUE(workspace_->store().isRecovered());
  EXPECT_NE(workbench::DeviceCatalogue::deviceNamed(u"North"), nullptr);
  EXPECT_EQ(onDisk(), Damaged);
}

TEST_F(Start, WhoDoesNotWantTheVersionBeforeLeavesEverythingAsItIs) {
  folder_.write("configuration.xml", Damaged);
  folder_.write("configuration.xml.previous", Before);
  press(1);
  EXPECT_FALSE(start());
  EXPECT_EQ(onDisk(), Damaged);
  EXPECT_EQ(folder_.read("configuration.xml.previous"), Before);
}

TEST_F(Start, AnotherFailureIsTold) {
  press(0);
  EXPECT_FALSE(start("/nowhere/plugin.so"));
  EXPECT_TRUE(text_.contains("/nowhere/plugin.so"));
  EXPECT_EQ(text_.toStdString(), cause_);
}

}  // namespace
