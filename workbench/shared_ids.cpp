#include "workbench/shared_ids.h"

#include <string>
#include <unordered_map>

#include "host/resources/texts.h"
#include "host/services/identity.h"
#include "host/services/setup.h"
#include "workbench/device_catalogue.h"

namespace workbench {
namespace {

using host::TextId;
using Node = XmlDocument::XmlNode;

const host::XmlName Id("id");
const host::XmlName Name("name");
const host::XmlName Revision("revision");
const host::XmlName ChildDevice("childDevice");

// The device that a child device belongs to; none for a device itself.
const Node* ownerOf(const Node& element) {
  return element.TagName() == ChildDevice ? element.Parent()->Parent() : nullptr;
}

XCBasicString nameOf(const Node& element) {
  const Node* owner = ownerOf(element);
  return owner == nullptr ? element.Value(Name)
                          : XCBasicString::Format(XCLoadString(TextId::ChildOfDevice),
                                                  element.Value(Name), owner->Value(Name));
}

void renameInGroup(Node& group, const XCBasicString& before, const XCBasicString& now) {
  if (Node* devices = group.Node("devices"))
    for (Node& device : devices->Children())
      if (device.Value(Id) == before) device.SetValue(Id, now);
  if (Node* inner = group.Node("groups"))
    for (Node& child : inner->Children()) renameInGroup(child, before, now);
}

void giveNewId(Node& element) {
  const XCBasicString before = element.Value(Id);
  const XCBasicString now = guidtow(NewGUID());
  element.SetValue(Id, now);
  const Node* owner = ownerOf(element);
  if (owner == nullptr) return;
  if (element.Node(Revision.text()) != nullptr) element.SetValue(Revision, now);
  Node* group =
      XCMainCfg::Get().Root()->Node("deviceGroups/groups/group?id=%s?", owner->Value(Name));
  if (group != nullptr) renameInGroup(*group, before, now);
}

}  // namespace

std::vector<SharedId> sharedIds() {
  std::vector<SharedId> shared;
  std::unordered_map<std::u16string, const Node*> known;
  const std::vector<Node*> devices = DeviceCatalogue::devices();
  for (Node* device : devices) {
    const XCBasicString id = device->Value(Id);
    if (id.IsEmpty()) continue;
    const auto [place, isNew] = known.try_emplace(id.str(), device);
    if (!isNew) shared.push_back({place->second, device});
  }
  for (Node* device : devices) {
    Node* children = device->Node("childDevices");
    if (children == nullptr) continue;
    for (Node& child : children->Children()) {
      if (child.TagName() != ChildDevice) continue;
      const auto found = known.find(child.Value(Id).str());
      if (found != known.end()) shared.push_back({found->second, &child});
    }
  }
  return shared;
}

XCBasicString sharedIdsText(const std::vector<SharedId>& shared) {
  constexpr std::size_t MostNamed = 3;
  XCBasicString text;
  for (std::size_t i = 0; i < shared.size() && i < MostNamed; ++i) {
    if (i > 0) text += u"; ";
    text += XCBasicString::Format(XCLoadString(TextId::SharedId), nameOf(*shared[i].first),
                                  nameOf(*shared[i].later), shared[i].later->Value(Id));
  }
  if (shared.size() > MostNamed)
    text +=
        u"; " +
        XCBasicString::Format(XCLoadString(TextId::MoreSharedIds), shared.size() - MostNamed).str();
  return text;
}

void giveNewIds(const std::vector<SharedId>& shared) {
  for (const SharedId& pair : shared) giveNewId(*pair.later);
}

}  // namespace workbench
