#pragma once

#include <string_view>

#include "host/xml/xml_document.h"

namespace lamp {

/// Rebuilds the child devices of @p device from a controller's node list: one child device a node,
/// in the list's order, and the same in the group @p groupName below @p configuration, which is
/// made when it is missing. A node that was known keeps its id, so that the rest of the
/// configuration still finds it; a new one gets a new id; children that match no node go. The
/// device takes the controller's identifier over.
///
/// False when @p nodes is no node list. Without a root nothing is changed; with a root but without
/// the list the device is left with an empty list of children: deliberate.
///
/// @p configuration may be null: then there is no group. Time is linear in nodes and old children.
bool rebuildChildDevices(const XmlDocument& nodes, XmlDocument::XmlNode& device,
                         std::u16string_view groupName, XmlDocument::XmlNode* configuration);

}  // namespace lamp
