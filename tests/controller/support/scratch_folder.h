#pragma once

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace lamp::controller::test {

/// A new folder that goes away, with everything in it, at the end of the scope.
class ScratchFolder {
 public:
  ScratchFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "lamp-controller.XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) std::abort();
    path_ = name;
  }
  ~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

}  // namespace lamp::controller::test
