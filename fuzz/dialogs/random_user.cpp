#include "fuzz/dialogs/random_user.h"

#include <algorithm>
#include <iterator>
#include <numeric>

#include "fuzz/fault.h"
#include "host/text/utf.h"

namespace fuzz {
namespace {

// Deeper than the dialogs nest by themselves.
constexpr int MostOpen = 12;
constexpr std::size_t RowsLookedAt = 20;

void lookAt(const host::ListControl& list) {
  const auto& selection = list.selection();
  expect(std::adjacent_find(selection.begin(), selection.end(), std::greater_equal<>()) ==
             selection.end(),
         "selected rows stand in their order, once each");
  for (const std::size_t row : selection)
    expect(row < list.rowCount() && list.isSelected(row), "a selected row is one of the list");
  for (std::size_t row = 0; row < std::min(list.rowCount(), RowsLookedAt); ++row)
    for (std::size_t column = 0; column < list.columns().size(); ++column) list.cell(row, column);
}

void lookAt(const XCCalendar& calendar) {
  expect(calendar.MinYear() <= calendar.ShownYear() && calendar.ShownYear() <= calendar.MaxYear(),
         "the year shown is one that can be shown");
  if (const auto first = calendar.FirstEnabledDay()) {
    expect(calendar.IsEnabledDay(*first), "the first day that can be painted can be painted");
    calendar.TypeOf(*first);
  }
}

}  // namespace

void lookAt(const XCBaseDlg& dialog) {
  for (const auto& control : dialog.Controls()) {
    if (const auto* list = dynamic_cast<const host::ListControl*>(control.get())) lookAt(*list);
    if (const auto* calendar = dynamic_cast<const XCCalendar*>(control.get())) lookAt(*calendar);
    if (const auto* combo = dynamic_cast<const host::ComboControl*>(control.get()))
      expect(!combo->selected() || *combo->selected() < combo->items().size(),
             "a chosen entry is one of the list");
    if (const auto* edit = dynamic_cast<const host::EditControl*>(control.get()))
      expect(edit->selectionFrom() <= edit->selectionTo() &&
                 edit->selectionTo() <= edit->text().Length(),
             "the selected characters are some of the text");
    host::toUtf8(control->text());
  }
}

void RandomUser::runModal(XCBaseDlg& dialog) {
  ++depth_;
  expect(depth_ <= MostOpen, "dialogs do not open one another for ever");
  dialog.DispatchPosted();
  while (!dialog.HasEnded() && gesturesLeft_-- > 0 && !input_.empty()) {
    act(dialog);
    lookAt(dialog);
  }
  if (!dialog.HasEnded()) host::UserInput(dialog).close();
  if (!dialog.HasEnded()) dialog.EndDialog(IDCANCEL);
  if (--depth_ == 0 && allClosed_) allClosed_();
}

void RandomUser::act(XCBaseDlg& dialog) {
  host::UserInput user(dialog);
  const std::size_t at = input_.below(dialog.Controls().size() + 3);
  if (at == dialog.Controls().size()) return dialog.PressOk();
  if (at == dialog.Controls().size() + 1) {
    // Closing is left to the end of the input mostly: it leaves nothing to do.
    if (input_.below(4) == 0) user.close();
    return;
  }
  if (dialog.Controls().empty() || at > dialog.Controls().size()) return;
  host::Control& control = *dialog.Controls()[at];
  user.focus(control);
  if (auto* edit = dynamic_cast<host::EditControl*>(&control)) return actAt(user, *edit);
  if (auto* combo = dynamic_cast<host::ComboControl*>(&control)) return actAt(user, *combo);
  if (auto* list = dynamic_cast<host::ListControl*>(&control)) return actAt(user, *list);
  if (auto* calendar = dynamic_cast<XCCalendar*>(&control)) return actAt(user, *calendar);
  if (auto* check = dynamic_cast<host::CheckControl*>(&control); check && input_.flag())
    user.check(*check, input_.flag());
  else if (dynamic_cast<host::IpControl*>(&control) != nullptr)
    user.type(control, chosenText());
  else
    user.click(control);
}

void RandomUser::actAt(host::UserInput& user, host::EditControl& edit) {
  switch (input_.below(6)) {
    case 0:
      edit.select(input_.below(8), input_.below(8));
      user.insert(edit, chosenText());
      break;
    case 1:
      user.erase(edit, input_.flag());
      break;
    case 2:
      user.press(edit, input_.below(4) == 0 ? host::Key::enter : host::Key::deleteKey);
      break;
    default:
      user.type(edit, chosenText());
  }
}

void RandomUser::actAt(host::UserInput& user, host::ComboControl& combo) {
  user.choose(combo, input_.below(combo.items().size() + 1));
}

void RandomUser::actAt(host::UserInput& user, host::ListControl& list) {
  switch (input_.below(6)) {
    case 0:
      user.doubleClick(list, input_.below(list.rowCount() + 1));
      break;
    case 1:
      user.sort(list, input_.below(list.columns().size() + 1));
      break;
    case 2:
      user.press(list, input_.flag() ? host::Key::deleteKey : host::Key::insert);
      break;
    default:
      user.select(list, chosenRows(list));
  }
}

void RandomUser::actAt(host::UserInput& user, XCCalendar& calendar) {
  if (input_.below(8) == 0) {
    user.showYear(calendar, calendar.MinYear() + static_cast<int>(input_.below(4)) - 1);
    return;
  }
  const int year = calendar.ShownYear();
  user.paint(calendar, XCDateTime(year, static_cast<int>(input_.below(14)),
                                  static_cast<int>(input_.below(33)), 0, 0, 0));
}

std::vector<std::size_t> RandomUser::chosenRows(const host::ListControl& list) {
  std::vector<std::size_t> rows;
  const std::size_t count = list.rowCount();
  switch (input_.below(4)) {
    case 0:
      rows.resize(count);
      std::iota(rows.begin(), rows.end(), std::size_t(0));
      break;
    case 1:
      for (std::size_t i = input_.below(6); i > 0; --i) rows.push_back(input_.below(count + 2));
      break;
    default:
      rows.push_back(input_.below(count + 1));
  }
  return rows;
}

std::u16string RandomUser::chosenText() {
  constexpr const char16_t* Texts[] = {u"",
                                       u"0",
                                       u"1",
                                       u"59",
                                       u"60",
                                       u"100",
                                       u"101",
                                       u"-1",
                                       u"99999999999999999999",
                                       u"12:30:00",
                                       u"23:59:59",
                                       u"15/07/2024 10:30:00",
                                       u"31/02/2024 25:61:61",
                                       u"192.168.1.20",
                                       u"../../secret",
                                       u"Lamp <&> \"1\"",
                                       u"\U0001F4A1\u00F1",
                                       u"%s%d%n",
                                       u"a\u0000b",
                                       u"\n\t"};
  const std::size_t chosen = input_.below(std::size(Texts) + 6);
  if (chosen < std::size(Texts)) return Texts[chosen];
  if (chosen == std::size(Texts)) return std::u16string(1, char16_t(0xD800));
  if (chosen == std::size(Texts) + 1) return std::u16string(300, u'9');
  return host::toUtf16(input_.text(24));
}

host::MessageAnswer RandomUser::ask(const host::MessageRequest& request) {
  expect(!request.text.IsEmpty(), "a message says something");
  host::toUtf8(request.text);
  // Without a gesture to pay for it a user agrees to nothing, so that no message returns for ever.
  const bool agrees = gesturesLeft_-- > 0 && !input_.empty() && input_.flag();
  switch (request.buttons) {
    case host::MessageButtons::retryCancel:
      return agrees ? host::MessageAnswer::retry : host::MessageAnswer::cancel;
    case host::MessageButtons::yesNo:
      return agrees ? host::MessageAnswer::yes : host::MessageAnswer::no;
    case host::MessageButtons::ok:
      break;
  }
  return host::MessageAnswer::ok;
}

std::filesystem::path RandomUser::openFile(const host::FileRequest&) {
  return input_.flag() ? file_ : std::filesystem::path();
}

}  // namespace fuzz
