#include "pages/binding/character_choice.h"

namespace lamp {

void selectCharacter(host::ComboControl& combo, const XCBasicString& text) {
  if (text.Length() == 1)
    combo.selectData(text[0]);
  else
    combo.select(std::nullopt);
}

std::optional<XCBasicString> selectedCharacter(const host::ComboControl& combo) {
  const std::optional<int> data = combo.selectedData();
  if (!data) return std::nullopt;
  return XCBasicString(std::u16string(1, static_cast<char16_t>(*data)));
}

}  // namespace lamp
