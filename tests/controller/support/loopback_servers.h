#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace lamp::controller::test {

/// A socket that listens or receives on a free port of this machine and is closed with the scope.
class LoopbackSocket {
 public:
  explicit LoopbackSocket(int type);
  ~LoopbackSocket();
  LoopbackSocket(const LoopbackSocket&) = delete;
  LoopbackSocket& operator=(const LoopbackSocket&) = delete;

  int descriptor() const { return descriptor_; }
  int port() const { return port_; }
  /// Wakes whoever waits on it.
  void shutDown() const;

 private:
  int descriptor_ = -1;
  int port_ = 0;
};

/// An FTP server for one client after the other: it takes passive uploads and keeps them in memory.
class FtpServer {
 public:
  FtpServer();
  ~FtpServer();
  std::string host() const { return "127.0.0.1:" + std::to_string(socket_.port()); }

  /// Files by their path, and "user:password" of the logins.
  std::map<std::string, std::string> files();
  std::vector<std::string> logins();

 private:
  void serve();
  void talk(int client);

  LoopbackSocket socket_;
  std::mutex mutex_;
  std::map<std::string, std::string> files_;
  std::vector<std::string> logins_;
  std::thread thread_;
};

/// An SMTP server for one client after the other: keeps each conversation up to the end
/// of its message.
class SmtpServer {
 public:
  SmtpServer();
  ~SmtpServer();
  std::string host() const { return "127.0.0.1:" + std::to_string(socket_.port()); }
  std::vector<std::string> conversations();

 private:
  void serve();
  void talk(int client);

  LoopbackSocket socket_;
  std::mutex mutex_;
  std::vector<std::string> conversations_;
  std::thread thread_;
};

/// A time server that answers each question with what a function makes of it.
class NtpServer {
 public:
  using Answer = std::function<void(std::string& packet)>;
  explicit NtpServer(Answer answer);
  ~NtpServer();
  std::string host() const { return "127.0.0.1:" + std::to_string(socket_.port()); }

  /// Makes the packet a good answer of a clock that shows `time` since 1970.
  static void answerWith(std::string& packet, std::chrono::milliseconds time);

 private:
  LoopbackSocket socket_;
  std::thread thread_;
};

}  // namespace lamp::controller::test
