#include "device/device_fields.h"

#include "device/device_element.h"

namespace lamp {
namespace {

using host::TextId;
using Kind = DeviceFieldKind;

const DeviceField Fields[] = {
    {config::Name, &DeviceValues::name, 6306, device_control::Name, TextId::Name, 64},
    {config::Description, &DeviceValues::description, 6312, 6313, TextId::Description, 128},
    {config::Identifier, &DeviceValues::identifier, 6339, device_control::Identifier,
     TextId::Identifier, 16},
    {config::Address, &DeviceValues::address, 6309, device_control::Address, TextId::Address, 64},
    {config::Socket, &DeviceValues::socket, 6310, device_control::Socket, TextId::Port, 5,
     Kind::digits, u"8080"},
    {config::FtpAddress, &DeviceValues::ftpAddress, 6344, device_control::FtpAddress,
     TextId::Address, 64},
    {config::FtpPort, &DeviceValues::ftpPort, 6355, device_control::FtpPort, TextId::Port, 5,
     Kind::digits, u"21"},
    {config::FtpUser, &DeviceValues::ftpUser, 6345, 6346, TextId::FtpUser, 64},
    {config::FtpPassword, &DeviceValues::ftpPassword, 6347, 6348, TextId::Password, 64,
     Kind::password},
};

// The fields in front say what the device is called; the others how its controller is reached.
constexpr std::size_t FirstCommunicationField = 2;

bool isHighSurrogate(char16_t unit) {
  return unit >= 0xD800 && unit < 0xDC00;
}

}  // namespace

std::span<const DeviceField> deviceFields() {
  return Fields;
}

std::span<const DeviceField> communicationFields() {
  return deviceFields().subspan(FirstCommunicationField);
}

host::ControlSpec labelOf(const DeviceField& field) {
  return host::label(field.label, std::string(field.child.text()) + "Label", field.caption);
}

host::ControlSpec editOf(const DeviceField& field) {
  const std::string name(field.child.text());
  switch (field.kind) {
    case Kind::digits:
      return host::digitsEdit(field.edit, name, field.limit);
    case Kind::password:
      return host::passwordEdit(field.edit, name, field.limit);
    case Kind::text:
      break;
  }
  return host::edit(field.edit, name, field.limit);
}

XCBasicString cutAt(const XCBasicString& text, int limit) {
  auto length = static_cast<std::size_t>(limit);
  if (text.Length() <= length) return text;
  if (length > 0 && isHighSurrogate(text[length - 1])) --length;
  return text.Left(length);
}

DeviceValues shownValues(const XmlDocument::XmlNode& device) {
  DeviceValues values;
  for (const DeviceField& field : Fields)
    values.*field.value = cutAt(device.Value(field.child, field.whenAbsent), field.limit);
  return values;
}

void writeValues(XmlDocument::XmlNode& device, const DeviceValues& values) {
  for (const DeviceField& field : Fields) device.SetValue(field.child, values.*field.value);
}

bool communicationDiffers(const XmlDocument::XmlNode& device, const DeviceValues& values) {
  for (const DeviceField& field : communicationFields())
    if (device.Value(field.child) != values.*field.value) return true;
  return false;
}

}  // namespace lamp
