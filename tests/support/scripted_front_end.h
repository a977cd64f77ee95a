#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "host/dialogs/base_dlg.h"
#include "host/services/services.h"
#include "tests/support/lockstep.h"

namespace support {

enum class TopKind { none, dialog, message, file };

/// A dialog that has ended.
struct ClosedDialog {
  std::string className;
  int result = IDCANCEL;
  friend bool operator==(const ClosedDialog&, const ClosedDialog&) = default;
};

/// A front end without a window: what waits for the user stands on a stack, and the turn goes to
/// the test's script until it is dealt with. Its calls come from the worker of the lockstep.
class ScriptedFrontEnd : public host::FrontEnd {
 public:
  /// Something that waits for the user.
  struct Waiting {
    TopKind kind = TopKind::none;
    XCBaseDlg* dialog = nullptr;  ///< of a dialog
    bool child = false;           ///< a dialog that is shown as a child
    host::MessageRequest message;
    host::FileRequest file;
    bool settled = false;  ///< a message or file choice was answered
    host::MessageAnswer answer = host::MessageAnswer::cancel;
    std::filesystem::path path;
  };

  explicit ScriptedFrontEnd(Lockstep& lockstep) : lockstep_(lockstep) {}

  /// What waits on top, a child dialog too; null when nothing does.
  Waiting* top() const;
  /// What blocks the host's work on top; null when nothing does.
  Waiting* topModal() const;
  /// The topmost dialog, also below a message; null when none is open.
  XCBaseDlg* topDialog() const;

  const std::vector<ClosedDialog>& closed() const { return closed_; }
  std::vector<host::PostedMessage>& posted() { return posted_; }
  std::vector<host::CursorShape>& cursors() { return cursors_; }

  /// From now on no dialog can be shown as a child.
  void refuseChildren() { childrenRefused_ = true; }

  void runModal(XCBaseDlg& dialog) override;
  bool showChild(XCBaseDlg& dialog, CWnd* parent) override;
  void forget(XCBaseDlg& dialog) override;
  host::MessageAnswer ask(const host::MessageRequest& request) override;
  std::filesystem::path openFile(const host::FileRequest& request) override;
  void setCursor(host::CursorShape shape) override { cursors_.push_back(shape); }
  void postToMainWindow(const host::PostedMessage& message) override { posted_.push_back(message); }
  void dialogChanged(XCBaseDlg&) override {}

 private:
  void push(std::unique_ptr<Waiting> entry) { stack_.push_back(std::move(entry)); }
  void remove(const Waiting& entry);
  bool canWait(const char* what) const;

  Lockstep& lockstep_;
  bool childrenRefused_ = false;
  std::vector<std::unique_ptr<Waiting>> stack_;
  std::vector<ClosedDialog> closed_;
  std::vector<host::PostedMessage> posted_;
  std::vector<host::CursorShape> cursors_;
};

/// The answer of a person who wants nothing: No, Cancel, or OK where there is no other.
host::MessageAnswer negativeAnswer(host::MessageButtons buttons);
/// Whether a message box with these buttons offers the answer.
bool offers(host::MessageButtons buttons, host::MessageAnswer answer);

}  // namespace support
