#include "workbench/state_folder.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <vector>

#include "host/services/open_file.h"

namespace workbench {
namespace {

// Paths of the environment count only when they are absolute, as the convention for them says.
std::filesystem::path absoluteFrom(const char* variable) {
  const char* value = std::getenv(variable);
  const std::filesystem::path path = value != nullptr ? value : "";
  return path.is_absolute() ? path : std::filesystem::path();
}

}  // namespace

std::filesystem::path stateFolderOfUser() {
  if (const auto state = absoluteFrom("XDG_STATE_HOME"); !state.empty())
    return state / "lamp-manager";
  const auto home = absoluteFrom("HOME");
  return home.empty() ? home : home / ".local" / "state" / "lamp-manager";
}

bool makePrivateFolder(const std::filesystem::path& folder, std::string& cause) {
  return host::makeFolder(folder, cause) && host::closeFolderToOthers(folder, cause);
}

std::string nameOfUser() {
  const uid_t user = ::geteuid();
  std::vector<char> space(4096);
  passwd entry{};
  passwd* found = nullptr;
  if (::getpwuid_r(user, &entry, space.data(), space.size(), &found) == 0 && found != nullptr)
    return found->pw_name;
  return std::to_string(user);
}

}  // namespace workbench
