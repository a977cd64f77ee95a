#pragma once

#include <string_view>

#include "host/xml/xml_text.h"

namespace lamp {

enum class VersionOrder { equal, firstOlder, firstNewer };

/// Compares two dotted versions component by component, as numbers of any length. A component is
/// the leading decimal digits of its piece, 0 when there are none; a component that one version
/// lacks counts as 0, so that "0.3" equals "0.3.0" and an empty text is the oldest version there
/// is.
VersionOrder compareVersions(std::u16string_view first, std::u16string_view second);
/// The same of a text as it lies in a document; @p second is ASCII.
VersionOrder compareVersions(host::XmlText first, std::string_view second);

}  // namespace lamp
