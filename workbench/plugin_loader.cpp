#include "workbench/plugin_loader.h"

#include <dlfcn.h>

#include <bit>
#include <system_error>

#include "host/services/drivers.h"
#include "host/services/files.h"
#include "workbench/library_extent.h"

namespace workbench {
namespace {

using Entry = bool (*)();
constexpr const char* EntryName = "InitializeUsrDriver_ZelLampManager";

std::string lastError() {
  const char* text = ::dlerror();
  return text != nullptr ? text : "unknown reason";
}

// The loader misses either the function that stands for the version, or the host's library under
// the name that another version had.
bool isOfAnotherHost(const std::string& error) {
  return error.find("undefined symbol: lampHostInterface") != std::string::npos ||
         error.find("liblamphost.so") != std::string::npos;
}

// The system's loader waits for a pipe's writer, and ends the program over a file that was cut off:
// both are found before it is called. A file that changes while it is in use is not met by this.
bool isLoadable(const std::filesystem::path& file, std::string& cause) {
  const host::Descriptor opened =
      host::openFile(file, host::FileUse::read, host::NamedBy::person, cause);
  return opened.good() && isWholeLibrary(opened.number(), cause);
}

}  // namespace

bool Plugin::load(const std::filesystem::path& file, std::string& cause) {
  const std::string shown = "the plug-in \"" + file.string() + "\"";
  std::error_code ignored;
  // Made absolute: a bare name would be looked for in the system's library folders.
  const std::filesystem::path full = std::filesystem::absolute(file, ignored);
  if (!host::fileSystem().exists(full)) {
    cause = shown + " is missing";
    return false;
  }
  if (std::string why; !isLoadable(full, why)) {
    cause = shown + " can't be loaded: " + why;
    return false;
  }
  unload();
  handle_ = ::dlopen(full.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (handle_ == nullptr) {
    const std::string error = lastError();
    cause = shown +
            (isOfAnotherHost(error) ? " was built for another version of this program; "
                                      "install the two together: "
                                    : " can't be loaded: ") +
            error;
    return false;
  }
  const auto entry = std::bit_cast<Entry>(::dlsym(handle_, EntryName));
  if (entry == nullptr) {
    cause = shown + " is no plug-in of this program: it has no " + std::string(EntryName);
    unload();
    return false;
  }
  if (!entry()) {
    cause = shown + " refused to start: its device class is registered already";
    unload();
    return false;
  }
  const auto* made = host::findRegistration(XCDriverDeviceZelLampManager::GetThisClass().type);
  configure_ = made == nullptr ? nullptr : made->configure;
  return true;
}

void Plugin::unload() {
  if (handle_ == nullptr) return;
  // A plug-in that does not take back what it registered would leave calls into nothing.
  if (configure_ != nullptr)
    host::removeRegistration(XCDriverDeviceZelLampManager::GetThisClass(), configure_);
  configure_ = nullptr;
  ::dlclose(handle_);
  handle_ = nullptr;
}

}  // namespace workbench
