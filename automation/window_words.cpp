#include <algorithm>
#include <optional>
#include <string>

#include "automation/dialog_view.h"
#include "automation/refusal.h"
#include "automation/session.h"
#include "automation/words.h"
#include "host/ui/user_input.h"

namespace automation {

using host::Control;

Control& controlOf(const XCBaseDlg& dialog, const Command& command) {
  const auto id = command.control();
  if (const int* number = std::get_if<int>(&id)) {
    Control* found = dialog.FindControl(*number);
    if (found == nullptr || !found->hasNumber())
      throw Refusal("the dialog has no control " + std::to_string(*number));
    return *found;
  }
  const std::string& name = std::get<std::string>(id);
  Control* found = dialog.FindControl(name);
  // These two are names in every dialog.
  if (found == nullptr && name == "ok") found = dialog.FindControl(host::IdOk);
  if (found == nullptr && name == "cancel") found = dialog.FindControl(host::IdCancel);
  if (found == nullptr) throw Refusal("the dialog has no control \"" + name + "\"");
  return *found;
}

namespace {

using host::UserInput;

template <class Kind>
Kind& controlOf(const XCBaseDlg& dialog, const Command& command, const char* kind) {
  Control& control = controlOf(dialog, command);
  auto* found = dynamic_cast<Kind*>(&control);
  if (found == nullptr)
    throw Refusal("the control \"" + control.name() + "\" is no " + std::string(kind));
  return *found;
}

void require(const host::Outcome& outcome) {
  if (!outcome) throw Refusal(outcome.reason);
}

void look(Session& session, const Command&) {
  describeDialog(session.answer(), session.windows().dialog());
}

void click(Session& session, const Command& command) {
  XCBaseDlg& dialog = session.windows().dialog();
  require(UserInput(dialog).click(controlOf(dialog, command)));
}

void type(Session& session, const Command& command) {
  XCBaseDlg& dialog = session.windows().dialog();
  Control& control = controlOf(dialog, command);
  require(UserInput(dialog).type(control, command.text("text")));
}

std::size_t itemOf(const host::ComboControl& combo, const Command& command) {
  if (command.has("item")) return command.count("item");
  if (!command.has("text")) throw Refusal("the field \"item\" (an index) or \"text\" is missing");
  const XCBasicString text = command.text("text");
  const auto& items = combo.items();
  const auto found =
      std::find_if(items.begin(), items.end(), [&](const auto& item) { return item.text == text; });
  if (found == items.end())
    throw Refusal("the control \"" + combo.name() + "\" has no entry \"" + text.ToUtf8() + "\"");
  return static_cast<std::size_t>(found - items.begin());
}

void choose(Session& session, const Command& command) {
  XCBaseDlg& dialog = session.windows().dialog();
  auto& combo = controlOf<host::ComboControl>(dialog, command, "drop-down list");
  require(UserInput(dialog).choose(combo, itemOf(combo, command)));
}

void check(Session& session, const Command& command) {
  XCBaseDlg& dialog = session.windows().dialog();
  auto& box = controlOf<host::CheckControl>(dialog, command, "check box");
  require(UserInput(dialog).check(box, command.flag("on")));
}

void select(Session& session, const Command& command) {
  XCBaseDlg& dialog = session.windows().dialog();
  auto& list = controlOf<host::ListControl>(dialog, command, "list");
  require(UserInput(dialog).select(list, command.counts("rows")));
}

void press(Session& session, const Command& command) {
  constexpr std::pair<const char*, host::Key> Keys[] = {{"Delete", host::Key::deleteKey},
                                                        {"Insert", host::Key::insert},
                                                        {"Enter", host::Key::enter},
                                                        {"Escape", host::Key::escape}};
  XCBaseDlg& dialog = session.windows().dialog();
  Control& control = controlOf(dialog, command);
  const std::string key = command.utf8("key");
  for (const auto& [name, value] : Keys)
    if (key == name) return require(UserInput(dialog).press(control, value));
  throw Refusal("the field \"key\" must be Delete, Insert, Enter or Escape");
}

void doubleClick(Session& session, const Command& command) {
  XCBaseDlg& dialog = session.windows().dialog();
  auto& list = controlOf<host::ListControl>(dialog, command, "list");
  require(UserInput(dialog).doubleClick(list, command.count("row")));
}

void sort(Session& session, const Command& command) {
  XCBaseDlg& dialog = session.windows().dialog();
  auto& list = controlOf<host::ListControl>(dialog, command, "list");
  require(UserInput(dialog).sort(list, command.count("column")));
}

XCDateTime dateOf(const Command& command) {
  const std::string text = command.utf8("date");
  const auto date = workbench::SystemClock::parse(text + "T00:00:00");
  if (!date) throw Refusal("the field \"date\" must be a date such as 2025-04-10");
  return *date;
}

void paint(Session& session, const Command& command) {
  XCBaseDlg& dialog = session.windows().dialog();
  auto& calendar = controlOf<XCCalendar>(dialog, command, "year view");
  require(UserInput(dialog).paint(calendar, dateOf(command)));
}

void answer(Session& session, const Command& command) {
  MessageWindow& window = session.windows().message();
  const std::string button = command.utf8("button");
  for (const host::MessageAnswer offered : buttonsOf(window.request.buttons)) {
    if (button != wordFor(offered)) continue;
    window.answer = offered;
    return;
  }
  throw Refusal("the message has no button \"" + button + "\"");
}

void pick(Session& session, const Command& command) {
  FileWindow& window = session.windows().file();
  const std::string path = command.utf8("path");
  if (path.find('\0') != std::string::npos) throw Refusal("the field \"path\" must be a path");
  window.path = path;
}

// A question must be answered: its window has no close button.
void closeMessage(MessageWindow& window) {
  if (window.request.buttons == host::MessageButtons::yesNo)
    throw Refusal("the message can't be closed: answer yes or no");
  window.answer = mostNegative(window.request.buttons);
}

void close(Session& session, const Command&) {
  Windows& windows = session.windows();
  if (windows.empty()) throw Refusal("no window is open");
  if (std::holds_alternative<MessageWindow*>(windows.top()))
    closeMessage(windows.message());
  else if (std::holds_alternative<FileWindow*>(windows.top()))
    windows.file().path.emplace();
  else
    require(UserInput(windows.dialog()).close());
}

void quit(Session& session, const Command&) {
  session.end();
}

struct Entry {
  std::string_view name;
  Word word;
};

constexpr Entry Words[] = {
    {"look", &look},   {"click", &click},   {"type", &type},     {"choose", &choose},
    {"check", &check}, {"select", &select}, {"press", &press},   {"doubleClick", &doubleClick},
    {"sort", &sort},   {"paint", &paint},   {"answer", &answer}, {"pick", &pick},
    {"close", &close}, {"quit", &quit},
};

}  // namespace

Word findWindowWord(std::string_view name) {
  for (const Entry& entry : Words)
    if (entry.name == name) return entry.word;
  return nullptr;
}

}  // namespace automation
