#include "tests/editor/support/window_rig.h"

#include <QtCore/QTimer>
#include <QtTest/QTest>
#include <stdexcept>

#include "host/services/setup.h"
#include "tests/support/texts.h"

namespace support {

WindowRig::WindowRig() {
  options_.configuration = folder_.path();
  options_.verifyNew = options_.verifyExisting = false;
}

WindowRig::~WindowRig() {
  window_.reset();
  workspace_.reset();
  XCMainCfg::Get().Document().Clear();
}

void WindowRig::open(const std::string& configuration) {
  folder_.write("configuration.xml", configuration);
  reopen();
}

void WindowRig::reopen() {
  makeWorkspace();
  std::string cause;
  ASSERT_TRUE(workspace_->open(frontEnd_, cause)) << cause;
  showWindow();
}

void WindowRig::openRecovered(const std::string& damaged) {
  folder_.write("configuration.xml", damaged);
  makeWorkspace();
  std::string cause;
  ASSERT_FALSE(workspace_->open(frontEnd_, cause));
  ASSERT_TRUE(workspace_->openKeptCopy(cause)) << cause;
  showWindow();
}

void WindowRig::makeWorkspace() {
  window_.reset();
  workspace_.reset();
  workbench::ProgramPaths paths;
  paths.texts = textsFolder();
  paths.images = LAMP_IMAGES_FOLDER;
  paths.plugin = LAMP_PLUGIN;
  workspace_ = std::make_unique<workbench::Workspace>(paths, options_);
}

void WindowRig::showWindow() {
  window_ = std::make_unique<editor::MainWindow>(*workspace_, frontEnd_, exchange_,
                                                 editor::EditorPreferences(), textsFolder());
  window_->show();
  window_->activateWindow();
  QCoreApplication::processEvents();
}

void WindowRig::whileOpen(const std::function<void()>& opener, std::function<void()> script) {
  // Keys find the shortcuts of the active window; none is active after a dialog without a screen.
  window_->activateWindow();
  QCoreApplication::processEvents();
  QTimer::singleShot(0, window_.get(), [script = std::move(script)] {
    try {
      script();
    } catch (const std::runtime_error& error) {
      ADD_FAILURE() << error.what();
    }
  });
  opener();
  QCoreApplication::processEvents();
}

editor::ControlRenderer& WindowRig::renderer(const char* control) {
  if (frontEnd_.topWindow() == nullptr)
    throw std::runtime_error(std::string("no dialog is open for ") + control);
  editor::DialogBody& body = frontEnd_.topWindow()->body();
  return *body.renderer(body.dialog().FindControl(control)->id());
}

void WindowRig::type(const char* control, const QString& text) {
  QWidget* widget = renderer(control).focusWidget();
  QTest::keyClick(widget, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClicks(widget, text);
}

void WindowRig::press(const char* control) {
  QTest::mouseClick(renderer(control).focusWidget(), Qt::LeftButton);
}

}  // namespace support
