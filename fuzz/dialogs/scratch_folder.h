#pragma once

#include <filesystem>

namespace fuzz {

/// A folder of this process on the real disk, for lock files; removed when the program ends.
const std::filesystem::path& scratchFolder();

}  // namespace fuzz
