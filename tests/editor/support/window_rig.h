#pragma once

#include <gtest/gtest.h>

#include <QtGui/QAction>
#include <functional>
#include <memory>
#include <string>

#include "editor/dialogs/dialog_window.h"
#include "editor/window/configuration_tree.h"
#include "editor/window/main_window.h"
#include "tests/support/temp_folder.h"

namespace support {

/// The editor's window over a configuration in a folder of the test, with the real plug-in.
class WindowRig : public testing::Test {
 protected:
  WindowRig();
  ~WindowRig() override;

  /// Writes the configuration and opens the window over it.
  void open(const std::string& configuration);
  /// The same with a configuration that can't be read, in whose place the version before is opened.
  void openRecovered(const std::string& damaged);
  /// Opens the window over what lies in the folder.
  void reopen();

  QAction& action(host::TextId text) { return *window_->action(text); }
  editor::ConfigurationTree& tree() { return window_->tree(); }
  std::string onDisk() const { return folder_.read("configuration.xml"); }
  /// Does something once the modal window that @p opener opens is shown.
  void whileOpen(const std::function<void()>& opener, std::function<void()> script);
  /// Types into a control of the dialog in front, and presses a button of it.
  void type(const char* control, const QString& text);
  void press(const char* control);
  editor::ControlRenderer& renderer(const char* control);

  support::TempFolder folder_;
  /// How the workspace is opened; to be changed before that.
  workbench::WorkspaceOptions options_;
  editor::QtFrontEnd frontEnd_;
  editor::ExchangeWindow exchange_;
  std::unique_ptr<workbench::Workspace> workspace_;
  std::unique_ptr<editor::MainWindow> window_;

 private:
  void makeWorkspace();
  void showWindow();
};

}  // namespace support
