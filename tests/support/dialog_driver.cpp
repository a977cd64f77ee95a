#include "tests/support/dialog_driver.h"

#include <stdexcept>

#include "tests/support/no_front_end.h"
#include "tests/support/texts.h"

namespace support {

using host::Outcome;
using host::UserInput;

namespace {

const char* nameOf(TopKind kind) {
  switch (kind) {
    case TopKind::dialog:
      return "a dialog";
    case TopKind::message:
      return "a message";
    case TopKind::file:
      return "a file choice";
    case TopKind::none:
      break;
  }
  return "nothing";
}

void expectDone(const Outcome& outcome, const std::string& gesture) {
  EXPECT_TRUE(outcome.done) << gesture << " was refused: " << outcome.reason;
}

std::string joined(const std::vector<std::size_t>& rows) {
  std::string text;
  for (const std::size_t row : rows) text += (text.empty() ? "" : ", ") + std::to_string(row);
  return text;
}

// A task must not throw: what host code throws is a failure of the test.
void guarded(const std::function<void()>& work) {
  try {
    work();
  } catch (const std::exception& error) {
    ADD_FAILURE() << "the host's code threw: " << error.what();
  }
}

}  // namespace

DialogDriver::DialogDriver() {
  texts();
  host::installServices({&clock_, &ids_, &channel_, &frontEnd_, &settings_});
}

DialogDriver::~DialogDriver() {
  closeAll();
  owned_.clear();
  installNoServices();
}

// --- work

void DialogDriver::run(std::function<void()> work) {
  ++works_;
  lockstep_.run([this, work = std::move(work)] {
    guarded(work);
    --works_;
  });
}

void DialogDriver::closeAll() {
  const XCBaseDlg* asked = nullptr;
  while (ScriptedFrontEnd::Waiting* waiting = frontEnd_.topModal()) {
    if (waiting->kind != TopKind::dialog) {
      settle([waiting] {
        waiting->answer = negativeAnswer(waiting->message.buttons);
        waiting->settled = true;
      });
      continue;
    }
    // A dialog that does not close when it is asked to is ended.
    XCBaseDlg& open = *waiting->dialog;
    const bool again = asked == &open;
    asked = &open;
    lockstep_.run([&open, again] {
      if (again)
        open.EndDialog(IDCANCEL);
      else
        guarded([&open] { UserInput(open).close(); });
    });
  }
}

void DialogDriver::settle(const std::function<void()>& answer) {
  lockstep_.run(answer);
}

// --- what waits for the user

TopKind DialogDriver::top() const {
  const auto* waiting = frontEnd_.top();
  return waiting ? waiting->kind : TopKind::none;
}

XCBaseDlg& DialogDriver::dialog() const {
  XCBaseDlg* open = frontEnd_.topDialog();
  if (open == nullptr) throw std::logic_error("no dialog is open");
  return *open;
}

Message DialogDriver::message() const {
  const auto* waiting = frontEnd_.top();
  if (top() != TopKind::message)
    throw std::logic_error(std::string("no message is open, but ") + nameOf(top()));
  return {waiting->message.text.ToUtf8(), waiting->message.buttons, waiting->message.icon};
}

const host::FileRequest& DialogDriver::fileRequest() const {
  if (top() != TopKind::file)
    throw std::logic_error(std::string("no file choice is open, but ") + nameOf(top()));
  return frontEnd_.top()->file;
}

void DialogDriver::clearLogs() {
  frontEnd_.posted().clear();
  frontEnd_.cursors().clear();
}

// --- gestures

Outcome DialogDriver::perform(const Gesture& gesture) {
  if (top() == TopKind::message) return Outcome::refused("a message is open: " + message().text);
  if (top() != TopKind::dialog)
    return Outcome::refused(std::string("no dialog is on top, but ") + nameOf(top()));
  XCBaseDlg& open = *frontEnd_.top()->dialog;
  // The handlers may still be at work, below another dialog, when the turn comes back; the gesture
  // was done then.
  const auto outcome = std::make_shared<Outcome>();
  lockstep_.run([&open, gesture, outcome] {
    guarded([&] {
      UserInput input(open);
      *outcome = gesture(input, open);
    });
  });
  return *outcome;
}

host::Control& DialogDriver::control(const ControlRef& at) const {
  XCBaseDlg& open = dialog();
  host::Control* found =
      at.id ? open.FindControl(*at.id) : open.FindControl(std::string_view(at.name));
  if (found != nullptr) return *found;
  std::string names;
  for (const auto& one : open.Controls()) names += " " + one->name();
  throw std::invalid_argument("the dialog " + open.ClassName() + " has no control \"" + at.text() +
                              "\", only" + names);
}

template <class ControlType, class Act>
Outcome DialogDriver::on(const ControlRef& at, const char* kind, Act act) {
  if (top() != TopKind::dialog) return perform({});
  auto* target = dynamic_cast<ControlType*>(&control(at));
  if (target == nullptr) return Outcome::refused("\"" + at.text() + "\" is no " + kind);
  return perform([target, act](UserInput& input, XCBaseDlg&) { return act(input, *target); });
}

Outcome DialogDriver::tryType(const ControlRef& at, const Utf8& text) {
  return on<host::Control>(at, "control", [text](UserInput& input, host::Control& target) {
    return input.type(target, text.wide());
  });
}

Outcome DialogDriver::tryChoose(const ControlRef& at, int index) {
  return on<host::ComboControl>(at, "drop-down list",
                                [index](UserInput& input, host::ComboControl& target) {
                                  return input.choose(target, static_cast<std::size_t>(index));
                                });
}

Outcome DialogDriver::tryChoose(const ControlRef& at, const Utf8& text) {
  return on<host::ComboControl>(
      at, "drop-down list", [text](UserInput& input, host::ComboControl& target) {
        for (std::size_t i = 0; i < target.items().size(); ++i)
          if (target.items()[i].text == text.wide()) return input.choose(target, i);
        return Outcome::refused("there is no entry \"" + text.value + "\"");
      });
}

Outcome DialogDriver::tryCheck(const ControlRef& at, bool state) {
  return on<host::CheckControl>(
      at, "check box",
      [state](UserInput& input, host::CheckControl& target) { return input.check(target, state); });
}

Outcome DialogDriver::tryClick(const ControlRef& at) {
  return on<host::Control>(
      at, "control", [](UserInput& input, host::Control& target) { return input.click(target); });
}

Outcome DialogDriver::trySelect(const ControlRef& at, const std::vector<std::size_t>& rows) {
  return on<host::ListControl>(at, "list", [rows](UserInput& input, host::ListControl& target) {
    return input.select(target, rows);
  });
}

Outcome DialogDriver::tryPress(const ControlRef& at, host::Key key) {
  return on<host::Control>(at, "control", [key](UserInput& input, host::Control& target) {
    return input.press(target, key);
  });
}

Outcome DialogDriver::tryDoubleClick(const ControlRef& at, std::size_t row) {
  return on<host::ListControl>(at, "list", [row](UserInput& input, host::ListControl& target) {
    return input.doubleClick(target, row);
  });
}

Outcome DialogDriver::trySort(const ControlRef& at, std::size_t column) {
  return on<host::ListControl>(at, "list", [column](UserInput& input, host::ListControl& target) {
    return input.sort(target, column);
  });
}

Outcome DialogDriver::tryPaint(const ControlRef& at, const XCDateTime& date) {
  return on<XCCalendar>(at, "year view", [date](UserInput& input, XCCalendar& target) {
    return input.paint(target, date);
  });
}

Outcome DialogDriver::tryClose() {
  return perform([](UserInput& input, XCBaseDlg&) { return input.close(); });
}

void DialogDriver::type(const ControlRef& at, const Utf8& text) {
  expectDone(tryType(at, text), "typing \"" + text.value + "\" into " + at.text());
}
void DialogDriver::choose(const ControlRef& at, int index) {
  expectDone(tryChoose(at, index), "choosing entry " + std::to_string(index) + " of " + at.text());
}
void DialogDriver::choose(const ControlRef& at, const Utf8& text) {
  expectDone(tryChoose(at, text), "choosing \"" + text.value + "\" in " + at.text());
}
void DialogDriver::check(const ControlRef& at, bool state) {
  expectDone(tryCheck(at, state), (state ? "checking " : "unchecking ") + at.text());
}
void DialogDriver::click(const ControlRef& at) {
  expectDone(tryClick(at), "clicking " + at.text());
}
void DialogDriver::select(const ControlRef& at, const std::vector<std::size_t>& rows) {
  expectDone(trySelect(at, rows), "selecting rows " + joined(rows) + " of " + at.text());
}
void DialogDriver::press(const ControlRef& at, host::Key key) {
  expectDone(tryPress(at, key), "pressing a key in " + at.text());
}
void DialogDriver::doubleClick(const ControlRef& at, std::size_t row) {
  expectDone(tryDoubleClick(at, row),
             "double-clicking row " + std::to_string(row) + " of " + at.text());
}
void DialogDriver::sort(const ControlRef& at, std::size_t column) {
  expectDone(trySort(at, column), "sorting " + at.text() + " by " + std::to_string(column));
}
void DialogDriver::paint(const ControlRef& at, const XCDateTime& date) {
  expectDone(tryPaint(at, date), "painting " + at.text());
}
void DialogDriver::close() {
  expectDone(tryClose(), "closing");
}

void DialogDriver::answer(host::MessageAnswer given) {
  if (top() != TopKind::message) {
    ADD_FAILURE() << "no message to answer, but " << nameOf(top());
    return;
  }
  auto* waiting = frontEnd_.top();
  const bool offered = offers(waiting->message.buttons, given);
  EXPECT_TRUE(offered) << "the message \"" << message().text << "\" has no such button";
  if (!offered) return;
  settle([waiting, given] {
    waiting->answer = given;
    waiting->settled = true;
  });
}

void DialogDriver::pick(const std::filesystem::path& path) {
  if (top() != TopKind::file) {
    ADD_FAILURE() << "no file choice to answer, but " << nameOf(top());
    return;
  }
  auto* waiting = frontEnd_.top();
  settle([waiting, path] {
    waiting->path = path;
    waiting->settled = true;
  });
}

// --- what the topmost dialog shows

std::string DialogDriver::focus() const {
  const host::Control* focused = dialog().Focus();
  return focused ? focused->name() : std::string();
}

std::string DialogDriver::image(const ControlRef& at) const {
  const auto* target = dynamic_cast<const host::ImageControl*>(&control(at));
  return target ? target->image() : std::string();
}

std::string DialogDriver::selectedItem(const ControlRef& combo) const {
  const auto& target = as<host::ComboControl>(combo);
  return target.selected() ? target.items()[*target.selected()].text.ToUtf8() : std::string();
}

std::optional<std::size_t> DialogDriver::selectedIndex(const ControlRef& combo) const {
  return as<host::ComboControl>(combo).selected();
}

std::vector<std::string> DialogDriver::items(const ControlRef& combo) const {
  std::vector<std::string> texts;
  for (const auto& item : as<host::ComboControl>(combo).items())
    texts.push_back(item.text.ToUtf8());
  return texts;
}

std::vector<std::string> DialogDriver::columns(const ControlRef& list) const {
  std::vector<std::string> captions;
  for (const auto& one : as<host::ListControl>(list).columns())
    captions.push_back(one.caption.ToUtf8());
  return captions;
}

std::vector<std::vector<std::string>> DialogDriver::rows(const ControlRef& list) const {
  const auto& target = as<host::ListControl>(list);
  std::vector<std::vector<std::string>> cells(target.rowCount());
  for (std::size_t row = 0; row < cells.size(); ++row)
    for (std::size_t at = 0; at < target.columns().size(); ++at)
      cells[row].push_back(target.cell(row, at).ToUtf8());
  return cells;
}

std::vector<std::string> DialogDriver::column(const ControlRef& list, std::size_t column) const {
  const auto& target = as<host::ListControl>(list);
  std::vector<std::string> cells;
  for (std::size_t row = 0; row < target.rowCount(); ++row)
    cells.push_back(target.cell(row, column).ToUtf8());
  return cells;
}

std::vector<std::size_t> DialogDriver::selection(const ControlRef& list) const {
  return as<host::ListControl>(list).selection();
}

std::pair<std::size_t, std::size_t> DialogDriver::selectedCharacters(const ControlRef& edit) const {
  const auto& target = as<host::EditControl>(edit);
  return {target.selectionFrom(), target.selectionTo()};
}

}  // namespace support
