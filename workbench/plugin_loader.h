#pragma once

#include <filesystem>
#include <string>

#include "host/services/drivers.h"

namespace workbench {

/// A loaded plug-in. Unloading takes its registrations away; none of its dialogs may be open then.
class Plugin {
 public:
  Plugin() = default;
  Plugin(const Plugin&) = delete;
  Plugin& operator=(const Plugin&) = delete;
  ~Plugin() { unload(); }

  /// Loads the library and calls its entry. False with a text in @p cause when the file can't be
  /// loaded, is no plug-in, or refuses.
  bool load(const std::filesystem::path& file, std::string& cause);
  void unload();
  bool isLoaded() const { return handle_ != nullptr; }

 private:
  void* handle_ = nullptr;
  XCDriverServices::Configure configure_ = nullptr;  // of the registration that its entry made
};

}  // namespace workbench
