#pragma once

#include <string>

namespace lamp::controller::test {

/// A connection to a port of this machine over which bytes go as they stand.
class RawClient {
 public:
  /// `own` is the address that it comes from, of the loopback; `ownPort` 0 takes a free port.
  explicit RawClient(int port, const std::string& own = "127.0.0.1", int ownPort = 0);
  ~RawClient();
  RawClient(const RawClient&) = delete;
  RawClient& operator=(const RawClient&) = delete;

  /// False where the server has ended the connection.
  bool send(const std::string& bytes) const;
  /// What comes until the server ends or says nothing more for a second; it may take its time for
  /// the first byte.
  std::string receive() const;
  /// Receives until `mark` has come. False where the server ended, or said nothing for 10 s.
  bool receiveUntil(const std::string& mark) const;
  /// Ends without a farewell: what is under way is lost.
  void reset();
  int ownPort() const;

 private:
  void waitAtMost(long seconds) const;

  int descriptor_;
};

}  // namespace lamp::controller::test
