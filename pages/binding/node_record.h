#pragma once

#include <vector>

#include "host/ui/controls/list_control.h"
#include "host/xml/xml_document.h"

// A record of the controller's node table, and how lists show it.

namespace lamp {

/// Whether an element is a node record.
bool isNode(const XmlDocument::XmlNode& child);

/// Who a record of the node table is, its "nodeId".
XCBasicString nodeIdentity(const XmlDocument::XmlNode& node);
/// Who a row of the other sections is, the node's identity as they call it, "Id".
XCBasicString rowIdentity(const XmlDocument::XmlNode& row);
/// The column that shows it.
host::ListColumn identityColumn(int share = 1);

/// The columns of the node table: identity, reference, latitude, longitude. A latitude or longitude
/// that a node lacks is shown as @p absentPosition; an empty one stays empty.
std::vector<host::ListColumn> nodeColumns(std::u16string_view absentPosition = {});

/// Takes reference, latitude and longitude away from a record: what is left says which node it is.
void eraseDescription(XmlDocument::XmlNode& node);

}  // namespace lamp
