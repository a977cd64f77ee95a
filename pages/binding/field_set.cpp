#include "pages/binding/field_set.h"

#include "exchange/exchange_frame.h"
#include "pages/binding/character_choice.h"

namespace lamp {
namespace {

using host::TextId;

host::ControlSpec controlOf(const FieldSpec& field, int id) {
  switch (field.kind) {
    case FieldKind::digits:
      return host::digitsEdit(id, field.attribute);
    case FieldKind::choice:
      return host::combo(id, field.attribute);
    case FieldKind::writeOnly:
      return host::passwordEdit(id, field.attribute);
    case FieldKind::text:
      break;
  }
  return host::edit(id, field.attribute);
}

}  // namespace

std::size_t FieldSet::firstOf(std::size_t frame) const {
  std::size_t first = 0;
  for (std::size_t i = 0; i < frame; ++i) first += frames_[i].count;
  return first;
}

std::vector<host::ControlSpec> FieldSet::frameControls(std::size_t frame) const {
  std::vector<host::ControlSpec> controls;
  const std::string number = std::to_string(frame + 1);
  controls.push_back(host::group(boxOf(frame), "frame" + number, frames_[frame].title));
  const std::size_t first = firstOf(frame);
  for (std::size_t i = first; i < first + frames_[frame].count; ++i) {
    const FieldSpec& field = fields_[i];
    const std::string name = field.attribute;
    controls.push_back(host::label(idOf(i, label), name + "Label", field.label));
    controls.push_back(controlOf(field, idOf(i, control)));
    if (field.unit != TextId::None)
      controls.push_back(host::label(idOf(i, unit), name + "Unit", field.unit));
  }
  return controls;
}

host::LayoutItem FieldSet::frameLayout(std::size_t frame) const {
  // Label, control and unit in three columns, aligned over the rows of the frame.
  constexpr int Columns = 3;
  std::vector<host::LayoutItem> pieces;
  const std::size_t first = firstOf(frame);
  for (std::size_t i = first; i < first + frames_[frame].count; ++i) {
    pieces.push_back(host::layout::control(idOf(i, label)));
    pieces.push_back(host::layout::control(idOf(i, control), 1));
    pieces.push_back(fields_[i].unit != TextId::None ? host::layout::control(idOf(i, unit))
                                                     : host::layout::gap(0));
  }
  return host::layout::box(boxOf(frame), {host::layout::grid(Columns, std::move(pieces))});
}

void FieldSet::fillChoices(XCBaseDlg& dialog, std::size_t field) const {
  host::ComboControl& combo = dialog.Combo(idOf(field, control));
  combo.clearItems();
  for (const FieldChoice& choice : fields_[field].choices)
    combo.addItem(
        choice.text == TextId::None ? XCBasicString(choice.literal) : XCLoadString(choice.text),
        choice.value);
}

void FieldSet::fill(XCBaseDlg& dialog, const XmlDocument::XmlNode* section) {
  loaded_.assign(fields_.size(), {});
  for (std::size_t i = 0; i < fields_.size(); ++i) {
    const FieldSpec& field = fields_[i];
    if (field.kind == FieldKind::choice) fillChoices(dialog, i);
    if (section == nullptr || field.kind == FieldKind::writeOnly) continue;
    loaded_[i] = section->getAttribute(field.attribute);
    if (field.kind != FieldKind::choice)
      dialog.SetDlgItemText(idOf(i, control), loaded_[i]);
    else
      selectCharacter(dialog.Combo(idOf(i, control)), loaded_[i]);
  }
}

void FieldSet::put(const XCBaseDlg& dialog, XmlDocument::XmlNode& element) const {
  for (std::size_t i = 0; i < fields_.size(); ++i) {
    const host::XmlName attribute(fields_[i].attribute);
    if (fields_[i].kind != FieldKind::choice) {
      putIfChanged(element, attribute, dialog.GetDlgItemText(idOf(i, control)), loaded_[i]);
    } else if (const auto value = selectedCharacter(dialog.Combo(idOf(i, control)))) {
      putIfChanged(element, attribute, *value, loaded_[i]);
    }
  }
}

}  // namespace lamp
