#pragma once

#include <span>
#include <string>
#include <vector>

#include "host/dialogs/base_dlg.h"
#include "host/resources/text_id.h"
#include "host/xml/xml_document.h"

namespace lamp {

enum class FieldKind {
  text,
  digits,
  choice,     ///< a drop-down list; the value is the entry's character
  writeOnly,  ///< shown masked, never filled, sent whenever it is not empty
};

/// One entry of a drop-down field.
struct FieldChoice {
  host::TextId text = host::TextId::None;
  std::u16string_view literal = {};  ///< shown when there is no text number
  char16_t value = 0;

  constexpr FieldChoice(host::TextId number, char16_t sent) : text(number), value(sent) {}
  constexpr FieldChoice(std::u16string_view words, char16_t sent) : literal(words), value(sent) {}
};

/// One field of a section: the attribute it edits, which is also its control's name, and how it is
/// shown.
struct FieldSpec {
  const char* attribute;
  FieldKind kind;
  host::TextId label;
  host::TextId unit = host::TextId::None;
  std::vector<FieldChoice> choices = {};
};

/// A frame of a field page: a title and how many fields of the table, in order, stand in it.
struct FieldFrame {
  host::TextId title;
  std::size_t count;
};

/// Binds a table of fields to the attributes of a section: fills the controls, remembers what was
/// loaded, and puts only what differs into a write. The table's order is the section's.
class FieldSet {
 public:
  /// @p fields and @p frames must outlive this. The controls take ids from @p firstId on.
  FieldSet(std::span<const FieldSpec> fields, std::span<const FieldFrame> frames, int firstId)
      : fields_(fields), frames_(frames), firstId_(firstId) {}

  /// The controls of the fields of a frame: its box, and for every field the control, its label
  /// and its unit.
  std::vector<host::ControlSpec> frameControls(std::size_t frame) const;
  /// The arrangement of a frame: a row for every field.
  host::LayoutItem frameLayout(std::size_t frame) const;

  /// Fills the drop-down lists, then every control from @p section; without a section the
  /// controls stay as they are and every loaded value is empty.
  void fill(XCBaseDlg& dialog, const XmlDocument::XmlNode* section);
  /// Sets every field that differs from its loaded value on @p element, in the table's order.
  void put(const XCBaseDlg& dialog, XmlDocument::XmlNode& element) const;

 private:
  enum Part { control, label, unit, PartCount };
  int idOf(std::size_t field, Part part) const {
    return firstId_ + static_cast<int>(frames_.size() + field * PartCount) + part;
  }
  int boxOf(std::size_t frame) const { return firstId_ + static_cast<int>(frame); }
  std::size_t firstOf(std::size_t frame) const;
  void fillChoices(XCBaseDlg& dialog, std::size_t field) const;

  std::span<const FieldSpec> fields_;
  std::span<const FieldFrame> frames_;
  int firstId_;
  std::vector<XCBasicString> loaded_;
};

}  // namespace lamp
