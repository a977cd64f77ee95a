#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "host/export.h"
#include "host/text/basic_string.h"
#include "host/time/date_time.h"
#include "host/xml/xml_document.h"

class CWnd;
class XCBaseDlg;

// What a program supplies to the host: it installs these interfaces once, before it loads a
// plug-in. Everything runs on one thread.

namespace host {

class HOST_API Clock {
 public:
  virtual ~Clock();
  /// The local date and time that the host shows and offers as default.
  virtual XCDateTime now() const = 0;
};

class HOST_API IdSource {
 public:
  virtual ~IdSource();
  /// 16 bytes that were never given before.
  virtual std::array<std::uint8_t, 16> next() = 0;
};

enum class CommandKind { get, put };

/// One command to a controller.
struct ExchangeRequest {
  int command = 0;
  CommandKind kind = CommandKind::get;
  /// "name=value&..." percent-encoded, with the address and the port of the controller among them.
  XCBasicString uriParameters;
  /// The request; one without root is sent as an empty body. Owned by the caller.
  const XmlDocument* document = nullptr;
};

struct ExchangeReply {
  enum class Status { succeeded, failed, cancelled };
  Status status = Status::failed;
  /// For a read that succeeded: what the controller answered, without root for an empty answer.
  XmlDocument document;
  /// For a failure: what to show, possibly empty.
  XCBasicString error;
};

class HOST_API CommandChannel {
 public:
  virtual ~CommandChannel();
  /// Sends a command and waits for its answer. The front end stays alive meanwhile.
  virtual ExchangeReply exchange(const ExchangeRequest& request) = 0;
};

enum class MessageButtons { ok, retryCancel, yesNo };
enum class MessageIcon { none, information, warning, question, error };
enum class MessageAnswer { ok = 1, cancel = 2, retry = 4, yes = 6, no = 7 };

struct MessageRequest {
  CWnd* parent = nullptr;
  XCBasicString text;
  MessageButtons buttons = MessageButtons::ok;
  MessageIcon icon = MessageIcon::none;
};

struct FileFilter {
  XCBasicString description;
  std::string pattern;  ///< "*.tar"
};

struct FileRequest {
  CWnd* parent = nullptr;
  std::vector<FileFilter> filters;
};

/// A notice to the application's main window.
struct PostedMessage {
  unsigned message = 0;
  std::uint64_t wParam = 0;
  std::int64_t lParam = 0;
};

enum class CursorShape { arrow, wait };

/// What shows dialogs and asks the user.
class HOST_API FrontEnd {
 public:
  virtual ~FrontEnd();
  /// Shows the dialog and works on the user's gestures until dialog.HasEnded().
  virtual void runModal(XCBaseDlg& dialog) = 0;
  /// Shows a dialog as a child of @p parent and returns at once; false when it can't.
  virtual bool showChild(XCBaseDlg& dialog, CWnd* parent) = 0;
  /// Called when a dialog is destroyed, also one that was never shown: forget it.
  virtual void forget(XCBaseDlg& dialog) = 0;
  virtual MessageAnswer ask(const MessageRequest& request) = 0;
  /// The chosen file, an empty path when the user cancelled.
  virtual std::filesystem::path openFile(const FileRequest& request) = 0;
  virtual void setCursor(CursorShape shape) = 0;
  virtual void postToMainWindow(const PostedMessage& message) = 0;
  /// The state of a dialog or of its controls differs from what is shown. Called often: note it,
  /// and refresh when control returns to the event loop.
  virtual void dialogChanged(XCBaseDlg& dialog) = 0;
};

/// Settings of the program that dialogs ask for.
class HOST_API EditorSettings {
 public:
  virtual ~EditorSettings();
  /// Whether the connection to a device is verified when it is saved.
  virtual bool verifyConnection(bool existingDevice) const = 0;
};

struct Services {
  Clock* clockService = nullptr;
  IdSource* idService = nullptr;
  CommandChannel* channelService = nullptr;
  FrontEnd* frontEndService = nullptr;
  EditorSettings* settingsService = nullptr;

  Clock& clock() const { return *clockService; }
  IdSource& ids() const { return *idService; }
  CommandChannel& channel() const { return *channelService; }
  FrontEnd& frontEnd() const { return *frontEndService; }
  EditorSettings& settings() const { return *settingsService; }
};

/// Puts the program's services in force. They must outlive every use of the host.
HOST_API void installServices(const Services& services);

/// The services in force.
HOST_API const Services& services();

/// Shows the wait cursor as long as it lives, then the arrow.
class HOST_API WaitCursor {
 public:
  WaitCursor();
  WaitCursor(const WaitCursor&) = delete;
  WaitCursor& operator=(const WaitCursor&) = delete;
  ~WaitCursor();
};

}  // namespace host
