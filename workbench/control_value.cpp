#include "workbench/control_value.h"

#include <algorithm>

namespace workbench {
namespace {

using host::Control;

bool sameName(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
    return lower(x) == lower(y);
  });
}

}  // namespace

bool takesValues(const Control& control) {
  return dynamic_cast<const host::EditControl*>(&control) != nullptr ||
         dynamic_cast<const host::ComboControl*>(&control) != nullptr ||
         dynamic_cast<const host::IpControl*>(&control) != nullptr ||
         control.kind() == host::ControlKind::check;
}

std::u16string valueIn(const Control& control) {
  if (const auto* combo = dynamic_cast<const host::ComboControl*>(&control)) {
    const auto data = combo->selectedData();
    return data && *data > 0 ? std::u16string(1, static_cast<char16_t>(*data)) : std::u16string();
  }
  if (const auto* check = dynamic_cast<const host::CheckControl*>(&control))
    return check->isOn() ? u"Y" : u"N";
  return control.text().str();
}

Control* controlNamedLike(const XCBaseDlg& page, std::string_view attribute) {
  for (const auto& control : page.Controls())
    if (takesValues(*control) && sameName(control->name(), attribute)) return control.get();
  return nullptr;
}

Control* editOfRows(const XCBaseDlg& page, const host::ListControl& list,
                    std::string_view attribute) {
  const std::string& name = list.name();
  const auto capital =
      std::find_if(name.begin(), name.end(), [](char c) { return c >= 'A' && c <= 'Z'; });
  if (capital != name.end())
    if (Control* own =
            controlNamedLike(page, std::string(name.begin(), capital) + std::string(attribute)))
      return own;
  return controlNamedLike(page, attribute);
}

}  // namespace workbench
