#include "pages/binding/value_controls.h"

#include "pages/binding/choice_list.h"
#include "pages/binding/row_editor.h"

namespace lamp {
namespace {

constexpr std::u16string_view Yes = u"Y";
constexpr std::u16string_view No = u"N";

}  // namespace

using host::Binding;
using host::ValueKind;

host::ControlSpec controlOf(const Binding& binding) {
  const std::string& name = binding.nameOfControl();
  if (binding.writeOnly) return host::passwordEdit(binding.control, name, binding.limit);
  switch (binding.kind) {
    case ValueKind::number:
      return host::digitsEdit(binding.control, name, binding.limit);
    case ValueKind::ipAddress:
      return host::ipAddress(binding.control, name);
    case ValueKind::choice:
      return host::combo(binding.control, name);
    case ValueKind::flag:
      return host::check(binding.control, name);
    case ValueKind::text:
    case ValueKind::time:
      break;
  }
  return host::edit(binding.control, name, binding.limit);
}

std::vector<host::ControlSpec> controlsOf(const std::vector<Binding>& bindings) {
  std::vector<host::ControlSpec> controls;
  for (const Binding& binding : bindings) {
    if (binding.control == 0) continue;
    controls.push_back(host::label(binding.label, binding.nameOfControl() + "Label"));
    controls.push_back(controlOf(binding));
  }
  return controls;
}

void showCaptions(XCBaseDlg& dialog, const std::vector<Binding>& bindings) {
  for (const Binding& binding : bindings)
    if (binding.label != 0) dialog.SetDlgItemText(binding.label, binding.caption.toString());
}

void fillChoices(host::ComboControl& combo, const Binding& binding) {
  combo.clearItems();
  for (const host::ValueChoice& choice : binding.choices)
    combo.addItem(choice.text == host::TextId::None ? XCBasicString(choice.literal)
                                                    : XCLoadString(choice.text),
                  choice.value);
}

void showValue(XCBaseDlg& dialog, int control, const Binding& binding,
               const XmlDocument::XmlNode& element) {
  if (binding.kind == ValueKind::choice)
    showChoice(dialog.Combo(control), binding, &element);
  else if (binding.kind == ValueKind::flag)
    dialog.Check(control).setOn(binding.valueIn(element) != No);
  else
    dialog.SetDlgItemText(control, binding.valueIn(element));
}

std::optional<XCBasicString> valueOn(const XCBaseDlg& dialog, int control, const Binding& binding) {
  if (binding.kind == ValueKind::choice) return chosenValue(dialog.Combo(control), binding);
  if (binding.kind == ValueKind::flag)
    return XCBasicString(dialog.Check(control).isOn() ? Yes : No);
  return dialog.GetDlgItemText(control);
}

host::LayoutItem labelled(const Binding& binding, int stretchFactor) {
  return host::layout::labelled(binding.label, binding.control, stretchFactor);
}

host::ListColumn columnOf(const Binding& binding) {
  const host::XmlName attribute = binding.attributes.front();
  return binding.column.empty() ? attributeColumn(binding.caption.text, attribute)
                                : attributeColumn(binding.column, attribute);
}

std::vector<host::ListColumn> columnsOf(host::ListColumn identity,
                                        const std::vector<Binding>& bindings) {
  std::vector<host::ListColumn> columns;
  columns.push_back(std::move(identity));
  for (const Binding& binding : bindings) columns.push_back(columnOf(binding));
  return columns;
}

std::vector<host::ControlSpec> joined(
    std::initializer_list<std::vector<host::ControlSpec>> pieces) {
  std::vector<host::ControlSpec> controls;
  for (const auto& piece : pieces) controls.insert(controls.end(), piece.begin(), piece.end());
  return controls;
}

}  // namespace lamp
