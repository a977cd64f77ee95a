#include "workbench/file_lock.h"

#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <optional>
#include <string>
#include <system_error>
#include <thread>
#include <utility>

#include "host/resources/texts.h"
#include "host/services/open_file.h"

namespace workbench {
namespace {

using host::TextId;

XCBasicString failure(TextId text, const std::filesystem::path& file, const std::string& cause) {
  return XCBasicString::Format(XCLoadString(text), XCBasicString::FromUtf8(file.string()),
                               XCBasicString::FromUtf8(cause));
}

// The number that the last holder wrote into the file; empty for a new file, and none for one that
// is no lock.
std::optional<std::string> numberIn(int descriptor) {
  char content[32];
  const ssize_t size = ::pread(descriptor, content, sizeof content, 0);
  if (size < 0 || size == sizeof content) return std::nullopt;
  std::string number(content, static_cast<std::size_t>(size));
  if (number.ends_with('\n')) number.pop_back();
  if (number.find_first_not_of("0123456789") != std::string::npos) return std::nullopt;
  return number;
}

host::Descriptor openLock(const std::filesystem::path& file, std::string& cause) {
  host::Descriptor opened =
      host::openFile(file, host::FileUse::change, host::NamedBy::program, cause);
  if (!opened.good() || numberIn(opened.number())) return opened;
  cause = "It holds something else than a lock";
  return host::Descriptor(-1);
}

XCBasicString holderOf(int descriptor) {
  const std::string number = numberIn(descriptor).value_or(std::string());
  if (number.empty()) return XCLoadString(TextId::AnotherProgramHasItOpen);
  return XCBasicString::Format(XCLoadString(TextId::ProcessHasItOpen),
                               XCBasicString::FromUtf8(number));
}

// Gives 0 or the system's error. The system can't wait for a lock with a limit.
int lock(int descriptor, std::chrono::milliseconds patience) {
  constexpr std::chrono::milliseconds Step{20};
  for (;;) {
    if (::flock(descriptor, LOCK_EX | LOCK_NB) == 0) return 0;
    if (errno != EWOULDBLOCK || patience <= patience.zero()) return errno;
    std::this_thread::sleep_for(Step);
    patience -= Step;
  }
}

}  // namespace

bool FileLock::take(const std::filesystem::path& file, std::chrono::milliseconds patience) {
  if (isHeld()) return true;
  heldElsewhere_ = false;
  std::string cause;
  host::Descriptor opened = openLock(file, cause);
  if (!opened.good()) {
    problem_ = failure(TextId::FileNotWritten, file, cause);
    return false;
  }
  if (const int error = lock(opened.number(), patience); error != 0) {
    heldElsewhere_ = error == EWOULDBLOCK;
    problem_ = heldElsewhere_
                   ? holderOf(opened.number())
                   : failure(TextId::FileNotLocked, file, std::generic_category().message(error));
    return false;
  }
  const std::string number = std::to_string(::getpid()) + "\n";
  // Who holds the lock is told on a best effort: the lock itself does not depend on it.
  if (::ftruncate(opened.number(), 0) == 0)
    static_cast<void>(::pwrite(opened.number(), number.data(), number.size(), 0) == 0);
  file_ = std::move(opened);
  problem_.Empty();
  return true;
}

}  // namespace workbench
