#pragma once

#include <functional>
#include <vector>

#include "host/dialogs/base_dlg.h"
#include "host/dialogs/page_description.h"
#include "host/xml/xml_document.h"

namespace lamp {

/// A list column that shows an attribute.
host::ListColumn attributeColumn(std::u16string_view caption, host::XmlName attribute,
                                 int share = 1);
host::ListColumn attributeColumn(host::TextId caption, host::XmlName attribute, int share = 1);

/// Replaces a list's rows by the children of @p section that @p isRow accepts (all when it is
/// empty), in their order, each bound to its element; nothing is selected. False without a section:
/// the list stays as it is.
bool fillRows(host::ListControl& list, XmlDocument::XmlNode* section,
              const std::function<bool(const XmlDocument::XmlNode&)>& isRow);

/// Binds a list of elements to the edits below it: the edits show what all selected rows have in
/// common, and what is typed goes to every selected row. What the editor itself puts into the
/// edits is not written back.
class RowEditor {
 public:
  /// The edits of @p values, of those that have one. @p dialog must outlive this.
  RowEditor(XCBaseDlg& dialog, int listId, const std::vector<host::Binding>& values);

  /// Fills the list as fillRows does and selects a row. Without a section the list stays as it is.
  void fill(XmlDocument::XmlNode* section,
            const std::function<bool(const XmlDocument::XmlNode&)>& isRow, std::size_t selectedRow);

  /// Shows in each edit the value common to all selected rows, nothing where they differ. Without
  /// a selected row the edits stay.
  void selectionChanged();

  /// Puts an edit's text into every selected row, unless the editor itself changed it. A row
  /// without element ends it.
  void editChanged(int editId);

  /// False while the editor itself writes the edits.
  bool syncEdits() const { return syncEdits_; }

  host::ListControl& list() const { return dialog_.List(listId_); }

 private:
  std::vector<XCBasicString> commonTexts() const;

  XCBaseDlg& dialog_;
  int listId_;
  std::vector<host::Binding> values_;
  bool syncEdits_ = true;
};

}  // namespace lamp
