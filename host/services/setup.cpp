#include "host/services/setup.h"

#include <array>

#include "host/text/utf.h"

namespace {

struct CatalogueEntry {
  std::u16string_view type;
  std::u16string_view displayName;
  bool network;  // reaches its devices by address and port
};

// The display name of the lamp manager is the same in every language: the folder of the calendars
// is named after it.
constexpr std::array<CatalogueEntry, 16> Catalogue = {{
    {u"ZELLAMPMANAGER", u"Lamp manager", false},
    {u"ZELLAMP", u"Lamp", false},
    {u"MODBUSTCP", u"Modbus/TCP", true},
    {u"MODBUSRTUTCP", u"Modbus RTU over TCP", true},
    {u"TCP", u"TCP", true},
    {u"UDP", u"UDP", true},
    {u"TCPSERIAL", u"TCP to serial bridge", true},
    {u"UDPSERIAL", u"UDP to serial bridge", true},
    {u"TCPGATEWAY", u"TCP gateway", true},
    {u"UDPGATEWAY", u"UDP gateway", true},
    {u"ZELGATEWAY", u"Metering gateway", true},
    {u"ZELANALYZER", u"Network analyser", true},
    {u"ZELCONCENTRATOR", u"Pulse concentrator", true},
    {u"ZELDATALOGGER", u"Data logger", true},
    {u"ZELMETER", u"Energy meter", true},
    {u"ZELPOWERMANAGER", u"Power manager", true},
}};

const CatalogueEntry* findEntry(std::u16string_view type) {
  for (const CatalogueEntry& entry : Catalogue)
    if (entry.type == type) return &entry;
  return nullptr;
}

}  // namespace

XCVarnisSetup& XCVarnisSetup::Get() {
  static XCVarnisSetup setup;
  return setup;
}

XCBasicString XCVarnisSetup::ConfigurationPath() const {
  return XCBasicString((configuration_ / "").u16string());
}

XCBasicString XCVarnisSetup::getImageFilePath(std::u16string_view file) const {
  return XCBasicString((images_ / std::filesystem::path(std::u16string(file))).u16string());
}

XCBasicString XCVarnisSetup::DriverName(std::u16string_view type) const {
  const CatalogueEntry* entry = findEntry(type);
  return XCBasicString(entry ? entry->displayName : type);
}

std::string XCVarnisSetup::DriverImage(std::u16string_view type) const {
  if (type == u"ZELLAMPMANAGER") return "ZELLAMPMANAGER-20.png";
  return type == u"ZELLAMP" ? "ZELLAMP-20.png" : "DEVICE-20.png";
}

XCVarnisGuids& XCVarnisGuids::Get() {
  static XCVarnisGuids guids;
  return guids;
}

XCMainCfg& XCMainCfg::Get() {
  static XCMainCfg configuration;
  return configuration;
}

XmlDocument::XmlNode* XCMainCfg::DeviceNode(std::u16string_view deviceId) {
  return Root() == nullptr ? nullptr : Root()->Node("commSystem/device?id=%s?", deviceId);
}

XmlDocument::XmlNode* XCMainCfg::ViewSetup(std::u16string_view driverId) {
  return Root() == nullptr ? nullptr : Root()->Node("viewSetups/viewSetup?driverId=%s?", driverId);
}

void XCMainCfg::NotifyChanged() {
  if (listener_) listener_();
}

namespace host {

bool sharesAddressSpace(std::u16string_view driverType) {
  const CatalogueEntry* entry = findEntry(driverType);
  return entry != nullptr && entry->network;
}

}  // namespace host
