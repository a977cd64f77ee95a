#pragma once

#include <optional>

#include "host/text/basic_string.h"
#include "host/xml/xml_document.h"

namespace lamp {

/// What is wrong with a device as it is typed: what to say, and the edit to mend.
struct DeviceFault {
  int control = 0;
  XCBasicString message;
};

/// What the checks look at.
struct TypedDevice {
  const XCBasicString& name;
  const XCBasicString& address;
  const XCBasicString& socket;
  const XCBasicString& ftpAddress;
  int ftpPort = 0;  ///< 0 for an empty one
};

/// The first fault of a device, none when it may be saved. @p device is its element as it stands,
/// @p commSystem the element that holds the configuration's devices, possibly null: then nothing
/// is compared with other devices.
std::optional<DeviceFault> findFault(const TypedDevice& typed, const XmlDocument::XmlNode& device,
                                     const XmlDocument::XmlNode* commSystem);

}  // namespace lamp
