#pragma once

#include <functional>
#include <vector>

#include "host/xml/xml_document.h"

namespace lamp {

/// How a row changes when its section is sent: what it was read with moves into a child of its own.
struct RowRewrite {
  /// The child that the row gets, behind those that it has.
  host::XmlName child;
  /// What goes from the row into the child, in the child's order. One that the row lacks goes in
  /// with an empty text.
  std::vector<host::XmlName> moved;
  /// What leaves the row and goes nowhere.
  std::vector<host::XmlName> dropped = {};
};

/// Rewrites one row for sending: its child takes the attributes along, its identity is renamed from
/// "Id" to "nodeId", its stamp goes. Everything else stays. False when the row has no identity.
bool rewriteRow(XmlDocument::XmlNode& row, const RowRewrite& rewrite);

/// Takes the rewriting of a row back: what its last such child holds is the row's again, and its
/// identity has its former name. What was dropped stays away.
void restoreRow(XmlDocument::XmlNode& row, const RowRewrite& rewrite);

/// Rewrites the rows of @p section, in order. False at the first one without identity: the section
/// must not be sent then.
bool rewriteRows(XmlDocument::XmlNode& section, const RowRewrite& rewrite);
/// As above, with a rewriting chosen by the row as it was read.
bool rewriteRows(XmlDocument::XmlNode& section,
                 const std::function<const RowRewrite&(const XmlDocument::XmlNode&)>& choose);

}  // namespace lamp
