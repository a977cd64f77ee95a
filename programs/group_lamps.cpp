#include "programs/group_lamps.h"

#include "exchange/type_names.h"
#include "host/services/drivers.h"

namespace lamp {
namespace {

using Node = XmlDocument::XmlNode;

const host::XmlName Devices("devices");
const host::XmlName DeviceId("id");

// The lamp that a device of a group is, none when it is something else.
const XCDriver* lampOf(const Node& device) {
  const XCDriver* driver = XCDriver::LockDriver(device.Value(DeviceId));
  return driver != nullptr && driver->Type() == type_name::Lamp ? driver : nullptr;
}

const Node* devicesOf(const Node& group) {
  return group.Node(Devices.text());
}

}  // namespace

bool containsLamp(const Node& group) {
  const Node* devices = devicesOf(group);
  if (devices == nullptr) return false;
  for (const Node& device : devices->Children())
    if (lampOf(device) != nullptr) return true;
  return false;
}

bool appendLamps(const Node& group, const host::ListControl& nodes,
                 std::vector<std::size_t>& rows) {
  const Node* devices = devicesOf(group);
  if (devices == nullptr) return false;
  const std::size_t before = rows.size();
  for (const Node& device : devices->Children()) {
    const XCDriver* lamp = lampOf(device);
    if (lamp == nullptr) continue;
    if (const auto row = nodes.findRow(0, lamp->Identifier())) rows.push_back(*row);
  }
  return rows.size() > before;
}

}  // namespace lamp
