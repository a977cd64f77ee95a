#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/time/date_time.h"
#include "host/ui/control.h"
#include "host/ui/controls/calendar_control.h"
#include "host/ui/controls/choice_controls.h"
#include "host/ui/controls/edit_control.h"
#include "host/ui/controls/list_control.h"

class XCBaseDlg;

namespace host {

/// What became of a gesture: done, or refused with a reason for the person.
struct Outcome {
  bool done = true;
  std::string reason;

  explicit operator bool() const { return done; }
  static Outcome refused(std::string why) { return {false, std::move(why)}; }
};

/// Everything that a user may do to an open dialog, with the rules that hold for every front end.
/// A gesture on a control that is disabled or hidden is refused. A gesture returns when the
/// handlers have returned, messages that the dialog posted to itself included; a handler may have
/// opened and closed other dialogs meanwhile, and the dialog may have ended.
class HOST_API UserInput {
 public:
  explicit UserInput(XCBaseDlg& dialog) : dialog_(dialog) {}

  /// Selects all and types: characters that the field does not take are dropped. An empty text
  /// clears. No notice when the field already has the value that results.
  Outcome type(Control& control, std::u16string_view text);
  /// Replaces the selected characters of an edit by typed ones and leaves the caret behind them.
  Outcome insert(EditControl& edit, std::u16string_view text);
  /// Backspace (@p forward false) or Delete in an edit.
  Outcome erase(EditControl& edit, bool forward);

  Outcome choose(ComboControl& combo, std::size_t index);
  Outcome check(CheckControl& control, bool on);
  /// Presses a button, chooses a radio button, toggles a check box.
  Outcome click(Control& control);

  /// Makes exactly these rows the selection, as one gesture.
  Outcome select(ListControl& list, std::vector<std::size_t> rows);
  Outcome doubleClick(ListControl& list, std::size_t row);
  /// Clicks a column's header: sorts by it, the other way round when it is sorted by it already.
  Outcome sort(ListControl& list, std::size_t column);

  /// A key in a control. Enter presses the dialog's OK, Escape its Cancel; Delete and Insert go to
  /// the handlers of a list.
  Outcome press(Control& control, Key key);

  Outcome paint(XCCalendar& calendar, const XCDateTime& date);
  Outcome showYear(XCCalendar& calendar, int year);

  Outcome focus(Control& control);
  /// The window's close button.
  Outcome close();

 private:
  Outcome usable(const Control& control) const;
  void store(EditControl& edit, std::u16string text, std::size_t caret);
  Outcome typeMasked(EditControl& edit, std::u16string_view text);
  Outcome toggle(CheckControl& control);
  void settle();

  XCBaseDlg& dialog_;
};

/// The characters of @p typed that a plain edit takes at the place of @p replaced units.
HOST_API std::u16string acceptedCharacters(const EditControl& edit, std::u16string_view typed,
                                           std::size_t replaced);

}  // namespace host
