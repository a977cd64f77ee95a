#include "host/services/files.h"

#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <new>
#include <system_error>
#include <utility>

namespace host {
namespace {

namespace fs = std::filesystem;

constexpr mode_t OfOthers = S_IRWXG | S_IRWXO;
constexpr mode_t PrivateFile = S_IRUSR | S_IWUSR;
constexpr std::size_t Block = 64 * 1024;
// A kept version that can't be a second name of the old file is a copy of it, up to this size.
constexpr off_t LargestCopy = off_t(256) * 1024 * 1024;

bool failed(std::string& cause, int error) {
  cause = std::generic_category().message(error);
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

bool flush(int descriptor, std::string& cause) {
  return uninterrupted([&] { return ::fsync(descriptor); }) == 0 || failed(cause, errno);
}

FileSystem* installed = nullptr;

// FNV-1a, 64 bits: http://www.isthe.com/chongo/tech/comp/fnv/
std::uint64_t checksum(std::string_view text) {
  std::uint64_t sum = 0xCBF29CE484222325U;
  for (const char c : text) sum = (sum ^ static_cast<unsigned char>(c)) * 0x100000001B3U;
  return sum;
}

// As much of a text as @p bytes hold, without half a character of UTF-8 at the end.
std::string_view cutAt(std::string_view text, std::size_t bytes) {
  if (text.size() <= bytes) return text;
  while (bytes > 0 && (static_cast<unsigned char>(text[bytes]) & 0xC0) == 0x80) --bytes;
  return text.substr(0, bytes);
}

// A name that no other save has at the moment, in this program or another one.
fs::path freshSibling(const fs::path& file) {
  static std::atomic<unsigned> count = 0;
  return sibling(file, ".new-" + std::to_string(::getpid()) + "-" + std::to_string(++count));
}

// Gives a file a second name, private from the first moment. False where the system has no second
// names, or where the file is known under one that others may rely on, or is somebody else's: such
// a file's mode is not to be changed.
bool linkPrivately(const fs::path& file, const fs::path& fresh) {
  if (::link(file.c_str(), fresh.c_str()) != 0) return false;
  struct stat linked {};
  const bool own = ::lstat(fresh.c_str(), &linked) == 0 && S_ISREG(linked.st_mode) &&
                   linked.st_nlink == 2 && linked.st_uid == ::geteuid() &&
                   ((linked.st_mode & OfOthers) == 0 || ::chmod(fresh.c_str(), PrivateFile) == 0);
  if (!own) ::unlink(fresh.c_str());
  return own;
}

bool copyPrivately(const fs::path& file, const fs::path& fresh, std::string& cause) {
  const Descriptor in = openFile(file, FileUse::read, NamedBy::program, cause);
  if (!in.good()) return false;
  struct stat found {};
  if (::fstat(in.number(), &found) != 0) return failed(cause, errno);
  if (found.st_size > LargestCopy) return failed(cause, EFBIG);
  const Descriptor out = openFile(fresh, FileUse::create, NamedBy::program, cause);
  if (!out.good()) return false;
  char block[Block];
  for (;;) {
    const ssize_t count = uninterrupted([&] { return ::read(in.number(), block, sizeof block); });
    if (count < 0) return failed(cause, errno);
    if (count == 0) return flush(out.number(), cause);
    if (!writeAll(out.number(), {block, static_cast<std::size_t>(count)}, cause)) return false;
  }
}

}  // namespace

FileSystem::~FileSystem() = default;

bool FileSystem::read(const fs::path& file, NamedBy named, std::size_t limit, std::string& content,
                      std::string& cause) {
  const Descriptor in = openFile(file, FileUse::read, named, cause);
  if (!in.good()) return false;
  struct stat found {};
  if (::fstat(in.number(), &found) != 0) return failed(cause, errno);
  if (found.st_size > 0 && static_cast<std::size_t>(found.st_size) > limit)
    return failed(cause, EFBIG);
  content.clear();
  content.reserve(static_cast<std::size_t>(found.st_size));
  char block[Block];
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
  const Descriptor out = openFile(file, FileUse::create, NamedBy::program, cause);
  return out.good() && writeAll(out.number(), content, cause) && flush(out.number(), cause);
}

bool FileSystem::keep(const fs::path& file, const fs::path& copy, std::string& cause) {
  if (!mayReplace(copy, cause)) {
    cause = copy.filename().string() + ": " + cause;
    return false;
  }
  const fs::path fresh = freshSibling(copy);
  ::unlink(fresh.c_str());
  const bool kept = (linkPrivately(file, fresh) || copyPrivately(file, fresh, cause)) &&
                    (::rename(fresh.c_str(), copy.c_str()) == 0 || failed(cause, errno));
  ::unlink(fresh.c_str());  // also left behind where both names were one file already
  return kept;
}

bool FileSystem::replace(const fs::path& from, const fs::path& to, std::string& cause) {
  // Nothing may fail for want of memory once the file has its name.
  const fs::path folder = to.has_parent_path() ? to.parent_path() : fs::path(".");
  if (!mayReplace(to, cause)) return false;
  if (::rename(from.c_str(), to.c_str()) != 0) return failed(cause, errno);
  flushFolder(folder);  // the rename itself has happened
  return true;
}

bool FileSystem::remove(const fs::path& file, std::string& cause) {
  return ::unlink(file.c_str()) == 0 || failed(cause, errno);
}

bool FileSystem::makeFolder(const fs::path& folder, std::string& cause) {
  return host::makeFolder(folder, cause);
}

bool FileSystem::exists(const fs::path& file) {
  struct stat found {};
  return ::lstat(file.c_str(), &found) == 0 || (errno != ENOENT && errno != ENOTDIR);
}

bool FileSystem::followLinks(const fs::path& name, fs::path& target, std::string& cause) {
  return host::followLinks(name, target, cause);
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

bool readFile(const fs::path& file, std::size_t limit, std::string& content, std::string& cause,
              NamedBy named) {
  return fileSystem().read(file, named, limit, content, cause);
}

fs::path sibling(const fs::path& file, std::string_view ending) {
  const std::string name = file.filename().string();
  if (name.size() + ending.size() <= NAME_MAX)
    return file.parent_path() / (name + std::string(ending));
  char mark[24];
  const int size =
      std::snprintf(mark, sizeof mark, "~%016llx", static_cast<unsigned long long>(checksum(name)));
  const std::size_t room = NAME_MAX - ending.size() - static_cast<std::size_t>(size);
  return file.parent_path() / (std::string(cutAt(name, room)) + mark + std::string(ending));
}

fs::path keptCopy(const fs::path& file) {
  return sibling(file, ".previous");
}

bool saveWhole(const fs::path& file, std::string_view content, std::string& cause, NamedBy named) {
  return saveWholeKeeping(file, content, keptCopy(file), cause, named);
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

// @p copy null: the version before is not kept.
bool save(const fs::path& file, std::string_view content, const fs::path* copy,
          std::string& cause) {
  Leftover fresh(freshSibling(file));
  FileSystem& files = fileSystem();
  if (!files.writeNew(fresh.file(), content, cause)) return false;
  if (copy != nullptr && files.exists(file) && !files.keep(file, *copy, cause)) return false;
  if (!files.replace(fresh.file(), file, cause)) return false;
  fresh.inPlace();
  return true;
}

}  // namespace

bool saveWholeKeeping(const fs::path& file, std::string_view content, const fs::path& copy,
                      std::string& cause, NamedBy named) {
  fs::path target = file;
  if (named == NamedBy::person && !fileSystem().followLinks(file, target, cause)) return false;
  return save(target, content, &copy, cause);
}

bool replaceWhole(const fs::path& file, std::string_view content, std::string& cause) {
  return save(file, content, nullptr, cause);
}

}  // namespace host
