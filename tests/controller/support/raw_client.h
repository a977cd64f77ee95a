#pragma once

#include <string>

namespace lamp::controller::test {

/// A connection to a port of this machine over which bytes go as they stand.
class RawClient {
 public:
  explicit RawClient(int port);
  ~RawClient();
  RawClient(const RawClient&) = delete;
  RawClient& operator=(const RawClient&) = delete;

  void send(const std::string& bytes) const;
  /// What comes until the server ends or says nothing more for a second; it may take its time for
  /// the first byte.
  std::string receive() const;

 private:
  void waitAtMost(long seconds) const;

  int descriptor_;
};

}  // namespace lamp::controller::test
