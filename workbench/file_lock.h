#pragma once

#include <chrono>
#include <filesystem>

#include "host/services/descriptor.h"
#include "host/text/basic_string.h"

namespace workbench {

/// The right to write what a lock file guards: held by one process at a time, given back when the
/// object or the process ends. The file itself stays and holds the number of the last holder; a
/// file that holds anything else is no lock and stays as it is.
class FileLock {
 public:
  /// Takes the lock, waiting for @p patience for a holder that is about to end. False when another
  /// process holds it or the file can't be made; problem() then tells which.
  bool take(const std::filesystem::path& file, std::chrono::milliseconds patience = {});
  bool isHeld() const { return file_.good(); }
  /// Whether take() failed because another process holds the lock.
  bool isHeldElsewhere() const { return heldElsewhere_; }
  /// Why take() failed, in the language in force: who holds the lock, or the system's reason.
  const XCBasicString& problem() const { return problem_; }

 private:
  host::Descriptor file_{-1};
  bool heldElsewhere_ = false;
  XCBasicString problem_;
};

}  // namespace workbench
