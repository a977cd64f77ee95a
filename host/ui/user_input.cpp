#include "host/ui/user_input.h"

#include <algorithm>
#include <exception>

#include "host/dialogs/base_dlg.h"
#include "host/dialogs/guard.h"
#include "host/text/utf.h"

namespace host {
namespace {

std::string nameOf(const Control& control) {
  return "the control \"" + control.name() + "\"";
}

// What an edit never takes: control characters, ends of lines, and the two units that Unicode keeps
// from being characters.
bool isNoText(char16_t c) {
  return c < 0x20 || c == 0x7F || c == 0x2028 || c == 0x2029 || c >= 0xFFFE;
}

bool isHighSurrogate(char16_t c) {
  return c >= 0xD800 && c < 0xDC00;
}

bool isLowSurrogate(char16_t c) {
  return c >= 0xDC00 && c < 0xE000;
}

// Does a gesture. What fails in it is told to the person, and the gesture counts as refused: front
// ends call from loops that no exception may pass through.
template <class Gesture>
Outcome perform(XCBaseDlg& dialog, const Gesture& gesture) {
  std::exception_ptr failure;
  try {
    const Guard guard;
    return gesture();
  } catch (...) {
    failure = std::current_exception();
  }
  tellFailure(&dialog, failure);
  return Outcome::refused("it failed");
}

}  // namespace

std::u16string acceptedCharacters(const EditControl& edit, std::u16string_view typed,
                                  std::size_t replaced) {
  const std::size_t kept = edit.text().Length() - replaced;
  const std::size_t room =
      edit.limit() > 0 ? std::size_t(edit.limit()) - std::min(kept, std::size_t(edit.limit()))
                       : std::u16string::npos;
  std::u16string accepted;
  for (std::size_t at = 0; at < typed.size() && accepted.size() < room; ++at) {
    const char16_t c = typed[at];
    if (isNoText(c) || isLowSurrogate(c)) continue;
    if (edit.isDigitsOnly() && (c < u'0' || c > u'9')) continue;
    if (!isHighSurrogate(c)) {
      accepted += c;
    } else if (at + 1 < typed.size() && isLowSurrogate(typed[at + 1])) {
      if (room - accepted.size() < 2) break;  // a limit never splits a pair
      accepted += typed.substr(at++, 2);
    }
  }
  return accepted;
}

Outcome UserInput::usable(const Control& control) const {
  if (dialog_.HasEnded()) return Outcome::refused("the dialog is closed");
  if (!control.isVisible()) return Outcome::refused(nameOf(control) + " is hidden");
  if (!control.isEnabled()) {
    const std::string why = control.disabledReason().ToUtf8();
    return Outcome::refused(nameOf(control) + " is disabled" + (why.empty() ? "" : ": " + why));
  }
  return {};
}

void UserInput::settle() {
  dialog_.DispatchPosted();
}

void UserInput::store(EditControl& edit, std::u16string text, std::size_t caret) {
  const bool differs = !(edit.text() == std::u16string_view(text));
  if (differs) edit.storeText(text);
  edit.select(caret, caret);
  if (!differs) return;
  edit.changed(Change::text);
  edit.notice(Notice::changed);
  settle();
}

Outcome UserInput::typeMasked(EditControl& edit, std::u16string_view text) {
  std::u16string content = edit.mask().blank();
  std::size_t caret = 0;
  for (const char16_t c : text) edit.mask().type(content, caret, c);
  store(edit, std::move(content), caret);
  return {};
}

Outcome UserInput::type(Control& control, std::u16string_view text) {
  return perform(dialog_, [&]() -> Outcome {
    if (Outcome refusal = usable(control); !refusal) return refusal;
    dialog_.SetFocus(control);
    if (auto* ip = dynamic_cast<IpControl*>(&control)) {
      const XCBasicString address = ip->afterTyping(text);
      if (ip->text() == address) return {};
      ip->setText(address);
      ip->notice(Notice::changed);
      settle();
      return {};
    }
    auto* edit = dynamic_cast<EditControl*>(&control);
    if (edit == nullptr) return Outcome::refused(nameOf(control) + " can't be typed into");
    if (edit->isReadOnly()) return Outcome::refused(nameOf(control) + " is read-only");
    if (edit->mask().isActive()) return typeMasked(*edit, text);
    std::u16string accepted = acceptedCharacters(*edit, text, edit->text().Length());
    const std::size_t caret = accepted.size();
    store(*edit, std::move(accepted), caret);
    return {};
  });
}

Outcome UserInput::insert(EditControl& edit, std::u16string_view text) {
  return perform(dialog_, [&]() -> Outcome {
    if (Outcome refusal = usable(edit); !refusal) return refusal;
    if (edit.isReadOnly()) return Outcome::refused(nameOf(edit) + " is read-only");
    dialog_.SetFocus(edit);
    std::u16string content = edit.text().str();
    std::size_t from = edit.selectionFrom();
    const std::size_t to = edit.selectionTo();
    if (edit.mask().isActive()) {
      if (to > from) edit.mask().erase(content, from, to);
      bool taken = text.empty();
      for (const char16_t c : text) taken = edit.mask().type(content, from, c) || taken;
      if (taken) store(edit, std::move(content), from);
      return {};
    }
    const std::u16string accepted = acceptedCharacters(edit, text, to - from);
    // What does not take a single character leaves the selected ones alone.
    if (accepted.empty() && !text.empty()) return {};
    content.replace(from, to - from, accepted);
    store(edit, std::move(content), from + accepted.size());
    return {};
  });
}

Outcome UserInput::erase(EditControl& edit, bool forward) {
  return perform(dialog_, [&]() -> Outcome {
    if (Outcome refusal = usable(edit); !refusal) return refusal;
    if (edit.isReadOnly()) return Outcome::refused(nameOf(edit) + " is read-only");
    dialog_.SetFocus(edit);
    std::u16string content = edit.text().str();
    std::size_t from = edit.selectionFrom();
    std::size_t to = edit.selectionTo();
    const TextMask& mask = edit.mask();
    if (from == to) {
      // A mask's separators are stepped over, a surrogate pair goes as one.
      if (forward) {
        while (mask.isActive() && to < content.size() && !mask.isPlace(to)) ++to;
        if (to < content.size())
          to += isHighSurrogate(content[to]) && to + 1 < content.size() ? 2U : 1U;
      } else {
        while (mask.isActive() && from > 0 && !mask.isPlace(from - 1)) --from;
        if (from > 0) from -= from > 1 && isHighSurrogate(content[from - 2]) ? 2U : 1U;
      }
    }
    if (mask.isActive())
      mask.erase(content, from, to);
    else
      content.erase(from, to - from);
    store(edit, std::move(content), mask.isActive() && forward ? to : from);
    return {};
  });
}

Outcome UserInput::choose(ComboControl& combo, std::size_t index) {
  return perform(dialog_, [&]() -> Outcome {
    if (Outcome refusal = usable(combo); !refusal) return refusal;
    if (index >= combo.items().size())
      return Outcome::refused(nameOf(combo) + " has no entry " + std::to_string(index));
    dialog_.SetFocus(combo);
    if (combo.selected() == index) return {};
    combo.select(index);
    combo.notice(Notice::chosen);
    settle();
    return {};
  });
}

Outcome UserInput::toggle(CheckControl& control) {
  control.setOn(control.kind() == ControlKind::radio || !control.isOn());
  if (control.kind() == ControlKind::radio) dialog_.TurnOffOtherRadios(control);
  control.notice(Notice::clicked);
  settle();
  return {};
}

Outcome UserInput::check(CheckControl& control, bool on) {
  return perform(dialog_, [&]() -> Outcome {
    if (Outcome refusal = usable(control); !refusal) return refusal;
    if (control.kind() == ControlKind::radio && !on)
      return Outcome::refused(nameOf(control) + " is a radio button: choose another one instead");
    dialog_.SetFocus(control);
    return control.isOn() == on ? Outcome{} : toggle(control);
  });
}

Outcome UserInput::click(Control& control) {
  return perform(dialog_, [&]() -> Outcome {
    if (Outcome refusal = usable(control); !refusal) return refusal;
    if (auto* box = dynamic_cast<CheckControl*>(&control)) {
      dialog_.SetFocus(control);
      return toggle(*box);
    }
    if (control.kind() != ControlKind::button)
      return Outcome::refused(nameOf(control) + " is no button");
    dialog_.SetFocus(control);
    control.notice(Notice::clicked);
    settle();
    return {};
  });
}

Outcome UserInput::select(ListControl& list, std::vector<std::size_t> rows) {
  return perform(dialog_, [&]() -> Outcome {
    if (Outcome refusal = usable(list); !refusal) return refusal;
    for (const std::size_t row : rows)
      if (row >= list.rowCount())
        return Outcome::refused(nameOf(list) + " has no row " + std::to_string(row));
    if (!list.isMultiSelect() && rows.size() > 1)
      return Outcome::refused(nameOf(list) + " takes one selected row");
    dialog_.SetFocus(list);
    list.select(std::move(rows));
    settle();
    return {};
  });
}

Outcome UserInput::doubleClick(ListControl& list, std::size_t row) {
  return perform(dialog_, [&]() -> Outcome {
    if (Outcome refusal = usable(list); !refusal) return refusal;
    if (row >= list.rowCount())
      return Outcome::refused(nameOf(list) + " has no row " + std::to_string(row));
    dialog_.SetFocus(list);
    if (!list.isSelected(row)) list.selectOnly(row);
    settle();
    if (dialog_.HasEnded()) return {};
    list.notice(Notice::doubleClicked, static_cast<int>(row));
    settle();
    return {};
  });
}

Outcome UserInput::sort(ListControl& list, std::size_t column) {
  return perform(dialog_, [&]() -> Outcome {
    if (Outcome refusal = usable(list); !refusal) return refusal;
    if (column >= list.columns().size())
      return Outcome::refused(nameOf(list) + " has no column " + std::to_string(column));
    const auto present = list.sorted();
    const bool again = present && present->column == column;
    list.sort({column, again && !present->descending});
    return {};
  });
}

Outcome UserInput::press(Control& control, Key key) {
  return perform(dialog_, [&]() -> Outcome {
    if (Outcome refusal = usable(control); !refusal) return refusal;
    dialog_.SetFocus(control);
    if (key == Key::enter && control.kind() == ControlKind::button) return click(control);
    if (key == Key::enter) {
      Control* ok = dialog_.FindControl(IdOk);
      if (ok != nullptr && !usable(*ok)) return {};
      dialog_.PressOk();
    } else if (key == Key::escape) {
      dialog_.PressCancel();
    } else if (auto* edit = dynamic_cast<EditControl*>(&control); edit && key == Key::deleteKey) {
      return erase(*edit, true);
    } else if (control.kind() == ControlKind::list) {
      control.notice(Notice::keyPressed, static_cast<int>(key));
    }
    settle();
    return {};
  });
}

Outcome UserInput::paint(XCCalendar& calendar, const XCDateTime& date) {
  return perform(dialog_, [&]() -> Outcome {
    if (Outcome refusal = usable(calendar); !refusal) return refusal;
    dialog_.SetFocus(calendar);
    if (!calendar.Paint(date))
      return Outcome::refused("the day " + date.GetDateTime(1, true, u"/", u":").ToUtf8() +
                              " can't be painted");
    settle();
    return {};
  });
}

Outcome UserInput::showYear(XCCalendar& calendar, int year) {
  return perform(dialog_, [&]() -> Outcome {
    if (Outcome refusal = usable(calendar); !refusal) return refusal;
    if (year < calendar.MinYear() || year > calendar.MaxYear())
      return Outcome::refused("the year " + std::to_string(year) + " is not shown here");
    calendar.ShowYear(year);
    return {};
  });
}

Outcome UserInput::focus(Control& control) {
  return perform(dialog_, [&]() -> Outcome {
    if (Outcome refusal = usable(control); !refusal) return refusal;
    dialog_.SetFocus(control);
    return {};
  });
}

Outcome UserInput::close() {
  return perform(dialog_, [&]() -> Outcome {
    if (dialog_.HasEnded()) return Outcome::refused("the dialog is closed");
    dialog_.PressClose();
    settle();
    return {};
  });
}

}  // namespace host
