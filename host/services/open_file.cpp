#include "host/services/open_file.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <system_error>

namespace host {
namespace {

namespace fs = std::filesystem;

constexpr mode_t PrivateFile = S_IRUSR | S_IWUSR;
constexpr mode_t PrivateFolder = S_IRWXU;
constexpr mode_t OfOthers = S_IRWXG | S_IRWXO;
constexpr int MostLinks = 40;  // as many as the system follows itself

bool failed(std::string& cause, int error) {
  cause = std::generic_category().message(error);
  return false;
}

int flagsOf(FileUse use, NamedBy named) {
  // Nothing that is opened keeps the program waiting: neither a pipe that was put in the place of
  // the file meanwhile, nor a file that holds its readers up.
  const int always =
      O_CLOEXEC | O_NOCTTY | O_NONBLOCK | (named == NamedBy::program ? O_NOFOLLOW : 0);
  switch (use) {
    case FileUse::change:
      return always | O_RDWR | O_CREAT;
    case FileUse::append:
      return always | O_RDWR | O_CREAT | O_APPEND;
    case FileUse::create:
      return always | O_WRONLY | O_CREAT | O_EXCL;
    case FileUse::read:
      break;
  }
  return always | O_RDONLY;
}

// Why what stands there is not opened; null when it is.
const char* refusalOf(const struct stat& found, FileUse use, NamedBy named) {
  if (S_ISLNK(found.st_mode)) return "It is a link, where none is followed";
  if (S_ISDIR(found.st_mode)) return "It is a folder";
  if (S_ISFIFO(found.st_mode)) return "It is a pipe, not a file";
  if (!S_ISREG(found.st_mode)) return "It is a device, not a file";
  const bool inPlace = use == FileUse::change || use == FileUse::append;
  if (inPlace && named == NamedBy::program && found.st_nlink > 1)
    return "It has another name, under which it would change, too";
  return nullptr;
}

// False with the reason in @p cause, which stays empty for a file that may be made.
bool mayOpen(const fs::path& file, FileUse use, NamedBy named, std::string& cause) {
  struct stat found {};
  const int result =
      named == NamedBy::program ? ::lstat(file.c_str(), &found) : ::stat(file.c_str(), &found);
  if (result != 0) return (errno == ENOENT && use != FileUse::read) || failed(cause, errno);
  const char* refusal = refusalOf(found, use, named);
  if (refusal != nullptr) cause = refusal;
  return refusal == nullptr;
}

}  // namespace

// It is looked at twice: before, because opening alone sets some devices going, and afterwards,
// because another one may stand there by then.
Descriptor openFile(const fs::path& file, FileUse use, NamedBy named, std::string& cause) {
  if (use != FileUse::create && !mayOpen(file, use, named, cause)) return Descriptor(-1);
  Descriptor opened(
      uninterrupted([&] { return ::open(file.c_str(), flagsOf(use, named), PrivateFile); }));
  struct stat found {};
  if (!opened.good() || ::fstat(opened.number(), &found) != 0) {
    failed(cause, errno);
    return Descriptor(-1);
  }
  if (const char* refusal = refusalOf(found, use, named)) {
    cause = refusal;
    return Descriptor(-1);
  }
  return opened;
}

bool mayReplace(const fs::path& file, std::string& cause) {
  return mayOpen(file, FileUse::create, NamedBy::program, cause);
}

bool makeFolder(const fs::path& folder, std::string& cause) {
  struct stat found {};
  if (::stat(folder.c_str(), &found) == 0) return S_ISDIR(found.st_mode) || failed(cause, ENOTDIR);
  if (errno != ENOENT) return failed(cause, errno);
  const fs::path above = folder.parent_path();
  if (!above.empty() && above != folder && !makeFolder(above, cause)) return false;
  // Another program may have made it meanwhile; a link that leads nowhere stands in the way.
  if (::mkdir(folder.c_str(), PrivateFolder) == 0) return true;
  const int error = errno;
  if (error != EEXIST) return failed(cause, error);
  if (::stat(folder.c_str(), &found) != 0) return failed(cause, errno);
  return S_ISDIR(found.st_mode) || failed(cause, error);
}

bool closeFolderToOthers(const fs::path& folder, std::string& cause) {
  struct stat found {};
  if (::lstat(folder.c_str(), &found) != 0) return failed(cause, errno);
  if (S_ISLNK(found.st_mode) || (found.st_mode & OfOthers) == 0) return true;
  const Descriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
  return (opened.good() && ::fchmod(opened.number(), PrivateFolder) == 0) || failed(cause, errno);
}

void flushFolder(const fs::path& folder) {
  const Descriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (opened.good()) ::fsync(opened.number());
}

bool followLinks(const fs::path& name, fs::path& target, std::string& cause) {
  target = name;
  for (int links = 0; links <= MostLinks; ++links) {
    struct stat found {};
    if (::lstat(target.c_str(), &found) != 0) return errno == ENOENT || failed(cause, errno);
    if (!S_ISLNK(found.st_mode)) return true;
    std::error_code error;
    const fs::path linked = fs::read_symlink(target, error);
    if (error) return failed(cause, error.value());
    target = target.parent_path() / linked;  // an absolute one takes the place of the whole
  }
  return failed(cause, ELOOP);
}

bool holdStandardStreams() {
  // Opened the wrong way round: nobody can read from the one or write to the others.
  constexpr int Flags[] = {O_WRONLY, O_RDONLY, O_RDONLY};
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (::fcntl(stream, F_GETFD) != -1 || errno != EBADF) continue;
    // The lowest number that is free is given, and those below are held already.
    if (::open("/dev/null", Flags[stream]) != stream) return false;
  }
  return true;
}

}  // namespace host
