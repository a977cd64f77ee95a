#pragma once

#include <vector>

#include "host/dialogs/base_dlg.h"
#include "host/dialogs/page_description.h"

namespace lamp {

/// The fields of a section in their order, as the controls of a dialog show them: filled from the
/// section, compared with what was read, put into the section again.
class FieldSet {
 public:
  using Node = XmlDocument::XmlNode;

  /// @p fields must outlive this.
  FieldSet(XCBaseDlg& dialog, const std::vector<host::Binding>& fields)
      : dialog_(dialog), fields_(fields) {}

  /// Fills the drop-down lists, then every control from @p section; without a section the controls
  /// stay as they are. A write-only field stays empty.
  void fill(const Node* section) const;
  /// Puts what the controls show into @p section, which holds what was read: a drop-down list
  /// without a chosen entry leaves its value, a write-only field is there only when it was typed.
  void put(Node& section) const;
  /// Shows the message of the first field that its rule refuses, in order, and moves the focus
  /// there. True when there is none.
  bool check(const Node& section) const;

 private:
  XCBaseDlg& dialog_;
  const std::vector<host::Binding>& fields_;
};

// Rows of a table: the attribute, which is also its control's name, and what it is called.
host::Binding textField(const char* attribute, host::TextId label);
host::Binding numberField(const char* attribute, host::TextId label,
                          host::TextId unit = host::TextId::None);
host::Binding choiceField(const char* attribute, host::TextId label,
                          std::vector<host::ValueChoice> choices);
/// Shown masked, never filled, sent whenever it is not empty.
host::Binding writeOnlyField(const char* attribute, host::TextId label);
/// Edited in clear, masked wherever else it is shown.
host::Binding secretField(const char* attribute, host::TextId label);

}  // namespace lamp
