#pragma once

#include <cstddef>
#include <span>

#include "host/text/basic_string.h"
#include "host/ui/control_spec.h"
#include "host/xml/xml_document.h"

namespace lamp {

/// What the device definition edits, as texts.
struct DeviceValues {
  XCBasicString name;
  XCBasicString description;
  XCBasicString identifier;
  XCBasicString address;
  XCBasicString socket;
  XCBasicString ftpAddress;
  XCBasicString ftpPort;
  XCBasicString ftpUser;
  XCBasicString ftpPassword;
};

/// The numbers of the edits that checks and exchanges refer to.
namespace device_control {
constexpr int Name = 6307;
constexpr int Identifier = 6340;
constexpr int Address = 6308;
constexpr int Socket = 6311;
constexpr int FtpAddress = 6343;
constexpr int FtpPort = 6354;
}  // namespace device_control

enum class DeviceFieldKind { text, digits, password };

/// One field of a device: the child of its element, which also names the control, the value, and
/// how it is shown.
struct DeviceField {
  host::XmlName child;
  XCBasicString DeviceValues::*value;
  int label;
  int edit;
  host::TextId caption;
  int limit;  ///< most characters of the edit
  DeviceFieldKind kind = DeviceFieldKind::text;
  std::u16string_view whenAbsent = {};  ///< shown when the element has no such child
};

/// Where the fields of the FTP server begin among all of them.
constexpr std::size_t FirstFtpField = 5;

/// All fields, in the order in which they are written and appended to an address.
std::span<const DeviceField> deviceFields();

/// Those that tell how the controller is reached: all but the name and the description.
std::span<const DeviceField> communicationFields();

/// The label and the edit of a field.
host::ControlSpec labelOf(const DeviceField& field);
host::ControlSpec editOf(const DeviceField& field);

/// What the edits show for a device: a missing child as its default, everything cut at the limit of
/// its edit.
DeviceValues shownValues(const XmlDocument::XmlNode& device);

/// At most @p limit UTF-16 units of a text; a pair of surrogates is never split.
XCBasicString cutAt(const XCBasicString& text, int limit);

/// Writes all values into the children of a device.
void writeValues(XmlDocument::XmlNode& device, const DeviceValues& values);

/// Whether a field that tells how the controller is reached differs from the device's element.
bool communicationDiffers(const XmlDocument::XmlNode& device, const DeviceValues& values);

}  // namespace lamp
