#include "workbench/pages/row_edit.h"

#include <algorithm>

#include "host/ui/user_input.h"

namespace workbench {
namespace {

using host::Binding;
using host::EditControl;
using host::ListControl;
using host::RowSet;

template <class Visit>
void forEachSet(const std::vector<RowSet>& sets, const Visit& visit) {
  for (const RowSet& set : sets) {
    visit(set);
    forEachSet(set.within, visit);
  }
}

bool isUsable(const host::Control& control) {
  const auto* edit = dynamic_cast<const EditControl*>(&control);
  return control.isVisible() && control.isEnabled() && (edit == nullptr || !edit->isReadOnly());
}

bool isEntry(const host::Control& control) {
  const auto* edit = dynamic_cast<const EditControl*>(&control);
  return control.isVisible() && (edit == nullptr || !edit->isReadOnly());
}

std::string whyNotInMask(const EditControl& edit, const XCBasicString& text) {
  std::u16string typed = edit.mask().blank();
  std::size_t caret = 0;
  for (const char16_t c : text.str())
    if (!edit.mask().type(typed, caret, c)) return "a character does not fit the form of the field";
  return text.Length() == edit.mask().length() && typed == text.str()
             ? std::string()
             : "the field takes its whole form only";
}

std::string whyNotInEdit(const EditControl& edit, const XCBasicString& text) {
  if (edit.mask().isActive()) return whyNotInMask(edit, text);
  const auto isDigit = [](char16_t c) { return c >= u'0' && c <= u'9'; };
  if (edit.isDigitsOnly() && !std::all_of(text.str().begin(), text.str().end(), isDigit))
    return "the field takes digits only";
  if (edit.limit() > 0 && text.Length() > static_cast<std::size_t>(edit.limit()))
    return "the field takes at most " + std::to_string(edit.limit()) + " characters";
  if (host::acceptedCharacters(edit, text, edit.text().Length()) != text.str())
    return "the field takes no control characters";
  return {};
}

}  // namespace

const RowSet* rowsShownIn(const host::EditedPage& page, const ListControl& list) {
  const RowSet* found = nullptr;
  forEachSet(page.Description().rows, [&](const RowSet& set) {
    for (const host::RowPlace& place : set.places)
      if (place.list == list.id() && !set.bindings.empty()) found = &set;
  });
  return found;
}

std::optional<RowEdit> rowEditOf(const XCBaseDlg& dialog, const host::EditedPage& page,
                                 const host::Control& control) {
  std::optional<RowEdit> found;
  forEachSet(page.Description().rows, [&](const RowSet& set) {
    auto* list = dynamic_cast<ListControl*>(dialog.FindControl(set.places.front().list));
    if (list == nullptr || !isUsable(control)) return;
    for (const Binding& binding : set.bindings)
      if (binding.control == control.id())
        found = RowEdit{list, &set, &binding, dialog.FindControl(control.id())};
  });
  return found;
}

std::vector<RowEdit> editsBelow(const XCBaseDlg& dialog, const RowSet& rows, ListControl& list) {
  std::vector<RowEdit> edits;
  for (const Binding& binding : rows.bindings) {
    host::Control* control = dialog.FindControl(binding.control);
    if (binding.owner == host::ValueOwner::controller) continue;
    if (control != nullptr && isEntry(*control)) edits.push_back({&list, &rows, &binding, control});
  }
  const auto& columns = list.columns();
  const auto columnOf = [&](const RowEdit& edit) {
    return std::find_if(columns.begin(), columns.end(), [&](const host::ListColumn& column) {
      return column.attribute == edit.binding->attributes.front() ||
             column.name == edit.binding->name;
    });
  };
  // Values that share a column stand in the order of the page's table.
  if (std::all_of(edits.begin(), edits.end(),
                  [&](const RowEdit& edit) { return columnOf(edit) != columns.end(); }))
    std::stable_sort(edits.begin(), edits.end(),
                     [&](const RowEdit& a, const RowEdit& b) { return columnOf(a) < columnOf(b); });
  return edits;
}

std::string whyNotTyped(const RowEdit& edit, const XCBasicString& text) {
  if (const auto* combo = dynamic_cast<const host::ComboControl*>(edit.control)) {
    const auto& items = combo->items();
    const bool offered = std::any_of(items.begin(), items.end(), [&](const auto& item) {
      return edit.binding->entryValue(item.data) == text;
    });
    return offered ? std::string() : "there is no such choice";
  }
  const auto* field = dynamic_cast<const EditControl*>(edit.control);
  return field == nullptr ? std::string() : whyNotInEdit(*field, text);
}

std::string whyRefused(const RowEdit& edit, const RowValues& values) {
  for (const XCBasicString& value : values.values)
    if (std::string why = whyNotTyped(edit, value); !why.empty())
      return "\"" + value.ToUtf8() + "\": " + why;
  return {};
}

std::size_t putRowValues(host::EditedPage& page, const RowEdit& edit, const RowValues& values) {
  std::size_t changed = 0;
  for (std::size_t i = 0; i < values.rows.size(); ++i) {
    XmlDocument::XmlNode& element = *edit.list->element(values.rows[i]);
    if (edit.binding->valueIn(element) == values.values[i]) continue;
    edit.binding->put(element, values.values[i]);
    ++changed;
  }
  if (changed > 0) page.Refresh();
  return changed;
}

}  // namespace workbench
