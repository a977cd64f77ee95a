#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace lamp::controller::test {

/// A program that was started for a test; it is killed at the end of the scope if it still runs.
class Program {
 public:
  explicit Program(const std::vector<std::string>& command);
  ~Program();
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  /// The next line of its standard output; empty when that has ended.
  std::string readLine();
  /// Everything that is left of its standard output and error.
  std::string readRest();
  /// The address in its line "listening on ...".
  std::string waitForAddress();
  pid_t id() const { return process_; }
  void signal(int number) const;
  /// Waits for its end. The exit status, or 128 and the signal that ended it.
  int wait();

 private:
  pid_t process_ = -1;
  int output_ = -1;
};

}  // namespace lamp::controller::test
