#include "pages/binding/field_page.h"

#include "exchange/exchange_frame.h"
#include "pages/binding/value_controls.h"

namespace lamp {
namespace {

using host::Binding;
using host::TextId;

/// The controls of a field, in the order of their ids.
enum Part { control, label, unit, PartCount };

std::size_t firstOf(std::span<const FieldFrame> frames, std::size_t frame) {
  std::size_t first = 0;
  for (std::size_t i = 0; i < frame; ++i) first += frames[i].count;
  return first;
}

template <class Visit>
void forEachIn(const std::vector<Binding>& fields, std::span<const FieldFrame> frames,
               std::size_t frame, const Visit& visit) {
  const std::size_t first = firstOf(frames, frame);
  for (std::size_t i = first; i < first + frames[frame].count; ++i) visit(fields[i]);
}

}  // namespace

FieldPage::FieldPage(int templateNumber, const host::PageDescription& description, XCDriver* driver,
                     CWnd* parent)
    : DescribedPage(templateNumber, description, driver, parent),
      fields_(*this, description.fields) {}

bool FieldPage::OnInitDialog() {
  read_ = std::move(Document());  // the page's own document is made anew for the write
  fields_.fill(Untouched());
  return DescribedPage::OnInitDialog();
}

const FieldPage::Node* FieldPage::Untouched() const {
  return sectionOf(read_, ReadSection());
}

const FieldPage::Node* FieldPage::Edited() {
  Node& section = edited_.Create(ReadSection());
  if (const Node* read = Untouched()) section = *read;
  fields_.put(section);
  return &section;
}

bool FieldPage::Send(const XCBasicString& stamp) {
  Description().makeWrite(Document(), Untouched(), *Edited(), stamp);
  return finishWrite(*this, *Document().Root()->FirstChild());
}

void layOut(std::vector<Binding>& fields, std::span<const FieldFrame> frames, int firstId) {
  const int firstControl = firstId + static_cast<int>(frames.size());
  for (std::size_t frame = 0, i = 0; frame < frames.size(); ++frame)
    for (std::size_t end = i + frames[frame].count; i < end; ++i) {
      fields[i].control = firstControl + static_cast<int>(i) * PartCount;
      fields[i].label = fields[i].control + label;
      fields[i].frame = {frames[frame].title};
    }
}

int unitLabelOf(const Binding& field) {
  return field.control + unit;
}

std::vector<host::ControlSpec> frameControls(const std::vector<Binding>& fields,
                                             std::span<const FieldFrame> frames, int firstId,
                                             std::size_t frame) {
  std::vector<host::ControlSpec> controls = {host::group(
      firstId + static_cast<int>(frame), "frame" + std::to_string(frame + 1), frames[frame].title)};
  forEachIn(fields, frames, frame, [&](const Binding& field) {
    controls.push_back(host::label(field.label, field.name + "Label", field.caption.text));
    controls.push_back(controlOf(field));
    if (field.caption.unit != TextId::None)
      controls.push_back(host::label(unitLabelOf(field), field.name + "Unit", field.caption.unit));
  });
  return controls;
}

host::LayoutItem frameLayout(const std::vector<Binding>& fields, std::span<const FieldFrame> frames,
                             int firstId, std::size_t frame) {
  // Label, control and unit in three columns, aligned over the rows of the frame.
  constexpr int Columns = 3;
  std::vector<host::LayoutItem> pieces;
  forEachIn(fields, frames, frame, [&](const Binding& field) {
    pieces.push_back(host::layout::control(field.label));
    pieces.push_back(host::layout::control(field.control, 1));
    pieces.push_back(field.caption.unit != TextId::None ? host::layout::control(unitLabelOf(field))
                                                        : host::layout::gap(0));
  });
  return host::layout::box(firstId + static_cast<int>(frame),
                           {host::layout::grid(Columns, std::move(pieces))});
}

}  // namespace lamp
