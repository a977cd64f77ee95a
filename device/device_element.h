#pragma once

#include "host/xml/xml_name.h"

// The names of a device's element in the host's configuration, of its child devices and of the
// group that lists them.

namespace lamp::config {

inline const host::XmlName CommSystem("commSystem");

// Text children of a device.
inline const host::XmlName Name("name");
inline const host::XmlName Description("description");
inline const host::XmlName Identifier("identifier");
inline const host::XmlName Address("address");
inline const host::XmlName Socket("socket");
inline const host::XmlName FtpAddress("ftpAddress");
inline const host::XmlName FtpPort("ftpPort");
inline const host::XmlName FtpUser("ftpUser");
inline const host::XmlName FtpPassword("ftpPassword");
inline const host::XmlName Driver("driver");
inline const host::XmlName Type("type");
inline const host::XmlName Id("id");

inline const host::XmlName ChildDevices("childDevices");
inline const host::XmlName ChildDevice("childDevice");
inline const host::XmlName Revision("revision");

inline const host::XmlName DeviceGroups("deviceGroups");
inline const host::XmlName Groups("groups");
inline const host::XmlName Group("group");
inline const host::XmlName Devices("devices");
inline const host::XmlName Device("device");

}  // namespace lamp::config
