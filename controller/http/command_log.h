#pragma once

#include <cstdint>
#include <deque>
#include <mutex>
#include <string>
#include <vector>

namespace lamp::controller {

/// One exchange as people may see it: passwords are masked and long documents cut.
struct LoggedCommand {
  std::uint64_t number = 0;  ///< counts from 1
  int command = 0;
  std::string date;  ///< the controller's own
  std::string parameters;
  std::string request;
  int status = 0;
  std::string reply;
};

/// The last exchanges. Safe to use from several threads.
class CommandLog {
 public:
  /// Keeps an exchange; masks and cuts it first.
  void add(LoggedCommand entry);
  /// Those after number `since`, the oldest first.
  std::vector<LoggedCommand> after(std::uint64_t since) const;

 private:
  mutable std::mutex mutex_;
  std::deque<LoggedCommand> entries_;
  std::uint64_t count_ = 0;
};

/// `text` with the values of password attributes and parameters, and the mail user, as "***" and a
/// firmware image as its length, cut at 4,000 characters.
std::string masked(const std::string& text);

}  // namespace lamp::controller
