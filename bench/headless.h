#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "host/dialogs/base_dlg.h"
#include "host/services/services.h"
#include "host/ui/user_input.h"

namespace bench {

/// The services of a program without window: a controller that answers every read with one reply
/// and takes every write, and a user that runs through the dialogs by a script.
class Headless {
 public:
  /// What the user does at a dialog; one that stays open behind it is closed as Cancel.
  using Script = std::function<void(XCBaseDlg&)>;

  Headless();
  Headless(const Headless&) = delete;
  Headless& operator=(const Headless&) = delete;
  ~Headless();

  /// What reads are answered with, as XML. It is parsed at every read, as a channel does.
  void answer(std::string xml) { reply_ = std::move(xml); }
  void atDialogs(Script script) { script_ = std::move(script); }

  /// The size of the last document written, as it would go over the wire; 0 when none was.
  std::size_t written() const { return written_; }
  void forget() { written_ = 0; }

 private:
  class StandingClock;
  class Channel;
  class ScriptedUser;
  class Settings;

  std::string reply_;
  Script script_;
  std::size_t written_ = 0;
  std::unique_ptr<StandingClock> clock_;
  std::unique_ptr<host::IdSource> ids_;
  std::unique_ptr<Channel> channel_;
  std::unique_ptr<ScriptedUser> user_;
  std::unique_ptr<Settings> settings_;
};

/// Gestures on a control by its name; a refused one ends the program with the reason.
void type(XCBaseDlg& dialog, std::string_view edit, std::u16string_view text);
void click(XCBaseDlg& dialog, std::string_view button);
void select(XCBaseDlg& dialog, std::string_view list, std::vector<std::size_t> rows);
void selectAll(XCBaseDlg& dialog, std::string_view list);
void sort(XCBaseDlg& dialog, std::string_view list, std::size_t column);
host::ListControl& listOf(XCBaseDlg& dialog, std::string_view name);

/// The first @p count rows.
std::vector<std::size_t> firstRows(std::size_t count);

}  // namespace bench
