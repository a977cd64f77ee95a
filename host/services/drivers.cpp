#include "host/services/drivers.h"

#include <algorithm>

namespace {

std::vector<host::DriverRegistration>& registrations() {
  static std::vector<host::DriverRegistration> all;
  return all;
}

host::DriverRegistration* findClass(const host::DriverClass& deviceClass) {
  for (host::DriverRegistration& entry : registrations())
    if (entry.deviceClass == &deviceClass) return &entry;
  return nullptr;
}

host::DriverRegistry* registry = nullptr;

}  // namespace

XCDriver::~XCDriver() = default;

XCDriver* XCDriver::LockDriver(std::u16string_view deviceId) {
  return registry == nullptr ? nullptr : registry->find(deviceId);
}

const host::DriverClass& XCDriverDeviceZelLampManager::GetThisClass() {
  static const host::DriverClass thisClass{"XCDriverDeviceZelLampManager", u"ZELLAMPMANAGER"};
  return thisClass;
}

void lampHostInterface2() {}

bool XCDriverServices::AddChecked(const host::DriverClass& deviceClass, Configure configure,
                                  List listA, List listB) {
  if (findClass(deviceClass) != nullptr) return false;
  registrations().push_back({&deviceClass, configure, listA, listB, nullptr});
  return true;
}

bool XCDriverServices::AddCreateChildOptionsDlg(const host::DriverClass& deviceClass,
                                                CreateChildOptionsDlg create) {
  host::DriverRegistration* entry = findClass(deviceClass);
  if (entry == nullptr || entry->createChildOptions != nullptr) return false;
  entry->createChildOptions = create;
  return true;
}

namespace host {

DriverRegistry::~DriverRegistry() = default;

const DriverRegistration* findRegistration(std::u16string_view type) {
  for (const DriverRegistration& entry : registrations())
    if (entry.deviceClass->type == type) return &entry;
  return nullptr;
}

void removeRegistration(const DriverClass& deviceClass) {
  std::erase_if(registrations(),
                [&](const DriverRegistration& entry) { return entry.deviceClass == &deviceClass; });
}

void removeRegistration(const DriverClass& deviceClass, XCDriverServices::Configure configure) {
  const DriverRegistration* entry = findClass(deviceClass);
  if (entry != nullptr && entry->configure == configure) removeRegistration(deviceClass);
}

void setDriverRegistry(DriverRegistry* replacement) {
  registry = replacement;
}

}  // namespace host
