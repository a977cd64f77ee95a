#include "workbench/lamp_groups.h"

#include <unordered_set>

#include "host/services/identity.h"
#include "host/services/setup.h"
#include "workbench/device_catalogue.h"

namespace workbench {
namespace {

using host::TextId;
using Node = XmlDocument::XmlNode;

const host::XmlName Id("id");
const host::XmlName Name("name");
const host::XmlName Group("group");
const host::XmlName Groups("groups");
const host::XmlName Device("device");
const host::XmlName Devices("devices");
const host::XmlName DeviceGroups("deviceGroups");
const host::XmlName ChildDevices("childDevices");

Node* childOf(const Node& parent, host::XmlName tag) {
  return const_cast<Node&>(parent).Node(tag.text());
}

Node& childMade(Node& parent, host::XmlName tag) {
  Node* child = childOf(parent, tag);
  return child != nullptr ? *child : parent.NewChild(tag);
}

bool isEmpty(const Node* container) {
  return container == nullptr || container->FirstChild() == nullptr;
}

}  // namespace

Node* LampGroups::ownGroup(std::u16string_view name) const {
  Node* root = XCMainCfg::Get().Root();
  return root == nullptr || name.empty() ? nullptr
                                         : root->Node("deviceGroups/groups/group?id=%s?", name);
}

Node* LampGroups::container() const {
  const Node* own = ownGroup(device_->Value(Name));
  return own == nullptr ? nullptr : childOf(*own, Groups);
}

// The group of a controller whose lamps were never read is made as the node update would.
Node& LampGroups::containerMade() const {
  const XCBasicString name = device_->Value(Name);
  Node* own = ownGroup(name);
  if (own == nullptr) {
    own = &childMade(childMade(*XCMainCfg::Get().Root(), DeviceGroups), Groups).NewChild(Group);
    own->SetValue(Id, name);
    own->NewChild(Devices);
  }
  return childMade(*own, Groups);
}

std::vector<Node*> LampGroups::all() const {
  std::vector<Node*> found;
  if (Node* groups = container())
    for (Node& group : groups->Children())
      if (group.TagName() == Group) found.push_back(&group);
  return found;
}

Node* LampGroups::named(std::u16string_view name) const {
  for (Node* group : all())
    if (group->Value(Id) == name) return group;
  return nullptr;
}

bool LampGroups::has(const Node& group) const {
  return group.Parent() != nullptr && group.Parent() == container();
}

std::optional<TextId> LampGroups::nameFault(std::u16string_view name, const Node* group) const {
  if (name.empty()) return TextId::GroupNameEmpty;
  if (!IsValidId(name, true)) return TextId::NameInvalid;
  const std::u32string wanted = host::foldedText(name);
  for (const Node* other : all())
    if (other != group && host::foldedText(other->Value(Id)) == wanted)
      return TextId::GroupNameTaken;
  return std::nullopt;
}

Node& LampGroups::add(const GroupContent& content) {
  Node& group = containerMade().NewChild(Group);
  change(group, content);
  return group;
}

void LampGroups::change(Node& group, const GroupContent& content) {
  group.SetValue(Id, content.name);
  XmlDocument before(Devices);
  if (const Node* devices = childOf(group, Devices)) *before.Root() = *devices;
  Node& devices = childMade(group, Devices);
  devices.RemoveChildren();
  std::unordered_map<std::u16string, const Node*> known;
  for (const Node& device : before.Root()->Children())
    known.try_emplace(device.Value(Id).str(), &device);
  for (const XCBasicString& lamp : content.lamps) {
    Node& device = devices.NewChild(Device);
    const auto found = known.find(lamp.str());
    if (found != known.end())
      device = *found->second;
    else
      device.NewChild(Id, lamp);
  }
}

bool LampGroups::remove(Node& group) {
  return has(group) && group.Parent()->RemoveChild(&group);
}

void LampGroups::replaceAll(const Node* wanted) {
  if (wanted != nullptr)
    containerMade() = *wanted;
  else if (Node* groups = container())
    groups->Parent()->RemoveChild(groups);
}

GroupContent LampGroups::contentOf(const Node& group) {
  GroupContent content{group.Value(Id), {}};
  if (const Node* devices = childOf(group, Devices))
    for (const Node& device : devices->Children()) content.lamps.push_back(device.Value(Id));
  return content;
}

std::vector<Node*> LampGroups::lamps() const {
  std::vector<Node*> found;
  if (Node* children = childOf(*device_, ChildDevices))
    for (Node& child : children->Children())
      if (!child.Value(Id).IsEmpty()) found.push_back(&child);
  return found;
}

// The dialog may have made a group of the new name already, from the controller's lamps. The groups
// of lamps then move over, where it has none of its own.
void LampGroups::followRename(std::u16string_view before) const {
  const XCBasicString name = device_->Value(Name);
  if (name == before || DeviceCatalogue::deviceNamed(before) != nullptr) return;
  Node* old = ownGroup(before);
  if (old == nullptr) return;
  Node* own = ownGroup(name);
  if (own == nullptr) return old->SetValue(Id, name);
  const Node* groups = childOf(*old, Groups);
  if (isEmpty(groups) || !isEmpty(container())) return;
  containerMade() = *groups;
  old->Parent()->RemoveChild(old);
}

}  // namespace workbench
