#pragma once

#include <functional>
#include <string>

namespace lamp::controller {

/// Where a change of the state goes before it takes effect.
class ChangeLog {
 public:
  virtual ~ChangeLog() = default;

  /// Keeps `record` and then calls `apply`: for all changes in the order in which they are kept,
  /// from one thread at a time, not always the caller's. Returns when both are done. Answers what
  /// went wrong, or an empty text; after a fault the record is not kept and `apply` was not called.
  virtual std::string commit(std::string record, const std::function<void()>& apply) = 0;
};

}  // namespace lamp::controller
