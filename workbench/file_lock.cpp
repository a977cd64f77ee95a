#include "workbench/file_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <thread>

#include "host/resources/texts.h"

namespace workbench {
namespace {

using host::TextId;

XCBasicString failure(TextId text, const std::filesystem::path& file, int error) {
  return XCBasicString::Format(XCLoadString(text), XCBasicString::FromUtf8(file.string()),
                               XCBasicString::FromUtf8(std::generic_category().message(error)));
}

// Who has it open, by the number that the holder wrote into the file.
XCBasicString holderOf(int descriptor) {
  char digits[32];
  const ssize_t count = ::pread(descriptor, digits, sizeof digits, 0);
  std::string number;
  for (ssize_t i = 0; i < count && digits[i] >= '0' && digits[i] <= '9'; ++i) number += digits[i];
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

FileLock::~FileLock() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

bool FileLock::take(const std::filesystem::path& file, std::chrono::milliseconds patience) {
  if (isHeld()) return true;
  const int descriptor = ::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
  if (descriptor < 0) {
    problem_ = failure(TextId::FileNotWritten, file, errno);
    return false;
  }
  if (const int error = lock(descriptor, patience); error != 0) {
    problem_ =
        error == EWOULDBLOCK ? holderOf(descriptor) : failure(TextId::FileNotLocked, file, error);
    ::close(descriptor);
    return false;
  }
  const std::string number = std::to_string(::getpid()) + "\n";
  // Who holds the lock is told on a best effort: the lock itself does not depend on it.
  if (::ftruncate(descriptor, 0) == 0)
    static_cast<void>(::pwrite(descriptor, number.data(), number.size(), 0) == 0);
  descriptor_ = descriptor;
  problem_.Empty();
  return true;
}

}  // namespace workbench
