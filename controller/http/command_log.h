#pragma once

#include <cstdint>
#include <deque>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace lamp::controller {

/// A document or a query as people may see it: the values of password attributes and parameters,
/// and of the mail user, are "***", a firmware image is its length, and 4,000 characters are shown.
class ShownText {
 public:
  ShownText() = default;
  explicit ShownText(std::string_view whole);
  const std::string& str() const { return text_; }

 private:
  std::string text_;
};

/// One exchange as people may see it.
struct LoggedCommand {
  std::uint64_t number = 0;  ///< counts from 1
  int command = 0;
  std::string date;  ///< the controller's own
  ShownText parameters;
  ShownText request;
  int status = 0;
  ShownText reply;
};

/// The last exchanges. Safe to use from several threads.
class CommandLog {
 public:
  void add(LoggedCommand entry);
  /// Those after number `since`, the oldest first.
  std::vector<LoggedCommand> after(std::uint64_t since) const;

 private:
  mutable std::mutex mutex_;
  std::deque<LoggedCommand> entries_;
  std::uint64_t count_ = 0;
};

}  // namespace lamp::controller
