#pragma once

#include "host/dialogs/page_description.h"

// The rules that more than one page's values have.

namespace lamp {

/// Takes every text but the empty one; refused with text 38408.
host::ValueRule notEmpty(host::XmlName attribute);

/// Takes decimal numbers up to @p highest; a text that is none counts as 0, an empty one is
/// refused. Refused with text 38265, the caption of the value and the bounds.
host::ValueRule numberBetween(host::XmlName attribute, host::Caption caption, int lowest,
                              int highest);

/// A lamp's power in percent: what edits call it, and the rule that it is 0 to 100.
inline constexpr host::Caption PowerCaption{.text = host::TextId::Power, .suffix = u" (%)"};
host::ValueRule powerInPercent(host::XmlName attribute);

/// Text 38265 with the caption of a value and its bounds.
XCBasicString outOfRange(const host::Caption& caption, int lowest, int highest);

}  // namespace lamp
