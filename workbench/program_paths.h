#pragma once

#include <filesystem>

namespace workbench {

/// Where a program finds what belongs to it, from its own place: programs stand in bin/, the
/// plug-in in lib/, texts and images in share/ beside it.
struct ProgramPaths {
  std::filesystem::path texts;
  std::filesystem::path images;
  std::filesystem::path plugin;

  /// The paths of the running program.
  static ProgramPaths ofThisProgram();
  static ProgramPaths ofFolder(const std::filesystem::path& binaries);
};

}  // namespace workbench
