#pragma once

#include <map>
#include <memory>
#include <string>

#include "host/services/drivers.h"

namespace support {

/// The host's registry with the drivers that a test puts into it.
class LampRegistry : public host::DriverRegistry {
 public:
  LampRegistry() { host::setDriverRegistry(this); }
  LampRegistry(const LampRegistry&) = delete;
  LampRegistry& operator=(const LampRegistry&) = delete;
  ~LampRegistry() override { host::setDriverRegistry(nullptr); }

  /// A device with an id, of a type, with what the controller calls it.
  void add(const std::u16string& id, const char16_t* type, const std::u16string& identifier) {
    drivers_[id] = std::make_unique<XCDriver>(XCBasicString(type), XCBasicString(identifier),
                                              XCBasicString(identifier), XCBasicString());
  }
  XCDriver* find(std::u16string_view deviceId) override {
    const auto found = drivers_.find(std::u16string(deviceId));
    return found == drivers_.end() ? nullptr : found->second.get();
  }

 private:
  std::map<std::u16string, std::unique_ptr<XCDriver>> drivers_;
};

}  // namespace support
