#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "automation/command.h"
#include "automation/line_channel.h"
#include "automation/windows.h"
#include "workbench/json_writer.h"
#include "workbench/workspace.h"

namespace automation {

using workbench::JsonWriter;

/// The scripted user: the front end whose windows are worked by commands, one a line. Everything
/// happens in nested loops on one thread: a window that opens reads commands until it has closed.
/// The answer to a command is written just before the next line is read, which is when all
/// windows have settled.
class Session : public host::FrontEnd {
 public:
  explicit Session(LineChannel& lines) : lines_(lines) {}

  /// Reads and executes commands until the input ends or a command says so.
  void run(workbench::Workspace& workspace);

  // --- for the words

  workbench::Workspace& workspace() { return *workspace_; }
  Windows& windows() { return windows_; }
  /// The window that opens next belongs in front of this one; null when none is open.
  CWnd* parent();
  /// Where members of the answer to the command at hand are written. After a word opened windows
  /// that is the answer to the command that closed them.
  JsonWriter& answer() { return members_; }
  /// Ends the session as end of input does, when the word has returned.
  void end() { ending_ = true; }
  std::vector<host::PostedMessage> takePosted() { return std::exchange(posted_, {}); }

  // --- host::FrontEnd

  void runModal(XCBaseDlg& dialog) override;
  bool showChild(XCBaseDlg& dialog, CWnd* parent) override;
  void forget(XCBaseDlg& dialog) override;
  host::MessageAnswer ask(const host::MessageRequest& request) override;
  std::filesystem::path openFile(const host::FileRequest& request) override;
  void setCursor(host::CursorShape shape) override;
  void postToMainWindow(const host::PostedMessage& message) override;
  void dialogChanged(XCBaseDlg& dialog) override;

 private:
  struct Closed {
    std::string className;
    int result;
  };

  void serve(const std::function<bool()>& done);
  void execute(const std::string& line);
  void begin();
  void refuse(std::size_t command, const std::string& reason);
  void writeAnswer();

  LineChannel& lines_;
  workbench::Workspace* workspace_ = nullptr;
  Windows windows_;
  std::vector<host::PostedMessage> posted_;
  bool ending_ = false;

  // The command at hand and its answer as far as it has come.
  std::size_t commands_ = 0;
  bool unanswered_ = false;
  std::optional<std::string> error_;
  JsonWriter members_;
  std::optional<Closed> closed_;
};

}  // namespace automation
