#include "host/services/drivers.h"
#include "workbench/plugin_loader.h"

// The functions of the real loader, linked in its place: the plug-in stands in this program.

extern "C" bool InitializeUsrDriver_ZelLampManager();

namespace workbench {

bool Plugin::load(const std::filesystem::path&, std::string& cause) {
  unload();
  if (!InitializeUsrDriver_ZelLampManager()) {
    cause = "the plug-in refused to start";
    return false;
  }
  handle_ = this;
  return true;
}

void Plugin::unload() {
  if (handle_ == nullptr) return;
  host::removeRegistration(XCDriverDeviceZelLampManager::GetThisClass());
  handle_ = nullptr;
}

}  // namespace workbench
