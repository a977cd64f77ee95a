#include "pages/binding/row_page.h"

namespace lamp {

std::vector<RowField> rowFields(const std::vector<host::Binding>& bindings) {
  std::vector<RowField> fields;
  for (const host::Binding& binding : bindings) {
    if (binding.control == 0) continue;
    if (binding.read)
      fields.push_back({binding.control, std::nullopt, binding.read, binding.write});
    else
      fields.push_back({binding.control, binding.attributes.front()});
  }
  return fields;
}

RowPage::RowPage(int templateNumber, const host::PageDescription& description, XCDriver* driver,
                 CWnd* parent, std::span<const host::MessageEntry> own)
    : DocumentPage(templateNumber, description, driver, parent), entries_(own.begin(), own.end()) {
  for (const host::RowSet& rows : description.rows) {
    const int list = rows.places.front().list;
    editors_.emplace_back(*this, list, rowFields(rows.bindings));
    entries_.push_back(host::onSelection<&RowPage::OnSelectionChanged>(list));
    for (const host::Binding& binding : rows.bindings)
      if (binding.control != 0)
        entries_.push_back(host::onChange<&RowPage::OnEditChanged>(binding.control));
  }
  map_.entries = entries_;
}

bool RowPage::OnInitDialog() {
  const bool chooseFocus = DocumentPage::OnInitDialog();
  for (const host::RowSet& rows : Description().rows) showCaptions(*this, rows.bindings);
  FillLists();
  return chooseFocus;
}

void RowPage::FillLists() {
  for (std::size_t set = 0; set < editors_.size(); ++set)
    editors_[set].fill(Copy().section(), Description().rows[set].isRow, 0);
}

void RowPage::Refresh() {
  for (RowEditor& rows : editors_) {
    rows.list().cellsChanged();
    rows.selectionChanged();
  }
}

void RowPage::OnSelectionChanged(int listId) {
  for (std::size_t set = 0; set < editors_.size(); ++set)
    if (Description().rows[set].places.front().list == listId) editors_[set].selectionChanged();
}

void RowPage::OnEditChanged(int editId) {
  for (RowEditor& rows : editors_) rows.editChanged(editId);
}

void showCaptions(XCBaseDlg& dialog, const std::vector<host::Binding>& bindings) {
  for (const host::Binding& binding : bindings)
    if (binding.label != 0) dialog.SetDlgItemText(binding.label, binding.caption.toString());
}

host::ControlSpec controlOf(const host::Binding& binding) {
  const std::string& name = binding.nameOfControl();
  if (binding.writeOnly) return host::passwordEdit(binding.control, name, binding.limit);
  switch (binding.kind) {
    case host::ValueKind::number:
      return host::digitsEdit(binding.control, name, binding.limit);
    case host::ValueKind::choice:
      return host::combo(binding.control, name);
    case host::ValueKind::flag:
      return host::check(binding.control, name);
    case host::ValueKind::text:
    case host::ValueKind::time:
      break;
  }
  return host::edit(binding.control, name, binding.limit);
}

std::vector<host::ControlSpec> controlsOf(const std::vector<host::Binding>& bindings) {
  std::vector<host::ControlSpec> controls;
  for (const host::Binding& binding : bindings) {
    if (binding.control == 0) continue;
    controls.push_back(host::label(binding.label, binding.nameOfControl() + "Label"));
    controls.push_back(controlOf(binding));
  }
  return controls;
}

host::LayoutItem labelled(const host::Binding& binding, int stretchFactor) {
  return host::layout::labelled(binding.label, binding.control, stretchFactor);
}

std::vector<host::ListColumn> columnsOf(host::ListColumn identity,
                                        const std::vector<host::Binding>& bindings) {
  std::vector<host::ListColumn> columns;
  columns.push_back(std::move(identity));
  for (const host::Binding& binding : bindings)
    columns.push_back(attributeColumn(binding.column.empty()
                                          ? std::u16string_view(XCLoadString(binding.caption.text))
                                          : binding.column,
                                      binding.attributes.front()));
  return columns;
}

host::LayoutItem activationBox(int groupId, int editId) {
  return host::layout::box(groupId, {host::layout::control(editId)});
}

std::vector<host::ControlSpec> activationControls(int groupId, int editId) {
  return {host::group(groupId, "activationGroup", host::TextId::DateAndTime),
          host::edit(editId, "activation")};
}

std::vector<host::ControlSpec> joined(
    std::initializer_list<std::vector<host::ControlSpec>> pieces) {
  std::vector<host::ControlSpec> controls;
  for (const auto& piece : pieces) controls.insert(controls.end(), piece.begin(), piece.end());
  return controls;
}

}  // namespace lamp
