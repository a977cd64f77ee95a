#include "pages/binding/field_set.h"

#include "pages/binding/value_controls.h"

namespace lamp {
namespace {

using host::Binding;
using host::TextId;
using host::ValueKind;

Binding field(const char* attribute, ValueKind kind, TextId label) {
  return {.name = attribute, .attributes = {attribute}, .caption = {label}, .kind = kind};
}

}  // namespace

void FieldSet::fill(const Node* section) const {
  for (const Binding& field : fields_) {
    if (field.kind == ValueKind::choice) fillChoices(dialog_.Combo(field.control), field);
    if (section != nullptr && !field.writeOnly) showValue(dialog_, field.control, field, *section);
  }
}

void FieldSet::put(Node& section) const {
  for (const Binding& field : fields_) {
    if (field.owner == host::ValueOwner::controller) continue;
    if (field.writeOnly) section.eraseAttribute(field.attributes.front());
    const std::optional<XCBasicString> value = valueOn(dialog_, field.control, field);
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
