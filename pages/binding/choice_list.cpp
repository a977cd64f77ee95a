#include "pages/binding/choice_list.h"

#include <algorithm>

namespace lamp {

void showChoice(host::ComboControl& combo, const host::Binding& binding,
                const XmlDocument::XmlNode* element) {
  combo.select(std::nullopt);
  if (element == nullptr) return;
  const XCBasicString value = binding.valueIn(*element);
  const auto& items = combo.items();
  const auto found = std::find_if(items.begin(), items.end(), [&](const auto& item) {
    return binding.entryValue(item.data) == value;
  });
  if (found != items.end()) combo.select(static_cast<std::size_t>(found - items.begin()));
}

std::optional<XCBasicString> chosenValue(const host::ComboControl& combo,
                                         const host::Binding& binding) {
  const std::optional<int> data = combo.selectedData();
  if (!data) return std::nullopt;
  return binding.entryValue(*data);
}

}  // namespace lamp
