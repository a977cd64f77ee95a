#pragma once

#include <string>
#include <string_view>

#include "host/xml/xml_document.h"

namespace workbench {

/// A device as the programs' own records name it, in UTF-8.
struct DeviceName {
  std::string id;    ///< empty for a device that is not in the configuration
  std::string name;  ///< likewise
  std::string address;
};

/// The device of the configuration that a command's URI parameters lead to: the one with their
/// address and port, of several the one with their identifier too.
DeviceName deviceOf(std::string_view parameters);

/// The address of a device's controller, "host:port".
std::string addressOf(const XmlDocument::XmlNode& device);

}  // namespace workbench
