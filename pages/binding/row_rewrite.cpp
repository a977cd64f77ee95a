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

void restoreRow(Node& row, const RowRewrite& rewrite) {
  row.renameAttribute(attribute::NodeId, attribute::Id);
  Node* taken = nullptr;
  for (Node& child : row.Children())
    if (child.TagName() == rewrite.child) taken = &child;
  if (taken == nullptr) return;
  for (const host::XmlName name : rewrite.moved)
    if (taken->hasAttribute(name)) row.copyAttribute(*taken, name);
  row.RemoveChild(taken);
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
