#pragma once

#include <filesystem>
#include <string>

namespace workbench {

/// The folder in which the programs keep what belongs to the person and not to a configuration:
/// $XDG_STATE_HOME/lamp-manager, or ~/.local/state/lamp-manager. Empty when neither is known.
std::filesystem::path stateFolderOfUser();

/// Makes a folder and what is missing above it, open to their owner alone. The folder itself
/// becomes so when it was there before, unless it is reached through a link. False with the
/// system's reason in @p cause.
bool makePrivateFolder(const std::filesystem::path& folder, std::string& cause);

/// The name under which this person works on this computer; the number where there is no name.
std::string nameOfUser();

}  // namespace workbench
