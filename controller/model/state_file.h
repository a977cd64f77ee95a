#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace lamp::controller {

/// Writes `bytes` to a new file beside `path`, flushes it to the disk and renames it over `path`,
/// so that whoever reads finds the old or the new content, whole. Returns what went wrong, or an
/// empty text; the old file is untouched then.
std::string writeFileSafely(const std::filesystem::path& path, std::string_view bytes);

/// Reads a whole file into `bytes`. Returns what went wrong, or an empty text.
std::string readWholeFile(const std::filesystem::path& path, std::string& bytes);

}  // namespace lamp::controller
