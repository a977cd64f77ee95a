#include "workbench/state_folder.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <system_error>
#include <vector>

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
  std::error_code error;
  const std::filesystem::path above = folder.parent_path();
  if (!above.empty() && above != folder && !std::filesystem::exists(above, error) && !error &&
      !makePrivateFolder(above, cause))
    return false;
  if (!error && ::mkdir(folder.c_str(), S_IRWXU) != 0 && errno != EEXIST)
    error.assign(errno, std::generic_category());
  struct stat found {};
  if (!error && ::stat(folder.c_str(), &found) != 0) error.assign(errno, std::generic_category());
  if (!error && !S_ISDIR(found.st_mode)) error.assign(ENOTDIR, std::generic_category());
  if (!error && (found.st_mode & (S_IRWXG | S_IRWXO)) != 0 && ::chmod(folder.c_str(), S_IRWXU) != 0)
    error.assign(errno, std::generic_category());
  if (error) cause = error.message();
  return !error;
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
