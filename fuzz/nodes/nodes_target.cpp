// The child devices of a lamp manager after a node list, for arbitrary pairs of both.

#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "device/child_devices.h"
#include "device/device_element.h"
#include "exchange/exchange_frame.h"
#include "fuzz/dialogs/made_up_host.h"
#include "fuzz/fault.h"

namespace {

using fuzz::expect;
using Node = XmlDocument::XmlNode;
namespace config = lamp::config;

/// What a child device must be after a rebuild.
struct Expected {
  std::u16string name;
  std::u16string description;
  std::u16string id;  ///< empty for one that gets a new id
};

const Node* childOf(const Node& parent, host::XmlName tag) {
  for (const Node& child : parent.Children())
    if (child.TagName() == tag) return &child;
  return nullptr;
}

// The ids that are known by name; of two children with one name the first counts.
std::unordered_map<std::u16string, std::u16string> knownIds(const Node& device) {
  std::unordered_map<std::u16string, std::u16string> known;
  if (const Node* children = childOf(device, config::ChildDevices))
    for (const Node& child : children->Children())
      known.try_emplace(child.Value(config::Name).str(), child.Value(config::Id).str());
  return known;
}

std::vector<Expected> expectedChildren(const XmlDocument& nodes, const Node& device) {
  const auto known = knownIds(device);
  std::vector<Expected> expected;
  const Node* list = lamp::sectionOf(nodes, lamp::section::NodeListRead);
  if (list == nullptr) return expected;
  for (const Node& node : list->Children()) {
    if (node.TagName() != lamp::element::Node) continue;
    Expected child{node.getAttribute(lamp::attribute::NodeId).str(),
                   node.getAttribute(lamp::attribute::Reference).str(),
                   {}};
    const auto found = known.find(child.name);
    if (found != known.end()) child.id = found->second;
    expected.push_back(std::move(child));
  }
  return expected;
}

void checkChildren(const Node& children, const std::vector<Expected>& expected) {
  expect(children.ChildCount() == expected.size(), "every node has one child device");
  std::set<std::u16string> made;
  auto one = expected.begin();
  for (const Node& child : children.Children()) {
    const std::u16string id = child.Value(config::Id).str();
    expect(child.Value(config::Name).str() == one->name, "children stand in the list's order");
    expect(child.Value(config::Description).str() == one->description, "a child has its text");
    expect(child.Value(config::Revision).str() == id, "the revision of a child is its id");
    if (one->id.empty())
      expect(!id.empty() && made.insert(id).second, "a new child has an id of its own");
    else
      expect(id == one->id, "a known child keeps its id");
    ++one;
  }
}

void checkGroup(const Node& configuration, std::u16string_view name, const Node& children) {
  const Node* group = configuration.Node("deviceGroups/groups/group?id=%s?", name);
  expect(group != nullptr, "there is a group with the name");
  const Node* devices = nullptr;
  for (const Node& child : group->Children())
    if (child.TagName() == config::Devices) devices = &child;
  expect(devices != nullptr && devices->ChildCount() == children.ChildCount(),
         "the group lists every child");
  const Node* child = children.FirstChild();
  for (const Node& listed : devices->Children()) {
    expect(listed.Value(config::Id) == child->Value(config::Id), "the group has the list's order");
    child = child->NextSibling();
  }
}

const Node& lastChildren(const Node& device) {
  const Node* found = nullptr;
  for (const Node& child : device.Children())
    if (child.TagName() == config::ChildDevices) found = &child;
  expect(found != nullptr, "the device has a list of children");
  return *found;
}

void rebuild(const XmlDocument& nodes, XmlDocument& device, XmlDocument& configuration) {
  const std::u16string_view name = u"Street \"1\"/a?id=%s?";
  const std::string before = device.ToString();
  const std::vector<Expected> expected = expectedChildren(nodes, *device.Root());
  const bool done = lamp::rebuildChildDevices(nodes, *device.Root(), name, configuration.Root());
  if (nodes.Root() == nullptr) {
    expect(!done && device.ToString() == before, "without a document nothing is changed");
    return;
  }
  checkChildren(lastChildren(*device.Root()), expected);
  const bool isList = lamp::sectionOf(nodes, lamp::section::NodeListRead) != nullptr;
  expect(done == isList, "a list is taken, anything else refused");
  if (done && configuration.Root() != nullptr)
    checkGroup(*configuration.Root(), name, lastChildren(*device.Root()));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  fuzz::MadeUpHost host(input);
  const XmlDocument nodes = host.controller().reply(0);
  const XmlDocument later = host.controller().reply(1);
  XmlDocument device;
  if (!device.Parse(input.document())) device.Create("device");
  XmlDocument configuration;
  configuration.Parse(input.document());
  rebuild(nodes, device, configuration);
  rebuild(later, device, configuration);
  rebuild(nodes, device, configuration);
  return 0;
}
