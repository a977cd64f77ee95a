#pragma once

#include <span>

#include "host/dialogs/page_description.h"
#include "pages/binding/settings_page.h"

namespace lamp {

/// A frame of a field page: a title and how many fields of the table, in order, stand in it.
struct FieldFrame {
  host::TextId title;
  std::size_t count;
};

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

/// A page of fields that sends only what differs from what was read, by its description.
class FieldPage : public SettingsPage, public host::EditedPage {
 public:
  /// @p description must outlive the page.
  FieldPage(int templateNumber, const host::PageDescription& description, XCDriver* driver,
            CWnd* parent);

  bool OnInitDialog() override;
  host::EditedPage* Edits() override { return this; }

  const host::PageDescription& Description() const override { return description_; }
  const host::EditedPage::Node* Untouched() const override;
  const host::EditedPage::Node* Edited() override;

 protected:
  bool Write() override;

 private:
  const host::PageDescription& description_;
  FieldSet fields_;
  XmlDocument read_;
  XmlDocument edited_;
};

/// Gives every field of a table the ids of its control and its label, from @p firstId on, and its
/// frame. The unit's label is unitLabelOf(field).
void layOut(std::vector<host::Binding>& fields, std::span<const FieldFrame> frames, int firstId);
int unitLabelOf(const host::Binding& field);

/// The controls of the fields of a frame: its box, and for every field the control, its label and
/// its unit.
std::vector<host::ControlSpec> frameControls(const std::vector<host::Binding>& fields,
                                             std::span<const FieldFrame> frames, int firstId,
                                             std::size_t frame);
/// The arrangement of a frame: a row for every field.
host::LayoutItem frameLayout(const std::vector<host::Binding>& fields,
                             std::span<const FieldFrame> frames, int firstId, std::size_t frame);

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
