#include "controller/storage/disk.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace lamp::controller {
namespace fs = std::filesystem;

namespace {

constexpr mode_t kOwnerOnly = S_IRUSR | S_IWUSR;

std::string reason(const char* what, const fs::path& path, int error = errno) {
  return std::string(what) + " " + path.string() + ": " + std::strerror(error);
}

// Owns a descriptor.
class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (number_ >= 0) ::close(number_);
  }

  bool valid() const { return number_ >= 0; }
  int number() const { return number_; }

 private:
  const int number_;
};

class MachineFile final : public DiskFile {
 public:
  MachineFile(int descriptor, fs::path path) : descriptor_(descriptor), path_(std::move(path)) {}

  std::string append(std::string_view bytes) override {
    while (!bytes.empty()) {
      const ssize_t written = ::write(descriptor_.number(), bytes.data(), bytes.size());
      if (written < 0 && errno == EINTR) continue;
      if (written <= 0) return reason("can't write", path_);
      bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return "";
  }

  std::string flush() override {
    return ::fdatasync(descriptor_.number()) == 0 ? "" : reason("can't write", path_);
  }

  std::string cut(std::uint64_t size) override {
    return ::ftruncate(descriptor_.number(), static_cast<off_t>(size)) == 0
               ? ""
               : reason("can't cut", path_);
  }

 private:
  const Descriptor descriptor_;
  const fs::path path_;
};

class MachineClaim final : public DiskClaim {
 public:
  explicit MachineClaim(int descriptor) : descriptor_(descriptor) {}

 private:
  const Descriptor descriptor_;  // the lock goes with it, also when the program is killed
};

class MachineDisk final : public Disk {
 public:
  std::unique_ptr<DiskFile> create(const fs::path& path, std::string& fault) override {
    return opened(
        ::open(path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_EXCL | O_CLOEXEC, kOwnerOnly),
        "can't make", path, fault);
  }

  std::unique_ptr<DiskFile> open(const fs::path& path, std::string& fault) override {
    return opened(::open(path.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC), "can't open", path, fault);
  }

  std::string read(const fs::path& path, std::string& bytes) override {
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file.valid()) return reason("can't open", path);
    struct stat status {};
    if (::fstat(file.number(), &status) != 0) return reason("can't read", path);
    bytes.clear();
    bytes.resize(static_cast<std::size_t>(std::max<off_t>(status.st_size, 0)));
    std::size_t got = 0;
    // One byte more than there should be: a file may have grown, and some tell no size.
    for (;;) {
      if (got == bytes.size()) bytes.resize(got + std::max<std::size_t>(got / 4, 4096));
      const ssize_t count = ::read(file.number(), bytes.data() + got, bytes.size() - got);
      if (count < 0 && errno == EINTR) continue;
      if (count < 0) return reason("can't read", path);
      if (count == 0) break;
      got += static_cast<std::size_t>(count);
    }
    bytes.resize(got);
    return "";
  }

  std::string rename(const fs::path& from, const fs::path& to) override {
    return ::rename(from.c_str(), to.c_str()) == 0 ? "" : reason("can't replace", to);
  }

  std::string remove(const fs::path& path) override {
    return ::unlink(path.c_str()) == 0 || errno == ENOENT ? "" : reason("can't remove", path);
  }

  std::string makeFolder(const fs::path& folder) override {
    std::error_code error;
    if (!fs::create_directories(folder, error)) {
      return error ? reason("can't make", folder, error.value()) : "";
    }
    return flushFolder(folderOf(folder));
  }

  std::string flushFolder(const fs::path& folder) override {
    const Descriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!opened.valid()) return reason("can't open", folder);
    // Some file systems know no flushing of folders; on those there is nothing to wait for.
    if (::fsync(opened.number()) == 0 || errno == EINVAL || errno == ENOTSUP) return "";
    return reason("can't write", folder);
  }

  std::string list(const fs::path& folder, std::vector<std::string>& names) override {
    names.clear();
    std::error_code error;
    for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error)) {
      std::error_code ignored;
      if (at->is_regular_file(ignored)) names.push_back(at->path().filename().string());
    }
    std::sort(names.begin(), names.end());
    if (!error || error == std::errc::no_such_file_or_directory) return "";
    return reason("can't read", folder, error.value());
  }

  std::unique_ptr<DiskClaim> claim(const fs::path& path, std::string& fault) override {
    const int descriptor = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, kOwnerOnly);
    if (descriptor < 0) {
      fault = reason("can't make", path);
      return nullptr;
    }
    auto claim = std::make_unique<MachineClaim>(descriptor);
    if (::flock(descriptor, LOCK_EX | LOCK_NB) == 0) return claim;
    fault = errno == EWOULDBLOCK ? "another program works with it (" + path.string() + ")"
                                 : reason("can't lock", path);
    return nullptr;
  }

 private:
  static std::unique_ptr<DiskFile> opened(int descriptor, const char* what, const fs::path& path,
                                          std::string& fault) {
    if (descriptor >= 0) return std::make_unique<MachineFile>(descriptor, path);
    fault = reason(what, path);
    return nullptr;
  }
};

}  // namespace

Disk& machineDisk() {
  static MachineDisk disk;
  return disk;
}

fs::path folderOf(const fs::path& file) {
  return file.has_parent_path() ? file.parent_path() : fs::path(".");
}

std::string writeFileSafely(Disk& disk, const fs::path& path, const fs::path& beside,
                            std::string_view bytes) {
  std::string fault = disk.remove(beside);
  if (!fault.empty()) return fault;
  {
    const std::unique_ptr<DiskFile> file = disk.create(beside, fault);
    if (!file) return fault;
    fault = file->append(bytes);
    if (fault.empty()) fault = file->flush();
  }
  if (fault.empty()) fault = disk.rename(beside, path);
  if (!fault.empty()) {
    disk.remove(beside);
    return fault;
  }
  return disk.flushFolder(folderOf(path));
}

}  // namespace lamp::controller
