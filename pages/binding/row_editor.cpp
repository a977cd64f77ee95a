#include "pages/binding/row_editor.h"

#include <algorithm>

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

void RowEditor::fill(Node* section, const std::function<bool(const Node&)>& isRow,
                     std::size_t selectedRow) {
  if (fillRows(list(), section, isRow)) list().selectOnly(selectedRow);
}

XCBasicString RowEditor::commonValue(const RowField& field) const {
  const host::ListControl& rows = list();
  const auto& selected = rows.selection();
  const Node& first = *rows.element(selected.front());
  const XCBasicString value = field.read ? field.read(first) : first.getAttribute(*field.attribute);
  const auto agrees = [&](std::size_t row) {
    const Node& other = *rows.element(row);
    return field.read ? field.read(other) == value
                      : other.attribute(*field.attribute) == std::u16string_view(value);
  };
  return std::all_of(selected.begin() + 1, selected.end(), agrees) ? value : XCBasicString();
}

void RowEditor::selectionChanged() {
  const host::ListControl& rows = list();
  const auto& selected = rows.selection();
  const auto hasElement = [&](std::size_t row) { return rows.element(row) != nullptr; };
  if (selected.empty() || !std::all_of(selected.begin(), selected.end(), hasElement)) return;
  const bool before = syncEdits_;
  syncEdits_ = false;
  for (const RowField& field : fields_) dialog_.SetDlgItemText(field.editId, commonValue(field));
  syncEdits_ = before;
}

void RowEditor::editChanged(int editId) {
  if (!syncEdits_) return;
  const auto field = std::find_if(fields_.begin(), fields_.end(), [editId](const RowField& entry) {
    return entry.editId == editId;
  });
  if (field == fields_.end()) return;
  const XCBasicString& text = dialog_.GetDlgItemText(editId);
  host::ListControl& rows = list();
  for (const std::size_t row : rows.selection()) {
    Node* element = rows.element(row);
    if (element == nullptr) break;
    if (field->write)
      field->write(*element, text);
    else
      element->setAttribute(*field->attribute, text);
  }
  rows.cellsChanged();
}

}  // namespace lamp
