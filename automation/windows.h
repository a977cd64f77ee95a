#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "host/dialogs/base_dlg.h"
#include "host/services/services.h"
#include "workbench/json_writer.h"

namespace automation {

using workbench::JsonWriter;

/// A message box that waits for its answer.
struct MessageWindow {
  host::MessageRequest request;
  std::optional<host::MessageAnswer> answer;
};

/// A file choice that waits for a path; an empty one is Cancel.
struct FileWindow {
  host::FileRequest request;
  std::optional<std::filesystem::path> path;
};

/// The windows that are open, each in front of the one before; the last one takes the commands.
class Windows {
 public:
  using Window = std::variant<XCBaseDlg*, MessageWindow*, FileWindow*>;

  /// Keeps a window open as long as it lives.
  class Open {
   public:
    Open(Windows& windows, Window window) : windows_(windows) { windows_.stack_.push_back(window); }
    Open(const Open&) = delete;
    Open& operator=(const Open&) = delete;
    ~Open() { windows_.stack_.pop_back(); }

   private:
    Windows& windows_;
  };

  bool empty() const { return stack_.empty(); }
  std::size_t count() const { return stack_.size(); }

  /// The window in front as one of the kinds, a Refusal that says what is in front when it is
  /// another.
  XCBaseDlg& dialog() const;
  MessageWindow& message() const;
  FileWindow& file() const;
  /// The window in front; must not be called when none is open.
  const Window& top() const { return stack_.back(); }

  /// Writes the object that tells what is in front.
  void describeTop(JsonWriter& out) const;

 private:
  std::string inFront() const;
  std::vector<Window> stack_;
};

/// The words for the buttons of a message box, in their order.
std::vector<host::MessageAnswer> buttonsOf(host::MessageButtons buttons);
const char* wordFor(host::MessageAnswer answer);
/// What stands for not agreeing: Cancel, No, or the only button.
host::MessageAnswer mostNegative(host::MessageButtons buttons);

}  // namespace automation
