#include "pages/binding/node_record.h"

#include "exchange/sections.h"
#include "pages/binding/row_editor.h"

namespace lamp {

using host::TextId;
using Node = XmlDocument::XmlNode;

bool isNode(const Node& child) {
  return child.TagName() == element::Node;
}

XCBasicString nodeIdentity(const Node& node) {
  return node.getAttribute(attribute::NodeId);
}

XCBasicString rowIdentity(const Node& row) {
  return row.getAttribute(attribute::Id);
}

host::ListColumn identityColumn(int share) {
  return attributeColumn(TextId::Identifier, attribute::Id, share);
}

std::vector<host::ListColumn> nodeColumns(std::u16string_view absentPosition) {
  const auto position = [&](TextId caption, host::XmlName attribute) {
    host::ListColumn column = attributeColumn(caption, attribute);
    if (absentPosition.empty()) return column;
    column.attribute.reset();  // it is sorted by what it shows
    column.cell = [attribute, absent = XCBasicString(absentPosition)](const Node& node) {
      return node.getAttribute(attribute, absent);
    };
    return column;
  };
  return {attributeColumn(TextId::Identifier, attribute::NodeId),
          attributeColumn(TextId::NodeReference, attribute::Reference, 2),
          position(TextId::Latitude, attribute::Latitude),
          position(TextId::Longitude, attribute::Longitude)};
}

void eraseDescription(Node& node) {
  node.eraseAttribute(attribute::Reference);
  node.eraseAttribute(attribute::Latitude);
  node.eraseAttribute(attribute::Longitude);
}

}  // namespace lamp
