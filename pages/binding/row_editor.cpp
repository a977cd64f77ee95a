#include "pages/binding/row_editor.h"

#include <algorithm>
#include <iterator>

#include "pages/binding/flag_guard.h"

namespace lamp {

using host::TextId;
using Node = XmlDocument::XmlNode;

host::ListColumn attributeColumn(std::u16string_view caption, host::XmlName attribute, int share) {
  host::ListColumn column;
  column.caption = caption;
  column.share = share;
  column.attribute = attribute;
  return column;
}

host::ListColumn attributeColumn(TextId caption, host::XmlName attribute, int share) {
  return attributeColumn(XCLoadString(caption), attribute, share);
}

bool fillRows(host::ListControl& list, Node* section,
              const std::function<bool(const Node&)>& isRow) {
  if (section == nullptr) return false;
  list.clearRows();
  for (Node& child : section->Children())
    if (!isRow || isRow(child)) list.addRow({&child});
  return true;
}

RowEditor::RowEditor(XCBaseDlg& dialog, int listId, const std::vector<host::Binding>& values)
    : dialog_(dialog), listId_(listId) {
  std::copy_if(values.begin(), values.end(), std::back_inserter(values_),
               [](const host::Binding& value) { return value.control != 0; });
}

void RowEditor::fill(Node* section, const std::function<bool(const Node&)>& isRow,
                     std::size_t selectedRow) {
  if (fillRows(list(), section, isRow)) list().selectOnly(selectedRow);
}

namespace {

// What the rows looked at so far have in common in one value.
class CommonValue {
 public:
  CommonValue(const host::Binding& binding, const Node& first) : binding_(binding) {
    if (binding.read)
      made_ = binding.read(first);
    else
      text_ = first.attribute(binding.attributes.front(), place_);
  }

  /// False once a row differs.
  bool agrees(const Node& other) {
    if (common_)
      common_ = binding_.read ? binding_.read(other) == made_
                              : other.attribute(binding_.attributes.front(), place_) == text_;
    return common_;
  }

  XCBasicString text() const {
    if (!common_) return {};
    return binding_.read ? made_ : text_.toString();
  }

 private:
  const host::Binding& binding_;
  XCBasicString made_;
  host::XmlText text_;
  std::size_t place_ = 0;
  bool common_ = true;
};

}  // namespace

// All values of a row before those of the next one: at many rows, each is fetched from memory once.
std::vector<XCBasicString> RowEditor::commonTexts() const {
  const host::ListControl& rows = list();
  const auto& selected = rows.selection();
  std::vector<CommonValue> common;
  for (const host::Binding& value : values_)
    common.emplace_back(value, *rows.element(selected.front()));
  for (std::size_t i = 1; i < selected.size(); ++i) {
    const Node& other = *rows.element(selected[i]);
    bool any = false;
    for (CommonValue& value : common) any = value.agrees(other) || any;
    if (!any) break;
  }
  std::vector<XCBasicString> texts;
  for (const CommonValue& value : common) texts.push_back(value.text());
  return texts;
}

void RowEditor::selectionChanged() {
  const host::ListControl& rows = list();
  const auto& selected = rows.selection();
  const auto hasElement = [&](std::size_t row) { return rows.element(row) != nullptr; };
  if (selected.empty() || !std::all_of(selected.begin(), selected.end(), hasElement)) return;
  const FlagGuard showing(syncEdits_, false);
  const std::vector<XCBasicString> texts = commonTexts();
  for (std::size_t i = 0; i < values_.size(); ++i)
    dialog_.SetDlgItemText(values_[i].control, texts[i]);
}

void RowEditor::editChanged(int editId) {
  if (!syncEdits_) return;
  const auto value = std::find_if(values_.begin(), values_.end(), [editId](const auto& binding) {
    return binding.control == editId;
  });
  if (value == values_.end()) return;
  const XCBasicString& text = dialog_.GetDlgItemText(editId);
  host::ListControl& rows = list();
  const Node* first = nullptr;  // its text serves all others
  for (const std::size_t row : rows.selection()) {
    Node* element = rows.element(row);
    if (element == nullptr) break;
    if (value->write) {
      value->write(*element, text);
    } else if (first != nullptr) {
      element->copyAttribute(*first, value->attributes.front());
    } else {
      element->setAttribute(value->attributes.front(), text);
      first = element;
    }
  }
  rows.cellsChanged();
}

}  // namespace lamp
