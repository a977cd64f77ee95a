#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/ui/user_input.h"
#include "tests/support/fixed_clock.h"
#include "tests/support/printers.h"
#include "tests/support/scripted_channel.h"
#include "tests/support/scripted_front_end.h"
#include "tests/support/sequential_ids.h"
#include "tests/support/settings_fake.h"
#include "tests/support/utf8.h"

namespace support {

/// A control by its number or by its name.
struct ControlRef {
  ControlRef(int controlId) : id(controlId) {}
  ControlRef(const char* controlName) : name(controlName) {}
  ControlRef(std::string controlName) : name(std::move(controlName)) {}

  std::string text() const { return id ? std::to_string(*id) : name; }

  std::optional<int> id;
  std::string name;
};

/// A message box as a test looks at it.
struct Message {
  std::string text;
  host::MessageButtons buttons = host::MessageButtons::ok;
  host::MessageIcon icon = host::MessageIcon::none;
};

/// The user at the dialogs, as a linear script, although a modal dialog blocks who opens it: the
/// host's work runs on a second thread in strict turns with the test. It installs all services and
/// the texts' pseudo language, and takes them away again at its end, when whatever is still open
/// is closed as Cancel. What the work refers to must outlive the driver: declare it before the
/// driver, or let show() own it. All texts of its interface are UTF-8.
///
/// A gesture on a control that can't take it fails the test; the try... form answers the outcome
/// instead. A gesture returns when the dialog has settled: its handlers have returned, or something
/// else waits for the user.
class DialogDriver {
 public:
  DialogDriver();
  DialogDriver(const DialogDriver&) = delete;
  DialogDriver& operator=(const DialogDriver&) = delete;
  ~DialogDriver();

  // --- services

  FixedClock& clock() { return clock_; }
  SequentialIds& ids() { return ids_; }
  ScriptedChannel& channel() { return channel_; }
  SettingsFake& settings() { return settings_; }

  // --- work

  /// Starts the host's work; returns when it ended or something waits for the user.
  void run(std::function<void()> work);
  /// Whether work that run or show started has not ended yet.
  bool running() const { return works_ > 0; }

  /// Makes a dialog that the driver owns and runs it modally; result() tells what DoModal answered.
  template <class Dialog, class... Arguments>
  Dialog& show(Arguments&&... arguments) {
    auto made = std::make_shared<Dialog>(std::forward<Arguments>(arguments)...);
    owned_.push_back(made);
    result_.reset();
    run([this, dialog = made.get()] { result_ = dialog->DoModal(); });
    return *made;
  }
  /// What DoModal of the dialog last given to show() answered; none while it is open.
  std::optional<int> result() const { return result_; }

  /// Closes everything that is open, as Cancel.
  void closeAll();

  // --- what waits for the user

  TopKind top() const;
  /// The topmost dialog, also below a message or a file choice. Throws when none is open.
  XCBaseDlg& dialog() const;
  std::string title() const { return dialog().GetWindowText().ToUtf8(); }
  /// The message or the file choice on top. They throw when something else is.
  Message message() const;
  const host::FileRequest& fileRequest() const;
  /// The dialogs that have ended, in their order.
  const std::vector<ClosedDialog>& closed() const { return frontEnd_.closed(); }
  const std::vector<host::PostedMessage>& posted() { return frontEnd_.posted(); }
  const std::vector<host::CursorShape>& cursorLog() { return frontEnd_.cursors(); }
  void clearLogs();
  /// The editor's window takes no child panels from now on.
  void refuseChildren() { frontEnd_.refuseChildren(); }

  // --- gestures

  void type(const ControlRef& at, const Utf8& text);
  void choose(const ControlRef& at, int index);
  void choose(const ControlRef& at, const Utf8& text);
  void check(const ControlRef& at, bool on);
  void click(const ControlRef& at);
  void select(const ControlRef& at, const std::vector<std::size_t>& rows);
  void press(const ControlRef& at, host::Key key);
  void doubleClick(const ControlRef& at, std::size_t row);
  void sort(const ControlRef& at, std::size_t column);
  void paint(const ControlRef& at, const XCDateTime& date);
  void close();
  /// Answers the message on top; the test fails when it does not offer the answer.
  void answer(host::MessageAnswer answer);
  /// Answers the file choice on top; an empty path for Cancel.
  void pick(const std::filesystem::path& path);

  host::Outcome tryType(const ControlRef& at, const Utf8& text);
  host::Outcome tryChoose(const ControlRef& at, int index);
  host::Outcome tryChoose(const ControlRef& at, const Utf8& text);
  host::Outcome tryCheck(const ControlRef& at, bool on);
  host::Outcome tryClick(const ControlRef& at);
  host::Outcome trySelect(const ControlRef& at, const std::vector<std::size_t>& rows);
  host::Outcome tryPress(const ControlRef& at, host::Key key);
  host::Outcome tryDoubleClick(const ControlRef& at, std::size_t row);
  host::Outcome trySort(const ControlRef& at, std::size_t column);
  host::Outcome tryPaint(const ControlRef& at, const XCDateTime& date);
  host::Outcome tryClose();

  /// Any other gesture on the top dialog.
  using Gesture = std::function<host::Outcome(host::UserInput&, XCBaseDlg&)>;
  host::Outcome perform(const Gesture& gesture);

  // --- what the topmost dialog shows. A control that does not exist throws.

  host::Control& control(const ControlRef& at) const;
  template <class ControlType>
  ControlType& as(const ControlRef& at) const {
    return dynamic_cast<ControlType&>(control(at));
  }
  std::string text(const ControlRef& at) const { return control(at).text().ToUtf8(); }
  bool enabled(const ControlRef& at) const { return control(at).isEnabled(); }
  bool visible(const ControlRef& at) const { return control(at).isVisible(); }
  /// The name of the focused control, empty for none.
  std::string focus() const;
  bool checked(const ControlRef& at) const { return as<host::CheckControl>(at).isOn(); }
  /// The image of a button or a picture, empty for none.
  std::string image(const ControlRef& at) const;
  /// The text of the selected entry, empty for none; its index; all entries.
  std::string selectedItem(const ControlRef& combo) const;
  std::optional<std::size_t> selectedIndex(const ControlRef& combo) const;
  std::vector<std::string> items(const ControlRef& combo) const;
  std::vector<std::string> columns(const ControlRef& list) const;
  std::vector<std::vector<std::string>> rows(const ControlRef& list) const;
  /// The cells of one column.
  std::vector<std::string> column(const ControlRef& list, std::size_t column) const;
  std::vector<std::size_t> selection(const ControlRef& list) const;
  /// The selected characters of an edit, from and to.
  std::pair<std::size_t, std::size_t> selectedCharacters(const ControlRef& edit) const;

 private:
  template <class ControlType, class Act>
  host::Outcome on(const ControlRef& at, const char* kind, Act act);
  void settle(const std::function<void()>& answer);

  FixedClock clock_;
  SequentialIds ids_;
  ScriptedChannel channel_;
  SettingsFake settings_;
  std::vector<std::shared_ptr<void>> owned_;
  std::optional<int> result_;
  int works_ = 0;
  Lockstep lockstep_;
  ScriptedFrontEnd frontEnd_{lockstep_};
};

}  // namespace support
