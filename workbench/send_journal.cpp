#include "workbench/send_journal.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <system_error>

#include "host/services/files.h"
#include "workbench/file_lock.h"
#include "workbench/state_folder.h"

namespace workbench {
namespace {

// Another program holds the lock for the time of one line; one that was stopped meanwhile does not
// keep this one from writing.
constexpr std::chrono::milliseconds Patience{200};

bool failed(const std::filesystem::path& file, const std::string& why, std::string& cause) {
  cause = file.string() + ": " + why;
  return false;
}

bool failed(const std::filesystem::path& file, int error, std::string& cause) {
  return failed(file, std::generic_category().message(error), cause);
}

// A program that was killed in the midst of a line has left no line's end.
bool endsInMidLine(int descriptor, off_t size) {
  char last = '\n';
  return size > 0 && ::pread(descriptor, &last, 1, size - 1) == 1 && last != '\n';
}

// Appends a line by one write. False with errno; then nothing of the line is left, unless somebody
// else may have written behind half of it.
bool write(int descriptor, const struct stat& before, std::string line, bool alone) {
  if ((before.st_mode & 0077) != 0 && ::fchmod(descriptor, 0600) != 0) return false;
  if (endsInMidLine(descriptor, before.st_size)) line.insert(0, 1, '\n');
  const ssize_t written =
      host::uninterrupted([&] { return ::write(descriptor, line.data(), line.size()); });
  if (written == static_cast<ssize_t>(line.size())) {
    // A file system that can't flush has the line all the same.
    static_cast<void>(::fdatasync(descriptor));
    return true;
  }
  const int error = written < 0 ? errno : ENOSPC;
  if (written > 0 && alone && ::ftruncate(descriptor, before.st_size) != 0) return false;
  errno = error;
  return false;
}

}  // namespace

std::filesystem::path SendJournal::file(std::size_t age) const {
  return folder_ / (age == 0 ? "sends.jsonl" : "sends." + std::to_string(age) + ".jsonl");
}

// A file that can't be moved is written on, and so are those in front of it.
void SendJournal::rotate() const {
  std::string ignored;
  for (std::size_t age = limits_.files - 1; age > 0; --age) {
    std::error_code error;
    if (!host::mayReplace(file(age), ignored)) return;
    std::filesystem::rename(file(age - 1), file(age), error);
    if (error && error != std::errc::no_such_file_or_directory) return;
  }
}

host::Descriptor SendJournal::open(std::string& cause) const {
  std::string why;
  host::Descriptor opened =
      host::openFile(file(0), host::FileUse::append, host::NamedBy::program, why);
  if (!opened.good()) failed(file(0), why, cause);
  return opened;
}

bool SendJournal::append(const JournalEntry& entry, std::string& cause) const {
  cause.clear();
  if (std::string why; !makePrivateFolder(folder_, why)) return failed(folder_, why, cause);
  FileLock lock;
  const bool alone = lock.take(folder_ / "sends.lock", Patience);
  if (!alone && !lock.isHeldElsewhere()) cause = lock.problem().ToUtf8();
  host::Descriptor out = open(cause);
  struct stat before {};
  if (!out.good()) return false;
  if (::fstat(out.number(), &before) != 0) return failed(file(0), errno, cause);
  std::string line = entry.line();
  const auto size = static_cast<std::size_t>(before.st_size);
  if (alone && size > 0 && size + line.size() > limits_.fileBytes) {
    rotate();
    out = open(cause);
    if (!out.good()) return false;
    if (::fstat(out.number(), &before) != 0) return failed(file(0), errno, cause);
  }
  return write(out.number(), before, std::move(line), alone) || failed(file(0), errno, cause);
}

std::vector<JournalEntry> SendJournal::entries(
    const std::function<bool(const JournalEntry&)>& wanted, std::size_t most,
    std::string* problem) const {
  std::vector<JournalEntry> found;
  if (problem != nullptr) problem->clear();
  for (std::size_t age = 0; age < limits_.files && found.size() < most; ++age) {
    std::string content;
    std::string why;
    if (!host::readFile(file(age), limits_.fileBytes + limits_.entryBytes, content, why,
                        host::NamedBy::program)) {
      if (problem != nullptr && problem->empty() && host::fileSystem().exists(file(age)))
        failed(file(age), why, *problem);
      continue;
    }
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
