#include "workbench/device_catalogue.h"

#include "host/services/setup.h"

namespace workbench {
namespace {

using Node = XmlDocument::XmlNode;

const host::XmlName Id("id");
const host::XmlName Driver("driver");
const host::XmlName Name("name");
const host::XmlName Description("description");
const host::XmlName Device("device");
const host::XmlName ChildDevice("childDevice");

Node* commSystem() {
  Node* root = XCMainCfg::Get().Root();
  return root == nullptr ? nullptr : root->Node("commSystem");
}

template <class Made>
std::unique_ptr<XCDriver> make(const Node& element, host::XmlName identifier) {
  return std::make_unique<Made>(element.Value(Driver), element.Value(identifier),
                                element.Value(Name), element.Value(Description));
}

std::unique_ptr<XCDriver> makeDriver(const Node& element, bool isChild) {
  if (isChild) return make<XCDriver>(element, Name);
  if (element.Value(Driver) == XCDriverDeviceZelLampManager::GetThisClass().type)
    return make<XCDriverDeviceZelLampManager>(element, Id);
  return make<XCDriverDevice>(element, Id);
}

bool isOf(const XCDriver& driver, const Node& element, bool isChild) {
  return driver.Type() == element.Value(Driver) &&
         driver.Identifier() == element.Value(isChild ? Name : Id) &&
         driver.Name() == element.Value(Name) && driver.Description() == element.Value(Description);
}

}  // namespace

std::vector<Node*> DeviceCatalogue::devices() {
  std::vector<Node*> found;
  if (Node* system = commSystem())
    for (Node& element : system->Children())
      if (element.TagName() == Device) found.push_back(&element);
  return found;
}

Node* DeviceCatalogue::deviceNamed(std::u16string_view name) {
  for (Node* device : devices())
    if (device->Value(Name) == name) return device;
  return nullptr;
}

void DeviceCatalogue::add(const Node& element, bool isChild) {
  XCBasicString id = element.Value(Id);
  if (!id.IsEmpty()) places_.try_emplace(id.str(), Place{&element, isChild});
}

void DeviceCatalogue::tellHeld(const Note& note) const {
  for (const auto& [id, place] : places_) note(place.element);
}

void DeviceCatalogue::build() {
  places_.clear();
  // A device is found before a child device with its id, wherever that stands.
  const std::vector<Node*> all = devices();
  for (const Node* device : all) add(*device, false);
  for (const Node* device : all) {
    if (const Node* children = device->Node("childDevices"))
      for (const Node& child : children->Children())
        if (child.TagName() == ChildDevice) add(child, true);
  }
  built_ = true;
}

XCDriver* DeviceCatalogue::find(std::u16string_view deviceId) {
  if (!built_) build();
  const std::u16string id(deviceId);
  const auto place = places_.find(id);
  if (place == places_.end()) return nullptr;
  const auto& [element, isChild] = place->second;
  XCDriver*& driver = current_[id];
  if (driver == nullptr || !isOf(*driver, *element, isChild)) {
    drivers_.push_back(makeDriver(*element, isChild));
    driver = drivers_.back().get();
  }
  return driver;
}

}  // namespace workbench
