#include "host/services/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstring>
#include <new>
#include <system_error>
#include <utility>

#include "host/services/descriptor.h"

namespace host {
namespace {

namespace fs = std::filesystem;

std::string reason(int error) {
  return std::generic_category().message(error);
}

bool failed(std::string& cause, int error) {
  cause = reason(error);
  return false;
}

bool writeAll(int descriptor, std::string_view content, std::string& cause) {
  while (!content.empty()) {
    const ssize_t written =
        uninterrupted([&] { return ::write(descriptor, content.data(), content.size()); });
    if (written < 0) return failed(cause, errno);
    content.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

FileSystem* installed = nullptr;

fs::path sibling(const fs::path& file, std::string_view ending) {
  fs::path name = file.filename();
  name += ending;
  return file.parent_path() / name;
}

// A name that no other save has at the moment, in this program or another one.
fs::path freshSibling(const fs::path& file) {
  static std::atomic<unsigned> count = 0;
  return sibling(file, ".new-" + std::to_string(::getpid()) + "-" + std::to_string(++count));
}

}  // namespace

FileSystem::~FileSystem() = default;

bool FileSystem::read(const fs::path& file, std::size_t limit, std::string& content,
                      std::string& cause) {
  const Descriptor in(uninterrupted([&] { return ::open(file.c_str(), O_RDONLY | O_CLOEXEC); }));
  if (!in.good()) return failed(cause, errno);
  struct stat status {};
  if (::fstat(in.number(), &status) != 0) return failed(cause, errno);
  if (S_ISDIR(status.st_mode)) return failed(cause, EISDIR);
  content.clear();
  if (status.st_size > 0 && static_cast<std::size_t>(status.st_size) <= limit)
    content.reserve(static_cast<std::size_t>(status.st_size));
  char block[64 * 1024];
  for (;;) {
    const ssize_t count = uninterrupted([&] { return ::read(in.number(), block, sizeof block); });
    if (count < 0) return failed(cause, errno);
    if (count == 0) return true;
    content.append(block, static_cast<std::size_t>(count));
    if (content.size() > limit) return failed(cause, EFBIG);
  }
}

bool FileSystem::writeNew(const fs::path& file, std::string_view content, std::string& cause) {
  ::unlink(file.c_str());
  const Descriptor out(uninterrupted(
      [&] { return ::open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600); }));
  if (!out.good()) return failed(cause, errno);
  if (!writeAll(out.number(), content, cause)) return false;
  return uninterrupted([&] { return ::fsync(out.number()); }) == 0 || failed(cause, errno);
}

bool FileSystem::keep(const fs::path& file, const fs::path& copy, std::string& cause) {
  const fs::path fresh = freshSibling(copy);
  ::unlink(fresh.c_str());
  if (::link(file.c_str(), fresh.c_str()) != 0) {
    // Some file systems have no hard links.
    std::error_code error;
    if (!fs::copy_file(file, fresh, fs::copy_options::overwrite_existing, error)) {
      ::unlink(fresh.c_str());
      return failed(cause, error.value());
    }
  }
  const bool kept = ::rename(fresh.c_str(), copy.c_str()) == 0 || failed(cause, errno);
  ::unlink(fresh.c_str());  // also left behind where both names were one file already
  return kept;
}

bool FileSystem::replace(const fs::path& from, const fs::path& to, std::string& cause) {
  // Nothing may fail for want of memory once the file has its name.
  const fs::path folder = to.has_parent_path() ? to.parent_path() : fs::path(".");
  if (::rename(from.c_str(), to.c_str()) != 0) return failed(cause, errno);
  const Descriptor handle(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (handle.good()) ::fsync(handle.number());  // the rename itself has happened
  return true;
}

bool FileSystem::remove(const fs::path& file, std::string& cause) {
  return ::unlink(file.c_str()) == 0 || failed(cause, errno);
}

bool FileSystem::makeFolder(const fs::path& folder, std::string& cause) {
  std::error_code error;
  fs::create_directories(folder, error);
  return !error || failed(cause, error.value());
}

bool FileSystem::exists(const fs::path& file) {
  std::error_code error;
  return fs::exists(file, error);
}

std::vector<fs::path> FileSystem::list(const fs::path& folder, std::string_view ending) {
  std::vector<fs::path> files;
  std::error_code error;
  for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error)) {
    const std::string name = at->path().filename().string();
    std::error_code ignored;
    if (name.ends_with(ending) && !at->is_directory(ignored)) files.push_back(at->path());
  }
  return files;
}

FileSystem& fileSystem() {
  static FileSystem real;
  return installed != nullptr ? *installed : real;
}

void setFileSystem(FileSystem* replacement) {
  installed = replacement;
}

bool readFile(const fs::path& file, std::size_t limit, std::string& content, std::string& cause) {
  return fileSystem().read(file, limit, content, cause);
}

fs::path keptCopy(const fs::path& file) {
  return sibling(file, ".previous");
}

bool saveWhole(const fs::path& file, std::string_view content, std::string& cause) {
  return saveWholeKeeping(file, content, keptCopy(file), cause);
}

namespace {

// A file that is in nobody's way when it did not get to its place.
class Leftover {
 public:
  explicit Leftover(fs::path file) : file_(std::move(file)) {}
  Leftover(const Leftover&) = delete;
  Leftover& operator=(const Leftover&) = delete;
  ~Leftover() {
    if (!isLeft_) return;
    try {
      std::string ignored;
      fileSystem().remove(file_, ignored);
    } catch (const std::bad_alloc&) {
      // For the text of a reason that nobody reads.
    }
  }
  const fs::path& file() const { return file_; }
  void inPlace() { isLeft_ = false; }

 private:
  const fs::path file_;
  bool isLeft_ = true;
};

}  // namespace

bool saveWholeKeeping(const fs::path& file, std::string_view content, const fs::path& copy,
                      std::string& cause) {
  Leftover fresh(freshSibling(file));
  FileSystem& files = fileSystem();
  if (!files.writeNew(fresh.file(), content, cause)) return false;
  if (files.exists(file) && !files.keep(file, copy, cause)) return false;
  if (!files.replace(fresh.file(), file, cause)) return false;
  fresh.inPlace();
  return true;
}

}  // namespace host
