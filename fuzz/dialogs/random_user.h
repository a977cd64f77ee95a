#pragma once

#include <functional>

#include "fuzz/input.h"
#include "host/dialogs/base_dlg.h"
#include "host/services/services.h"
#include "host/ui/user_input.h"

namespace fuzz {

/// A user without a window who does at the dialogs whatever the input says, a bounded number of
/// gestures, and then closes them. Looks at everything that a dialog shows after each gesture.
class RandomUser : public host::FrontEnd {
 public:
  explicit RandomUser(Input& input) : input_(input) {}

  /// What a file choice may answer besides Cancel.
  void offerFile(std::filesystem::path file) { file_ = std::move(file); }
  /// Called when the last dialog that was open has closed, before its DoModal goes on.
  void whenAllClosed(std::function<void()> tell) { allClosed_ = std::move(tell); }

  void runModal(XCBaseDlg& dialog) override;
  bool showChild(XCBaseDlg&, CWnd*) override { return false; }
  void forget(XCBaseDlg&) override {}
  host::MessageAnswer ask(const host::MessageRequest& request) override;
  std::filesystem::path openFile(const host::FileRequest& request) override;
  void setCursor(host::CursorShape) override {}
  void postToMainWindow(const host::PostedMessage&) override {}
  void dialogChanged(XCBaseDlg&) override {}

 private:
  void act(XCBaseDlg& dialog);
  void actAt(host::UserInput& user, host::EditControl& edit);
  void actAt(host::UserInput& user, host::ComboControl& combo);
  void actAt(host::UserInput& user, host::ListControl& list);
  void actAt(host::UserInput& user, XCCalendar& calendar);
  std::vector<std::size_t> chosenRows(const host::ListControl& list);
  std::u16string chosenText();

  Input& input_;
  std::filesystem::path file_;
  std::function<void()> allClosed_;
  int gesturesLeft_ = 150;
  int depth_ = 0;
};

/// Reads everything that a dialog shows, and ends the program where it does not hold together.
void lookAt(const XCBaseDlg& dialog);

}  // namespace fuzz
