#include "controller/model/state_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>

namespace lamp::controller {
namespace {

namespace fs = std::filesystem;

std::string reason(const char* what, const fs::path& path) {
  return std::string(what) + " " + path.string() + ": " + std::strerror(errno);
}

// Owns a descriptor and, until it is released, the file that it is writing.
class NewFile {
 public:
  explicit NewFile(const fs::path& beside) : name_(beside.string() + ".XXXXXX") {
    descriptor_ = ::mkostemp(name_.data(), O_CLOEXEC);
  }
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;
  ~NewFile() {
    if (descriptor_ >= 0) ::close(descriptor_);
    if (descriptor_ >= 0 && !renamed_) ::unlink(name_.c_str());
  }

  bool valid() const { return descriptor_ >= 0; }

  bool write(std::string_view bytes) {
    while (!bytes.empty()) {
      const ssize_t written = ::write(descriptor_, bytes.data(), bytes.size());
      if (written < 0 && errno == EINTR) continue;
      if (written <= 0) return false;
      bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return ::fsync(descriptor_) == 0;
  }

  bool renameTo(const fs::path& path) {
    renamed_ = ::rename(name_.c_str(), path.c_str()) == 0;
    return renamed_;
  }

 private:
  std::string name_;
  int descriptor_ = -1;
  bool renamed_ = false;
};

// The rename itself is on the disk only when the folder is.
void flushFolder(const fs::path& folder) {
  const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return;
  ::fsync(descriptor);
  ::close(descriptor);
}

}  // namespace

std::string writeFileSafely(const fs::path& path, std::string_view bytes) {
  NewFile file(path);
  if (!file.valid()) return reason("can't make a file beside", path);
  if (!file.write(bytes)) return reason("can't write beside", path);
  if (!file.renameTo(path)) return reason("can't replace", path);
  flushFolder(path.has_parent_path() ? path.parent_path() : fs::path("."));
  return "";
}

std::string readWholeFile(const fs::path& path, std::string& bytes) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return reason("can't open", path);
  bytes.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  return in.bad() ? reason("can't read", path) : "";
}

}  // namespace lamp::controller
