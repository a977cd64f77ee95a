#pragma once

#include <exception>

#include "host/export.h"

class CWnd;

namespace host {

/// Tells the person that something failed: in the words for missing memory, or with what the
/// exception says. Where even that fails nothing is told. @p parent may be null.
HOST_API void tellFailure(CWnd* parent, const std::exception_ptr& failure) noexcept;

/// While it lives, exceptions are caught further out: of functions that guard themselves and call
/// one another, the outermost one catches.
class HOST_API Guard {
 public:
  Guard() noexcept;
  Guard(const Guard&) = delete;
  Guard& operator=(const Guard&) = delete;
  ~Guard();
  static bool isActive() noexcept;
};

/// While it lives, a front end works on what its user does: guards further out do not count, for
/// their exceptions would have to pass through its loop.
class HOST_API FrontEndLoop {
 public:
  FrontEndLoop() noexcept;
  FrontEndLoop(const FrontEndLoop&) = delete;
  FrontEndLoop& operator=(const FrontEndLoop&) = delete;
  ~FrontEndLoop();

 private:
  int guards_;
};

/// Does @p work, which a host or a plug-in offers to the other: what it throws is told to the
/// person, and @p failed is answered. Inside of another guard exceptions pass.
template <class Result, class Work>
Result guarded(CWnd* parent, Result failed, const Work& work) {
  if (Guard::isActive()) return work();
  std::exception_ptr failure;
  try {
    const Guard guard;
    return work();
  } catch (...) {
    failure = std::current_exception();
  }
  tellFailure(parent, failure);
  return failed;
}

/// As above, for work without a result.
template <class Work>
void guarded(CWnd* parent, const Work& work) {
  guarded(parent, false, [&work] {
    work();
    return true;
  });
}

}  // namespace host
