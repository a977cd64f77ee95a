#pragma once

#include "host/services/services.h"

namespace support {

/// Settings that a test chooses: by default no connection is verified.
class SettingsFake : public host::EditorSettings {
 public:
  bool verifyConnection(bool existingDevice) const override {
    return existingDevice ? existing_ : new_;
  }
  void verifyNew(bool verify) { new_ = verify; }
  void verifyExisting(bool verify) { existing_ = verify; }

 private:
  bool new_ = false;
  bool existing_ = false;
};

}  // namespace support
