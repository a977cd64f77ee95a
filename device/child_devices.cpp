#include "device/child_devices.h"

#include <bit>
#include <cstdint>
#include <vector>

#include "device/device_element.h"
#include "exchange/exchange_frame.h"
#include "exchange/type_names.h"
#include "host/services/identity.h"

namespace lamp {
namespace {

using XmlNode = XmlDocument::XmlNode;

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
std::uint32_t hashOf(host::XmlText text) {
  std::uint32_t hash = 0x811C9DC5U;
  for (std::size_t i = 0; i < text.size(); ++i) hash = (hash ^ text[i]) * 0x01000193U;
  return hash;
}

/// The ids of child devices by their names. The first child with a name counts.
class KnownIds {
 public:
  /// @p children must stay in memory as long as this; none when null.
  explicit KnownIds(const XmlNode* children) {
    if (children == nullptr) return;
    for (const XmlNode& child : children->Children())
      known_.push_back({textOf(child, config::Name), textOf(child, config::Id)});
    slots_.resize(std::bit_ceil(2 * known_.size()));
    for (std::size_t i = 0; i < known_.size(); ++i) {
      const std::uint32_t hash = hashOf(known_[i].name);
      Slot& slot = slots_[slotOf(known_[i].name, hash)];
      if (slot.place == 0) slot = {hash, static_cast<std::uint32_t>(i + 1)};
    }
  }

  /// The id of a node that is known, empty for others and for a child that has none.
  host::XmlText idOf(host::XmlText nodeName) const {
    if (slots_.empty()) return {};
    const Slot& slot = slots_[slotOf(nodeName, hashOf(nodeName))];
    return slot.place == 0 ? host::XmlText() : known_[slot.place - 1].id;
  }

 private:
  struct Known {
    host::XmlText name;
    host::XmlText id;
  };
  struct Slot {
    std::uint32_t hash = 0;
    std::uint32_t place = 0;  // in known_, from 1; 0 for a free slot
  };

  // The slot of a name, or the free one where it would stand. At least half of the slots are free.
  std::size_t slotOf(host::XmlText name, std::uint32_t hash) const {
    const std::size_t mask = slots_.size() - 1;
    std::size_t at = hash & mask;
    while (slots_[at].place != 0 &&
           (slots_[at].hash != hash || !(known_[slots_[at].place - 1].name == name)))
      at = (at + 1) & mask;
    return at;
  }

  // A table of its own: a general map touches the memory three times as often a node.
  std::vector<Known> known_;
  std::vector<Slot> slots_;
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

void addChild(XmlNode& children, const XmlNode& node, host::XmlText id) {
  XmlNode& child = children.NewChild(config::ChildDevice);
  child.NewChild(config::Id, id);
  // A new id is a new revision: the two are the same text deliberately.
  child.NewChild(config::Revision, id);
  child.NewChild(config::Driver, type_name::Lamp);
  child.NewChild(config::Name, node.attribute(attribute::NodeId));
  child.NewChild(config::Description, node.attribute(attribute::Reference));
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
    host::XmlText id = known.idOf(node.attribute(attribute::NodeId));
    const XCBasicString made = id.empty() ? guidtow(NewGUID()) : XCBasicString();
    if (id.empty()) id = host::XmlText::wide(made);
    addChild(children, node, id);
    if (grouped != nullptr) grouped->NewChild(config::Device).NewChild(config::Id, id);
  }
  return true;
}

}  // namespace lamp
