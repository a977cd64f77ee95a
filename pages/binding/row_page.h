#pragma once

#include <span>
#include <vector>

#include "pages/binding/document_page.h"
#include "pages/binding/row_editor.h"
#include "pages/binding/value_controls.h"

namespace lamp {

/// A document page with lists of rows and the edits below them, all by its description: what is
/// typed goes to every selected row of the edit's list.
class RowPage : public DocumentPage {
 public:
  /// @p own are handlers of the page's own. @p description must outlive the page.
  RowPage(int templateNumber, const host::PageDescription& description, XCDriver* driver,
          CWnd* parent, std::span<const host::MessageEntry> own = {});

  /// Shows the captions and the rows, the first row of each list selected.
  bool OnInitDialog() override;
  const host::MessageMap* GetMessageMap() const override { return &map_; }
  void Refresh() override;

 protected:
  /// Fills the lists from the working copy.
  virtual void FillLists();
  RowEditor& Rows(std::size_t set) { return editors_[set]; }

 private:
  void OnSelectionChanged(int listId);
  void OnEditChanged(int editId);

  std::vector<RowEditor> editors_;  // by the description's sets
  std::vector<host::MessageEntry> entries_;
  host::MessageMap map_;
};

}  // namespace lamp
