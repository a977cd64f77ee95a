#pragma once

#include <gtest/gtest.h>

#include <QtCore/QDeadlineTimer>
#include <functional>
#include <memory>
#include <vector>

#include "editor/dialogs/dialog_window.h"
#include "editor/window/main_window.h"
#include "tests/editor/support/street_controller.h"
#include "tests/support/temp_folder.h"

namespace support {

/// The editor's window with the real plug-in on one device, whose controller is a few lines of the
/// test; and a person who goes through pages step by step.
class PageRig : public testing::Test {
 protected:
  PageRig();
  ~PageRig() override;

  /// Makes a configuration with one device of this id, whose controller is the test's.
  void declare(const char* id);
  /// Starts the editor, anew when it runs. The configuration and the state stay.
  void start();
  void stop();
  /// Opens the device's menu, does the steps one after another, each when nothing is being
  /// exchanged, and closes what is open then.
  void work(std::vector<std::function<void()>> steps);

  /// Steps.
  std::function<void()> press(const char* control);
  std::function<void()> typed(const char* control, const char* text);

  /// The next step waits until this holds, with the windows alive.
  std::function<void()> until(std::function<bool()> holds, int milliseconds = 5'000);

  XCBaseDlg& page();
  host::Control& control(const char* name);
  std::string text(const char* name) { return control(name).text().ToUtf8(); }
  std::filesystem::path state() const {
    return stateFolder_.empty() ? folder_.path() / "state" : stateFolder_;
  }

  std::filesystem::path stateFolder_;  // one of another process; empty for the test's own

  support::TempFolder folder_;
  StreetController controller_;
  editor::QtFrontEnd frontEnd_;
  editor::ExchangeWindow exchange_;
  std::unique_ptr<workbench::Workspace> workspace_;
  std::unique_ptr<editor::MainWindow> window_;
  editor::EditorPreferences preferences_;

 private:
  void next();

  std::vector<std::function<void()>> steps_;
  std::size_t step_ = 0;
  std::function<bool()> awaited_;
  QDeadlineTimer patience_;
};

}  // namespace support
