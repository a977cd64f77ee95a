#pragma once

#include <string_view>

#include "host/dialogs/wnd.h"
#include "host/services/drivers.h"
#include "host/xml/xml_document.h"
#include "workbench/action_result.h"
#include "workbench/device_catalogue.h"

namespace workbench {

enum class ListCallback { A, B };

/// What an engineer does with the devices of the configuration. Dialogs run modally in the front
/// end that is installed; after each the configuration is saved when it differs from what is on
/// disk, and a failure to save is shown in a message.
class DeviceActions {
 public:
  DeviceActions(ConfigurationStore& store, DeviceCatalogue& catalogue)
      : store_(store), catalogue_(catalogue) {}

  /// The device definition over a new element with id, driver and type; the element joins the
  /// configuration when the dialog ends with OK.
  ActionResult newDevice(CWnd* parent);
  /// The group of a device that is given another name follows it.
  ActionResult modifyDevice(CWnd* parent, XmlDocument::XmlNode& device);
  /// Removes the device and the group of its name. Windows that show it stay usable.
  ActionResult removeDevice(CWnd* parent, XmlDocument::XmlNode& device);
  /// Runs the configure callback of the device's driver.
  ActionResult configure(CWnd* parent, XmlDocument::XmlNode& device);
  /// Calls a list callback; @p names goes in and out, @p result is what the callback answered.
  ActionResult list(CWnd* parent, XmlDocument::XmlNode& device, ListCallback which,
                    const XCListFlags& flags, XCNameList& names, bool& result);
  ActionResult updateNodes(CWnd* parent, XmlDocument::XmlNode& device);

  /// What stands against newDevice, modifyDevice or updateNodes: a plug-in without the dialog, a
  /// device of another driver, a configuration that can't be written. Done when nothing does.
  ActionResult canDefine(const XmlDocument::XmlNode* device) const;

 private:
  void finish(CWnd* parent);
  ActionResult driverOf(const XmlDocument::XmlNode& device, XCDriver*& driver,
                        const host::DriverRegistration*& registration) const;

  ConfigurationStore& store_;
  DeviceCatalogue& catalogue_;
};

}  // namespace workbench
