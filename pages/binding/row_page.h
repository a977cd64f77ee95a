#pragma once

#include <span>
#include <vector>

#include "pages/binding/document_page.h"
#include "pages/binding/row_editor.h"

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

/// The edits of a list's values, for the editor of its rows: those that a control shows.
std::vector<RowField> rowFields(const std::vector<host::Binding>& bindings);

/// Gives the labels of the values their captions.
void showCaptions(XCBaseDlg& dialog, const std::vector<host::Binding>& bindings);

/// The label and the edit of each value, in order.
std::vector<host::ControlSpec> controlsOf(const std::vector<host::Binding>& bindings);

/// The control of a value, without its label.
host::ControlSpec controlOf(const host::Binding& binding);

/// The label of a value above its edit.
host::LayoutItem labelled(const host::Binding& binding, int stretchFactor = 0);

/// Columns for the values of rows, behind the one that says who a row is.
std::vector<host::ListColumn> columnsOf(host::ListColumn identity,
                                        const std::vector<host::Binding>& bindings);

/// The box with the activation date.
host::LayoutItem activationBox(int groupId, int editId);
std::vector<host::ControlSpec> activationControls(int groupId, int editId);

/// The table of a dialog, put together from pieces.
std::vector<host::ControlSpec> joined(std::initializer_list<std::vector<host::ControlSpec>> pieces);

}  // namespace lamp
