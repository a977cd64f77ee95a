#include "pages/binding/field_page.h"

#include "exchange/exchange_frame.h"
#include "pages/binding/choice_list.h"
#include "pages/binding/row_page.h"

namespace lamp {
namespace {

using host::Binding;
using host::TextId;
using host::ValueKind;

/// The controls of a field, in the order of their ids.
enum Part { control, label, unit, PartCount };

void fillChoices(host::ComboControl& combo, const Binding& field) {
  combo.clearItems();
  for (const host::ValueChoice& choice : field.choices)
    combo.addItem(
        choice.text == TextId::None ? XCBasicString(choice.literal) : XCLoadString(choice.text),
        choice.value);
}

// What a control holds as its field is sent; none for a list without a chosen entry.
std::optional<XCBasicString> valueOn(const XCBaseDlg& dialog, const Binding& field) {
  if (field.kind == ValueKind::choice) return chosenValue(dialog.Combo(field.control), field);
  return dialog.GetDlgItemText(field.control);
}

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

Binding field(const char* attribute, ValueKind kind, TextId label) {
  return {.name = attribute, .attributes = {attribute}, .caption = {label}, .kind = kind};
}

}  // namespace

void FieldSet::fill(const Node* section) const {
  for (const Binding& field : fields_) {
    const bool choice = field.kind == ValueKind::choice;
    if (choice) fillChoices(dialog_.Combo(field.control), field);
    if (section == nullptr || field.writeOnly) continue;
    if (choice)
      showChoice(dialog_.Combo(field.control), field, section);
    else
      dialog_.SetDlgItemText(field.control, field.valueIn(*section));
  }
}

void FieldSet::put(Node& section) const {
  for (const Binding& field : fields_) {
    if (field.owner == host::ValueOwner::controller) continue;
    if (field.writeOnly) section.eraseAttribute(field.attributes.front());
    const std::optional<XCBasicString> value = valueOn(dialog_, field);
    if (value && *value != field.valueIn(section)) field.put(section, *value);
  }
}

bool FieldSet::check(const Node& section) const {
  for (const Binding& field : fields_) {
    std::size_t place = 0;
    if (!field.rule || field.rule.accepts(section, place)) continue;
    dialog_.MessageBox(field.rule.message(section));
    dialog_.FocusAndSelectAll(field.control);
    return false;
  }
  return true;
}

FieldPage::FieldPage(int templateNumber, const host::PageDescription& description, XCDriver* driver,
                     CWnd* parent)
    : SettingsPage(templateNumber, *description.readSection, driver, parent),
      description_(description),
      fields_(*this, description.fields) {}

bool FieldPage::OnInitDialog() {
  read_ = std::move(Document());  // the page's own document is made anew for the write
  fields_.fill(Untouched());
  return SettingsPage::OnInitDialog();
}

const host::EditedPage::Node* FieldPage::Untouched() const {
  return sectionOf(read_, *description_.readSection);
}

const host::EditedPage::Node* FieldPage::Edited() {
  host::EditedPage::Node& section = edited_.Create(*description_.readSection);
  if (const host::EditedPage::Node* read = Untouched()) section = *read;
  fields_.put(section);
  return &section;
}

bool FieldPage::Write() {
  description_.makeWrite(Document(), Untouched(), *Edited(), {});
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

Binding textField(const char* attribute, TextId label) {
  return field(attribute, ValueKind::text, label);
}

Binding numberField(const char* attribute, TextId label, TextId unit) {
  Binding made = field(attribute, ValueKind::number, label);
  made.caption.unit = unit;
  return made;
}

Binding choiceField(const char* attribute, TextId label, std::vector<host::ValueChoice> choices) {
  Binding made = field(attribute, ValueKind::choice, label);
  made.choices = std::move(choices);
  return made;
}

Binding writeOnlyField(const char* attribute, TextId label) {
  Binding made = secretField(attribute, label);
  made.writeOnly = true;
  return made;
}

Binding secretField(const char* attribute, TextId label) {
  Binding made = field(attribute, ValueKind::text, label);
  made.secret = true;
  return made;
}

}  // namespace lamp
