#pragma once

#include <optional>

#include "host/dialogs/page_description.h"
#include "host/ui/controls/choice_controls.h"

namespace lamp {

/// Selects the entry of a drop-down list that has the value which @p element shows; another value,
/// also an empty one, and no element select nothing. Exact, with case.
void showChoice(host::ComboControl& combo, const host::Binding& binding,
                const XmlDocument::XmlNode* element);

/// The value of the selected entry, none when no entry is selected.
std::optional<XCBasicString> chosenValue(const host::ComboControl& combo,
                                         const host::Binding& binding);

}  // namespace lamp
