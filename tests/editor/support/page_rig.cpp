#include "tests/editor/support/page_rig.h"

#include <QtCore/QTimer>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <fstream>

#include "tests/support/texts.h"

namespace support {
namespace {

constexpr int LookAgain = 5;  // milliseconds, while something is being exchanged

}  // namespace

PageRig::PageRig() {
  declare("{A}");
}

PageRig::~PageRig() {
  stop();
}

void PageRig::declare(const char* id) {
  std::ofstream(folder_.path() / "configuration.xml")
      << "<configuration><commSystem><device><id>" << id
      << "</id><driver>ZELLAMPMANAGER</driver>"
         "<type>ZELLAMPMANAGER</type><name>North</name><address>127.0.0.1</address><socket>"
      << controller_.port() << "</socket></device></commSystem></configuration>";
}

void PageRig::start() {
  stop();
  workbench::ProgramPaths paths;
  paths.texts = support::textsFolder();
  paths.images = LAMP_IMAGES_FOLDER;
  paths.plugin = LAMP_PLUGIN;
  workbench::WorkspaceOptions options;
  options.configuration = folder_.path();
  options.state = state();
  options.program = "lamp-editor";
  options.language = "numbers";
  options.verifyNew = options.verifyExisting = false;
  workspace_ = std::make_unique<workbench::Workspace>(paths, options);
  std::string cause;
  ASSERT_TRUE(workspace_->open(frontEnd_, cause)) << cause;
  workspace_->channel().setProgress(&exchange_);
  window_ = std::make_unique<editor::MainWindow>(*workspace_, frontEnd_, exchange_, preferences_,
                                                 support::textsFolder());
  window_->show();
  QCoreApplication::processEvents();
}

void PageRig::stop() {
  window_.reset();
  workspace_.reset();
}

void PageRig::work(std::vector<std::function<void()>> steps) {
  steps_ = std::move(steps);
  steps_.insert(steps_.begin(), press("device"));
  step_ = 0;
  QTimer::singleShot(0, window_.get(), [this] { next(); });
  window_->action(host::TextId::ActionOptions)->trigger();
  for (int turn = 0; turn < 10; ++turn) QCoreApplication::processEvents();
  EXPECT_EQ(step_, steps_.size()) << "steps were not reached";
}

// The next one is planned before this one is done: it may open a dialog and wait for its end.
void PageRig::next() {
  const bool waits = awaited_ && !awaited_() && !patience_.hasExpired();
  if (exchange_.isRunning() || waits) {
    QTimer::singleShot(LookAgain, window_.get(), [this] { next(); });
    return;
  }
  if (awaited_) {
    EXPECT_TRUE(awaited_()) << "waited in vain before step " << step_;
    awaited_ = nullptr;
  }
  if (step_ < steps_.size()) {
    QTimer::singleShot(LookAgain, window_.get(), [this] { next(); });
    steps_[step_++]();
    return;
  }
  if (editor::DialogWindow* top = frontEnd_.topWindow()) {
    QTimer::singleShot(LookAgain, window_.get(), [this] { next(); });
    top->close();
  }
}

std::function<void()> PageRig::press(const char* name) {
  return [this, name] {
    QWidget* button = frontEnd_.topWindow()->body().renderer(control(name).id())->focusWidget();
    QTest::mouseClick(button, Qt::LeftButton);
  };
}

std::function<void()> PageRig::typed(const char* name, const char* text) {
  return [this, name, text] {
    QWidget* edit = frontEnd_.topWindow()->body().renderer(control(name).id())->focusWidget();
    edit->setFocus();
    QTest::keyClick(edit, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(edit, text);
  };
}

std::function<void()> PageRig::until(std::function<bool()> holds, int milliseconds) {
  return [this, holds = std::move(holds), milliseconds] {
    awaited_ = holds;
    patience_.setRemainingTime(milliseconds);
  };
}

XCBaseDlg& PageRig::page() {
  return frontEnd_.topWindow()->body().dialog();
}

host::Control& PageRig::control(const char* name) {
  return *page().FindControl(std::string_view(name));
}

}  // namespace support
