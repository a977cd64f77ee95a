#pragma once

#include <optional>

#include "host/ui/controls/choice_controls.h"

namespace lamp {

/// Selects the entry of a drop-down list whose data is the one character of @p text; any other
/// text, also an empty one, selects nothing. Exact, with case.
void selectCharacter(host::ComboControl& combo, const XCBasicString& text);

/// The selected entry's character as text, none when no entry is selected.
std::optional<XCBasicString> selectedCharacter(const host::ComboControl& combo);

}  // namespace lamp
