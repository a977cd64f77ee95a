#pragma once

#include "host/xml/xml_document.h"

// The blacklist lies inside the section of the node table: nodes stand in the one or in the other.

namespace lamp {

/// The element of the blacklist in the table.
inline const host::XmlName BlacklistElement("BlackList");

/// The blacklist of a table, which is made where the table lacks it.
XmlDocument::XmlNode& blacklistOf(XmlDocument::XmlNode& table);
/// The same of a table that stays as it is: an empty one where it lacks it.
const XmlDocument::XmlNode& blacklistOf(const XmlDocument::XmlNode& table);

/// Takes a node from where it stands to the end of the table or of its blacklist.
void moveNode(XmlDocument::XmlNode& node, XmlDocument::XmlNode& target);

/// Whether two blacklists hold the same nodes. Their order does not count, nor what else they
/// carry.
bool sameNodes(const XmlDocument::XmlNode& before, const XmlDocument::XmlNode& after);

/// Makes @p request the write of a table's blacklist: of its nodes only what tells which they are.
/// False when that can't be made.
bool makeBlacklistWrite(XmlDocument& request, const XmlDocument::XmlNode& table,
                        const XCBasicString& stamp);

/// Makes a table's blacklist hold the nodes that @p written names, and the table all others.
void applyBlacklist(XmlDocument::XmlNode& table, const XmlDocument::XmlNode& written);

}  // namespace lamp
