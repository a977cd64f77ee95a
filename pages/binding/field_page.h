#pragma once

#include <span>

#include "pages/binding/described_page.h"
#include "pages/binding/field_set.h"

namespace lamp {

/// A frame of a field page: a title and how many fields of the table, in order, stand in it.
struct FieldFrame {
  host::TextId title;
  std::size_t count;
};

/// A page of fields that sends only what differs from what was read, by its description.
class FieldPage : public DescribedPage {
 public:
  /// @p description must outlive the page.
  FieldPage(int templateNumber, const host::PageDescription& description, XCDriver* driver,
            CWnd* parent);

  bool OnInitDialog() override;

  const Node* Untouched() const override;
  const Node* Edited() override;

 protected:
  /// Sends nothing when no value differs.
  bool Send(const XCBasicString& stamp) override;

 private:
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

}  // namespace lamp
