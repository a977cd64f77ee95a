#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/services/drivers.h"
#include "host/xml/xml_holder.h"

namespace workbench {

/// The registry of drivers over the devices and child devices of the main configuration, found by
/// the id of their element. A driver that was handed out lives as long as the catalogue; a device
/// whose data changed since gets a new one.
class DeviceCatalogue : public host::DriverRegistry, private host::XmlHolder {
 public:
  /// The driver of a device: type = the element's `driver`, identifier = its `id`, name and
  /// description likewise. Of a child device the identifier is its `name`. Null for an id that no
  /// element has. Of two elements with one id the first counts, and a device before a child device.
  XCDriver* find(std::u16string_view deviceId) override;

  /// Says that devices were added, removed or given other ids.
  void invalidate() { built_ = false; }

  /// The devices of the configuration, in their order.
  static std::vector<XmlDocument::XmlNode*> devices();
  /// The first device with a name; null when there is none.
  static XmlDocument::XmlNode* deviceNamed(std::u16string_view name);

 private:
  struct Place {
    const XmlDocument::XmlNode* element;
    bool isChild;
  };
  void build();
  void add(const XmlDocument::XmlNode& element, bool isChild);

  void tellHeld(const Note& note) const override;

  bool built_ = false;
  std::unordered_map<std::u16string, Place> places_;
  std::unordered_map<std::u16string, XCDriver*> current_;
  std::vector<std::unique_ptr<XCDriver>> drivers_;
};

}  // namespace workbench
