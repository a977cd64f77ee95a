#include "pages/binding/row_editor.h"

#include <algorithm>

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

void RowEditor::fill(Node* section, const std::function<bool(const Node&)>& isRow,
                     std::size_t selectedRow) {
  if (fillRows(list(), section, isRow)) list().selectOnly(selectedRow);
}

namespace {

// What the rows looked at so far have in common in one field.
class CommonValue {
 public:
  CommonValue(const RowField& field, const Node& first) : field_(field) {
    if (field.read)
      made_ = field.read(first);
    else
      text_ = first.attribute(*field.attribute, place_);
  }

  /// False once a row differs.
  bool agrees(const Node& other) {
    if (common_)
      common_ = field_.read ? field_.read(other) == made_
                            : other.attribute(*field_.attribute, place_) == text_;
    return common_;
  }

  XCBasicString value() const {
    if (!common_) return {};
    return field_.read ? made_ : text_.toString();
  }

 private:
  const RowField& field_;
  XCBasicString made_;
  host::XmlText text_;
  std::size_t place_ = 0;
  bool common_ = true;
};

}  // namespace

// All fields of a row before those of the next one: at many rows, each is fetched from memory once.
std::vector<XCBasicString> RowEditor::commonValues() const {
  const host::ListControl& rows = list();
  const auto& selected = rows.selection();
  std::vector<CommonValue> common;
  for (const RowField& field : fields_) common.emplace_back(field, *rows.element(selected.front()));
  for (std::size_t i = 1; i < selected.size(); ++i) {
    const Node& other = *rows.element(selected[i]);
    bool any = false;
    for (CommonValue& value : common) any = value.agrees(other) || any;
    if (!any) break;
  }
  std::vector<XCBasicString> values;
  for (const CommonValue& value : common) values.push_back(value.value());
  return values;
}

void RowEditor::selectionChanged() {
  const host::ListControl& rows = list();
  const auto& selected = rows.selection();
  const auto hasElement = [&](std::size_t row) { return rows.element(row) != nullptr; };
  if (selected.empty() || !std::all_of(selected.begin(), selected.end(), hasElement)) return;
  const FlagGuard showing(syncEdits_, false);
  const std::vector<XCBasicString> values = commonValues();
  for (std::size_t i = 0; i < fields_.size(); ++i)
    dialog_.SetDlgItemText(fields_[i].editId, values[i]);
}

void RowEditor::editChanged(int editId) {
  if (!syncEdits_) return;
  const auto field = std::find_if(fields_.begin(), fields_.end(), [editId](const RowField& entry) {
    return entry.editId == editId;
  });
  if (field == fields_.end()) return;
  const XCBasicString& text = dialog_.GetDlgItemText(editId);
  host::ListControl& rows = list();
  const Node* first = nullptr;  // its text serves all others
  for (const std::size_t row : rows.selection()) {
    Node* element = rows.element(row);
    if (element == nullptr) break;
    if (field->write) {
      field->write(*element, text);
    } else if (first != nullptr) {
      element->copyAttribute(*first, *field->attribute);
    } else {
      element->setAttribute(*field->attribute, text);
      first = element;
    }
  }
  rows.cellsChanged();
}

}  // namespace lamp
