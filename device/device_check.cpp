#include "device/device_check.h"

#include "device/device_element.h"
#include "device/device_fields.h"
#include "host/resources/texts.h"
#include "host/services/identity.h"
#include "host/services/setup.h"

namespace lamp {
namespace {

using host::TextId;
using XmlNode = XmlDocument::XmlNode;

constexpr int LowestFtpPort = 1;
constexpr int HighestPort = 65535;

// No port that can be typed equals it: a device without a port never takes an address.
const XCBasicString NoPort(u"?");

DeviceFault fault(int control, TextId text) {
  return {control, XCLoadString(text)};
}

std::optional<DeviceFault> nameFault(const XCBasicString& name, const XmlNode& device,
                                     const XmlNode* commSystem) {
  if (name.IsEmpty()) return fault(device_control::Name, TextId::NameEmpty);
  if (!IsValidId(name, true)) return fault(device_control::Name, TextId::NameInvalid);
  if (name != device.Value(config::Name) && !IsNameAllowed(name, commSystem))
    return fault(device_control::Name, TextId::NameInUse);
  return std::nullopt;
}

// Whether another device that is reached over the network has the address and the port.
bool isTaken(const XCBasicString& address, const XCBasicString& port, const XmlNode& device,
             const XmlNode& commSystem) {
  const XCBasicString driver = device.Value(config::Driver);
  const XCBasicString id = device.Value(config::Id);
  for (const XmlNode& other : commSystem.Children()) {
    const XCBasicString otherDriver = other.Value(config::Driver);
    if (otherDriver != driver && !host::sharesAddressSpace(otherDriver)) continue;
    if (other.Value(config::Id) == id) continue;
    if (other.Value(config::Address) == address && other.Value(config::Socket, NoPort) == port)
      return true;
  }
  return false;
}

}  // namespace

std::optional<DeviceFault> findFault(const TypedDevice& typed, const XmlNode& device,
                                     const XmlNode* commSystem) {
  if (auto found = nameFault(typed.name, device, commSystem)) return found;
  if (typed.address.IsEmpty()) return fault(device_control::Address, TextId::AddressEmpty);
  // Port 0 passes, unlike the FTP port's: deliberate.
  if (typed.socket.IsEmpty() || typed.socket.ToInt() > HighestPort)
    return fault(device_control::Socket, TextId::PortInvalid);
  if (typed.ftpAddress.IsEmpty()) return fault(device_control::FtpAddress, TextId::AddressEmpty);
  if (typed.ftpPort < LowestFtpPort || typed.ftpPort > HighestPort)
    return DeviceFault{
        device_control::FtpPort,
        XCBasicString::Format(XCLoadString(TextId::FtpPortOutOfRange), LowestFtpPort, HighestPort)};
  if (commSystem != nullptr && isTaken(typed.address, typed.socket, device, *commSystem))
    return fault(device_control::Address, TextId::AddressInUse);
  return std::nullopt;
}

}  // namespace lamp
