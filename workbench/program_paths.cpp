#include "workbench/program_paths.h"

#include <system_error>

namespace workbench {

ProgramPaths ProgramPaths::ofFolder(const std::filesystem::path& binaries) {
  const std::filesystem::path root = binaries.parent_path();
  return {root / "share" / "texts", root / "share" / "images", root / "lib" / "zellampmanager.so"};
}

ProgramPaths ProgramPaths::ofThisProgram() {
  std::error_code error;
  return ofFolder(std::filesystem::read_symlink("/proc/self/exe", error).parent_path());
}

}  // namespace workbench
