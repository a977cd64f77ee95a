#pragma once

#include <vector>

#include "host/ui/controls/list_control.h"
#include "host/xml/xml_document.h"

// The lamps in a group of the host's configuration.

namespace lamp {

/// Whether one of the group's devices is a lamp.
bool containsLamp(const XmlDocument::XmlNode& group);

/// Appends the rows of @p nodes, a list with the nodes' identities in its first column, that show
/// lamps of the group; a lamp without a row is left out. True when there was one.
bool appendLamps(const XmlDocument::XmlNode& group, const host::ListControl& nodes,
                 std::vector<std::size_t>& rows);

}  // namespace lamp
