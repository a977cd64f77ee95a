#pragma once

#include <chrono>
#include <filesystem>

#include "host/text/basic_string.h"

namespace workbench {

/// The right to write what a lock file guards: held by one process at a time, given back when the
/// object or the process ends. The file itself stays and holds the number of the last holder.
class FileLock {
 public:
  FileLock() = default;
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;
  ~FileLock();

  /// Takes the lock, waiting for @p patience for a holder that is about to end. False when another
  /// process holds it or the file can't be made; problem() then tells which.
  bool take(const std::filesystem::path& file, std::chrono::milliseconds patience = {});
  bool isHeld() const { return descriptor_ >= 0; }
  /// Why take() failed, in the language in force: who holds the lock, or the system's reason.
  const XCBasicString& problem() const { return problem_; }

 private:
  int descriptor_ = -1;
  XCBasicString problem_;
};

}  // namespace workbench
