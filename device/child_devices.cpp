#include "device/child_devices.h"

#include <cstdint>
#include <unordered_map>

#include "device/device_element.h"
#include "driver/exchange_frame.h"
#include "host/services/identity.h"

namespace lamp {
namespace {

using XmlNode = XmlDocument::XmlNode;

constexpr std::u16string_view LampDriver = u"ZELLAMP";

XmlNode* childOf(XmlNode& parent, host::XmlName name) {
  for (XmlNode& child : parent.Children())
    if (child.TagName() == name) return &child;
  return nullptr;
}

XmlNode& childMade(XmlNode& parent, host::XmlName name) {
  XmlNode* child = childOf(parent, name);
  return child != nullptr ? *child : parent.NewChild(name);
}

host::XmlText textOf(const XmlNode& parent, host::XmlName name) {
  for (const XmlNode& child : parent.Children())
    if (child.TagName() == name) return child.text();
  return {};
}

// FNV-1a over the code units: a text has one hash, whichever way it is kept.
struct TextHash {
  std::size_t operator()(host::XmlText text) const {
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (std::size_t i = 0; i < text.size(); ++i) hash = (hash ^ text[i]) * 0x100000001B3U;
    return static_cast<std::size_t>(hash);
  }
};

/// The ids of child devices by their names. The first child with a name counts.
class KnownIds {
 public:
  /// @p children must stay in memory as long as this; none when null.
  explicit KnownIds(const XmlNode* children) {
    if (children == nullptr) return;
    ids_.reserve(children->ChildCount());
    for (const XmlNode& child : children->Children())
      ids_.try_emplace(textOf(child, config::Name), textOf(child, config::Id));
  }

  /// The id of a node that is known; a new one for others, and for a child that has none.
  XCBasicString idFor(host::XmlText nodeName) const {
    const auto known = ids_.find(nodeName);
    if (known != ids_.end() && !known->second.empty()) return known->second.toString();
    return guidtow(NewGUID());
  }

 private:
  std::unordered_map<host::XmlText, host::XmlText, TextHash> ids_;
};

// The empty device list of the group with a name; what else the group holds stays.
XmlNode& emptiedGroup(XmlNode& configuration, std::u16string_view name) {
  XmlNode& groups = childMade(childMade(configuration, config::DeviceGroups), config::Groups);
  XmlNode* found = groups.Node("group?id=%s?", name);
  XmlNode& group = found != nullptr ? *found : groups.NewChild(config::Group);
  group.SetValue(config::Id, name);
  group.RemoveChild(childOf(group, config::Devices));
  return group.NewChild(config::Devices);
}

void addChild(XmlNode& children, const XmlNode& node, std::u16string_view id) {
  XmlNode& child = children.NewChild(config::ChildDevice);
  child.NewChild(config::Id, id);
  // A new id is a new revision: the two are the same text deliberately.
  child.NewChild(config::Revision, id);
  child.NewChild(config::Driver, LampDriver);
  child.NewChild(config::Name, node.getAttribute(attribute::NodeId));
  child.NewChild(config::Description, node.getAttribute(attribute::Reference));
}

}  // namespace

bool rebuildChildDevices(const XmlDocument& nodes, XmlNode& device, std::u16string_view groupName,
                         XmlNode* configuration) {
  if (nodes.Root() == nullptr) return false;
  // Taken out of the device, the old children stay readable: their document keeps their memory.
  XmlNode* oldChildren = childOf(device, config::ChildDevices);
  device.RemoveChild(oldChildren);
  if (const XmlNode* controller = nodes.Root()->Node(element::ZelLamp.text()))
    device.SetValue(config::Identifier, controller->getAttribute(attribute::Id));
  XmlNode& children = device.NewChild(config::ChildDevices);
  const XmlNode* list = sectionOf(nodes, section::NodeListRead);
  // The old children are lost here, deliberately: a controller without a list has no lamps.
  if (list == nullptr) return false;

  XmlNode* grouped = configuration == nullptr ? nullptr : &emptiedGroup(*configuration, groupName);
  const KnownIds known(oldChildren);
  for (const XmlNode& node : list->Children()) {
    if (node.TagName() != element::Node) continue;
    const XCBasicString id = known.idFor(node.attribute(attribute::NodeId));
    addChild(children, node, id);
    if (grouped != nullptr) grouped->NewChild(config::Device).NewChild(config::Id, id);
  }
  return true;
}

}  // namespace lamp
