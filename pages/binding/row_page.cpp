#include "pages/binding/row_page.h"

namespace lamp {
RowPage::RowPage(int templateNumber, const host::PageDescription& description, XCDriver* driver,
                 CWnd* parent, std::span<const host::MessageEntry> own)
    : DocumentPage(templateNumber, description, driver, parent), entries_(own.begin(), own.end()) {
  for (const host::RowSet& rows : description.rows) {
    const int list = rows.places.front().list;
    editors_.emplace_back(*this, list, rows.bindings);
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

}  // namespace lamp
