#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <unordered_map>

#include "editor/dialogs/dialog_body.h"
#include "host/services/services.h"

class QMessageBox;
class QWidget;

namespace editor {

class DialogWindow;

/// Shows dialogs, messages and file choices with Qt Widgets.
class QtFrontEnd : public host::FrontEnd {
 public:
  QtFrontEnd();
  ~QtFrontEnd() override;

  void runModal(XCBaseDlg& dialog) override;
  /// Embeds the dialog where @p parent is a WidgetWnd: the widgets fill its widget's layout.
  bool showChild(XCBaseDlg& dialog, CWnd* parent) override;
  void forget(XCBaseDlg& dialog) override;
  host::MessageAnswer ask(const host::MessageRequest& request) override;
  std::filesystem::path openFile(const host::FileRequest& request) override;
  void setCursor(host::CursorShape shape) override;
  void postToMainWindow(const host::PostedMessage& message) override;
  void dialogChanged(XCBaseDlg& dialog) override;

  /// Where notices to the main window go, from the event loop, in their order.
  void setPostedListener(std::function<void(const host::PostedMessage&)> listener) {
    postedListener_ = std::move(listener);
  }

  /// Makes what stands by a modal dialog's window as long as it is open, null for nothing.
  void setCompanions(std::function<std::unique_ptr<QObject>(DialogWindow&)> make) {
    makeCompanion_ = std::move(make);
  }

  /// Called from the event loop after the last open dialog, message or file choice has gone.
  void setIdleListener(std::function<void()> listener) { idleListener_ = std::move(listener); }
  /// Whether a dialog, a message or a file choice is open: a handler then waits for it.
  bool isBusy() const { return nested_ > 0; }

  /// How many modal dialogs are open, one in front of the other.
  std::size_t modalDepth() const { return modals_.size(); }
  /// The window of the modal dialog in front; null when there is none.
  DialogWindow* topWindow() const { return modals_.empty() ? nullptr : modals_.back(); }
  DialogBody* bodyOf(const XCBaseDlg& dialog) const;

 private:
  /// Something that waits for the person, as long as it lives.
  class Nested;

  QWidget* windowOf(CWnd* wnd) const;

  std::unordered_map<const XCBaseDlg*, std::unique_ptr<DialogBody>> children_;
  std::vector<DialogWindow*> modals_;
  std::function<void(const host::PostedMessage&)> postedListener_;
  std::function<void()> idleListener_;
  std::function<std::unique_ptr<QObject>(DialogWindow&)> makeCompanion_;
  QObject queue_;
  int nested_ = 0;
  bool waiting_ = false;
};

}  // namespace editor
