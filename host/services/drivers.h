#pragma once

#include <bitset>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/export.h"
#include "host/text/basic_string.h"

class CWnd;
class XCDlgOptions;

namespace host {

/// The run-time class of a driver: its C++ class name and the device type that it serves.
struct DriverClass {
  std::string name;
  XCBasicString type;
};

}  // namespace host

/// A driver as dialogs see it: the running side of one device of the configuration.
class HOST_API XCDriver {
 public:
  XCDriver(XCBasicString type, XCBasicString identifier, XCBasicString name,
           XCBasicString description)
      : type_(std::move(type)),
        identifier_(std::move(identifier)),
        name_(std::move(name)),
        description_(std::move(description)) {}
  XCDriver(const XCDriver&) = delete;
  XCDriver& operator=(const XCDriver&) = delete;
  virtual ~XCDriver();

  /// The device type, "ZELLAMPMANAGER" or "ZELLAMP".
  const XCBasicString& Type() const { return type_; }
  /// What the configuration refers to the device by; see the registry for what it is of which type.
  const XCBasicString& Identifier() const { return identifier_; }
  const XCBasicString& Name() const { return name_; }
  const XCBasicString& Description() const { return description_; }

  /// The driver of the device with an id in the configuration, none when there is none. The driver
  /// stays until the program ends, also when its device is removed.
  static XCDriver* LockDriver(std::u16string_view deviceId);

 private:
  XCBasicString type_;
  XCBasicString identifier_;
  XCBasicString name_;
  XCBasicString description_;
};

/// The driver of a device of its own, as opposed to a child device.
class HOST_API XCDriverDevice : public XCDriver {
 public:
  using XCDriver::XCDriver;
};

/// The driver of a lamp manager.
class HOST_API XCDriverDeviceZelLampManager : public XCDriverDevice {
 public:
  using XCDriverDevice::XCDriverDevice;
  static const host::DriverClass& GetThisClass();
};

using XCNameList = std::vector<XCBasicString>;
using XCListFlags = std::bitset<34>;

/// The version of what a plug-in sees of the host, as a function: a plug-in refers to the one that
/// it was built with, so that one built for another version is refused when it is loaded. A change
/// that plug-ins must be rebuilt for renames it; the name then ends with the next number.
extern "C" HOST_API void lampHostInterface2();

/// Where plug-ins register what they offer for a device class.
class HOST_API XCDriverServices {
 public:
  using Configure = bool (*)(CWnd* parent, XCDriver* driver);
  using List = bool (*)(CWnd* parent, XCDriver* driver, XCNameList& names, const XCListFlags& flags,
                        int number, XCBasicString text);
  using CreateChildOptionsDlg = XCDlgOptions* (*)(CWnd* parent, XCDriver* driver);

  /// Registers a device class with its callbacks. False when the class is registered already.
  static bool Add(const host::DriverClass& deviceClass, Configure configure, List listA,
                  List listB) {
    lampHostInterface2();
    return AddChecked(deviceClass, configure, listA, listB);
  }
  /// Registers the factory of the embedded options panel. False when the class is not registered or
  /// has a factory.
  static bool AddCreateChildOptionsDlg(const host::DriverClass& deviceClass,
                                       CreateChildOptionsDlg create);

 private:
  static bool AddChecked(const host::DriverClass& deviceClass, Configure configure, List listA,
                         List listB);
};

namespace host {

/// What is registered for a device class.
struct DriverRegistration {
  const DriverClass* deviceClass = nullptr;
  XCDriverServices::Configure configure = nullptr;
  XCDriverServices::List listA = nullptr;
  XCDriverServices::List listB = nullptr;
  XCDriverServices::CreateChildOptionsDlg createChildOptions = nullptr;
};

/// The registration of the class that serves a device type; null when there is none.
HOST_API const DriverRegistration* findRegistration(std::u16string_view type);
/// Forgets a class.
HOST_API void removeRegistration(const DriverClass& deviceClass);
/// Forgets a class where it is @p configure that serves it: a plug-in takes back what it
/// registered, and nothing else, when it is unloaded.
HOST_API void removeRegistration(const DriverClass& deviceClass,
                                 XCDriverServices::Configure configure);

/// The registry that looks drivers up by the id of their device. The program that holds the
/// configuration supplies it.
class HOST_API DriverRegistry {
 public:
  virtual ~DriverRegistry();
  /// Null when no device has the id.
  virtual XCDriver* find(std::u16string_view deviceId) = 0;
};
HOST_API void setDriverRegistry(DriverRegistry* registry);

}  // namespace host
