#pragma once

#include <optional>
#include <string_view>

#include "host/services/services.h"

namespace workbench {

/// The computer's local time, or a fixed one.
class SystemClock : public host::Clock {
 public:
  XCDateTime now() const override;
  /// Stops the clock at a moment.
  void fix(const XCDateTime& moment) { fixed_ = moment; }
  /// Reads "2025-03-15T10:00:00"; none for a text of another form or a date that does not exist.
  static std::optional<XCDateTime> parse(std::string_view text);

 private:
  std::optional<XCDateTime> fixed_;
};

/// Ids from the system's source of random numbers.
class RandomIds : public host::IdSource {
 public:
  std::array<std::uint8_t, 16> next() override;
};

/// Whether connections are verified when a device is saved.
class VerificationSettings : public host::EditorSettings {
 public:
  bool verifyConnection(bool existingDevice) const override {
    return existingDevice ? existing : created;
  }
  bool created = true;   ///< for a new device
  bool existing = true;  ///< for a device that is in the configuration
};

}  // namespace workbench
