#include "fuzz/dialogs/scratch_folder.h"

#include <cstdlib>
#include <string>

#include "fuzz/fault.h"

namespace fuzz {
namespace {

class Scratch {
 public:
  Scratch() {
    std::string name = (std::filesystem::temp_directory_path() / "lamp-fuzz-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) fault("can't make a folder for temporary files");
    path = name;
  }
  ~Scratch() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
  }
  std::filesystem::path path;
};

}  // namespace

const std::filesystem::path& scratchFolder() {
  static const Scratch scratch;
  return scratch.path;
}

}  // namespace fuzz
