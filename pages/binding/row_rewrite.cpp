#include "pages/binding/row_rewrite.h"

#include "exchange/sections.h"

namespace lamp {

using Node = XmlDocument::XmlNode;

bool rewriteRow(Node& row, const RowRewrite& rewrite) {
  row.NewChild(rewrite.child).takeAttributes(row, rewrite.moved);
  for (const host::XmlName name : rewrite.dropped) row.eraseAttribute(name);
  if (!row.renameAttribute(attribute::Id, attribute::NodeId)) return false;
  row.eraseAttribute(attribute::Stamp);
  return true;
}

bool rewriteRows(Node& section, const RowRewrite& rewrite) {
  return rewriteRows(section, [&rewrite](const Node&) -> const RowRewrite& { return rewrite; });
}

bool rewriteRows(Node& section, const std::function<const RowRewrite&(const Node&)>& choose) {
  for (Node& row : section.Children())
    if (!rewriteRow(row, choose(row))) return false;
  return true;
}

}  // namespace lamp
