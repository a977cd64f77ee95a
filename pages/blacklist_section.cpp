#include "pages/blacklist_section.h"

#include <string>
#include <unordered_set>
#include <vector>

#include "pages/binding/node_record.h"
#include "pages/binding/working_copy.h"

namespace lamp {
namespace {

using Node = XmlDocument::XmlNode;
using Identities = std::unordered_set<std::u16string>;

Identities identitiesIn(const Node& parent) {
  Identities identities;
  for (const Node& child : parent.Children()) identities.insert(nodeIdentity(child).str());
  return identities;
}

// Moves the nodes whose identity is among these, or is not, in their order.
void moveNodes(Node& from, Node& target, const Identities& named, bool among) {
  std::vector<Node*> nodes;
  for (Node& child : from.Children())
    if (isNode(child) && named.contains(nodeIdentity(child).str()) == among)
      nodes.push_back(&child);
  for (Node* node : nodes) moveNode(*node, target);
}

}  // namespace

Node& blacklistOf(Node& table) {
  Node* found = table.Node(BlacklistElement.text());
  return found ? *found : table.NewChild(BlacklistElement);
}

const Node& blacklistOf(const Node& table) {
  static const XmlDocument none(BlacklistElement);
  const Node* found = table.Node(BlacklistElement.text());
  return found ? *found : *none.Root();
}

void moveNode(Node& node, Node& target) {
  target.NewChild(element::Node) = node;
  node.Parent()->RemoveChild(&node);
}

bool sameNodes(const Node& before, const Node& after) {
  if (before.ChildCount() != after.ChildCount()) return false;
  const Identities listed = identitiesIn(after);
  for (const Node& node : before.Children())
    if (!listed.contains(nodeIdentity(node).str())) return false;
  return true;
}

bool makeBlacklistWrite(XmlDocument& request, const Node& table, const XCBasicString& stamp) {
  Node& written = writeCopy(request, blacklistOf(table), section::BlacklistWrite);
  for (Node& node : written.Children()) eraseDescription(node);
  return setActivationDate(written, stamp);
}

void applyBlacklist(Node& table, const Node& written) {
  const Identities named = identitiesIn(written);
  Node& listed = blacklistOf(table);
  moveNodes(listed, table, named, false);
  moveNodes(table, listed, named, true);
}

}  // namespace lamp
