#pragma once

#include "host/services/drivers.h"
#include "host/services/setup.h"
#include "host/xml/xml_document.h"

namespace support {

/// A configuration with one lamp manager, "Main street" with the id "{D1}", and its driver. The
/// main configuration is emptied again at the end.
class LampManager {
 public:
  LampManager() {
    XCMainCfg::Get().Document().Parse(R"(<configuration><commSystem><device>
      <id>{D1}</id><driver>ZELLAMPMANAGER</driver><type>ZELLAMPMANAGER</type>
      <name>Main street</name><description>From the bridge to the park</description>
      <identifier>LM-0001</identifier><address>192.168.1.20</address><socket>8080</socket>
      <ftpAddress>192.168.1.2</ftpAddress><ftpPort>21</ftpPort><ftpUser>lamps</ftpUser>
      <ftpPassword>secret</ftpPassword></device></commSystem>
      <deviceGroups/><viewSetups/></configuration>)");
  }
  LampManager(const LampManager&) = delete;
  LampManager& operator=(const LampManager&) = delete;
  ~LampManager() { XCMainCfg::Get().Document().Clear(); }

  XmlDocument::XmlNode* element() { return XCMainCfg::Get().DeviceNode(u"{D1}"); }

  XCDriverDeviceZelLampManager driver{XCBasicString(u"ZELLAMPMANAGER"), XCBasicString(u"{D1}"),
                                      XCBasicString(u"Main street"),
                                      XCBasicString(u"From the bridge to the park")};
};

}  // namespace support
