#include "workbench/send_journal.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <system_error>

#include "host/services/descriptor.h"
#include "host/services/files.h"
#include "workbench/file_lock.h"
#include "workbench/state_folder.h"

namespace workbench {
namespace {

// Another program holds the lock for the time of one line; one that was stopped meanwhile does not
// keep this one from writing.
constexpr std::chrono::milliseconds Patience{200};

bool failed(const std::filesystem::path& file, int error, std::string& cause) {
  cause = file.string() + ": " + std::generic_category().message(error);
  return false;
}

// A program that was killed in the midst of a line has left no line's end.
bool endsInMidLine(int descriptor, off_t size) {
  char last = '\n';
  return size > 0 && ::pread(descriptor, &last, 1, size - 1) == 1 && last != '\n';
}

}  // namespace

std::filesystem::path SendJournal::file(std::size_t age) const {
  return folder_ / (age == 0 ? "sends.jsonl" : "sends." + std::to_string(age) + ".jsonl");
}

void SendJournal::rotate() const {
  std::error_code ignored;  // a file that can't be moved is written on
  for (std::size_t age = limits_.files - 1; age > 0; --age)
    std::filesystem::rename(file(age - 1), file(age), ignored);
}

bool SendJournal::append(const JournalEntry& entry, std::string& cause) const {
  if (!makePrivateFolder(folder_, cause)) {
    cause = folder_.string() + ": " + cause;
    return false;
  }
  FileLock lock;
  const bool alone = lock.take(folder_ / "sends.lock", Patience);
  std::string line = entry.line();
  std::error_code missing;
  const auto size = std::filesystem::file_size(file(0), missing);
  if (alone && !missing && size > 0 && size + line.size() > limits_.fileBytes) rotate();

  const host::Descriptor out(host::uninterrupted([&] {
    return ::open(file(0).c_str(), O_RDWR | O_APPEND | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
  }));
  struct stat before {};
  if (!out.good() || ::fstat(out.number(), &before) != 0) return failed(file(0), errno, cause);
  if ((before.st_mode & 0077) != 0 && ::fchmod(out.number(), 0600) != 0)
    return failed(file(0), errno, cause);
  if (endsInMidLine(out.number(), before.st_size)) line.insert(0, 1, '\n');
  const ssize_t written =
      host::uninterrupted([&] { return ::write(out.number(), line.data(), line.size()); });
  if (written == static_cast<ssize_t>(line.size())) {
    // A file system that can't flush has the line all the same.
    static_cast<void>(::fdatasync(out.number()));
    return true;
  }
  const int error = written < 0 ? errno : ENOSPC;
  // Half a line goes again, unless somebody else may have written behind it.
  if (written > 0 && alone && ::ftruncate(out.number(), before.st_size) != 0)
    return failed(file(0), errno, cause);
  return failed(file(0), error, cause);
}

std::vector<JournalEntry> SendJournal::entries(
    const std::function<bool(const JournalEntry&)>& wanted, std::size_t most) const {
  std::vector<JournalEntry> found;
  for (std::size_t age = 0; age < limits_.files && found.size() < most; ++age) {
    std::string content;
    std::string ignored;
    if (!host::readFile(file(age), limits_.fileBytes + limits_.entryBytes, content, ignored))
      continue;
    std::string_view rest = content;
    while (!rest.empty() && found.size() < most) {
      if (rest.ends_with('\n')) rest.remove_suffix(1);
      const std::size_t end = rest.rfind('\n');
      const std::size_t begin = end == std::string_view::npos ? 0 : end + 1;
      auto entry = JournalEntry::read(rest.substr(begin));
      if (entry && wanted(*entry)) found.push_back(std::move(*entry));
      rest = rest.substr(0, begin);
    }
  }
  return found;
}

}  // namespace workbench
