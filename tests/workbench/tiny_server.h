#pragma once

#include <atomic>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace test {

/// One HTTP request as it came in.
struct TinyRequest {
  std::string line;  ///< "POST /path?query HTTP/1.1"
  std::vector<std::string> headers;
  std::string body;

  /// The value of a header, compared without case; empty when there is none.
  std::string header(const std::string& name) const;
};

/// A server on 127.0.0.1 that answers every request with what a function writes, byte for byte, and
/// then closes the connection. It works on one connection at a time.
class TinyServer {
 public:
  class Connection {
   public:
    explicit Connection(TinyServer& server, int socket) : server_(server), socket_(socket) {}
    void send(const std::string& bytes) const;
    /// Waits until the server is released.
    void hang() const;

   private:
    TinyServer& server_;
    int socket_;
  };
  using Answer = std::function<void(const TinyRequest&, const Connection&)>;

  explicit TinyServer(Answer answer);
  TinyServer(const TinyServer&) = delete;
  TinyServer& operator=(const TinyServer&) = delete;
  ~TinyServer();

  int port() const { return port_; }
  /// All requests that came in so far.
  std::vector<TinyRequest> requests() const;
  /// Ends every hang(), now and from now on.
  void release();

  /// A whole answer with a body of a type.
  static std::string reply(const std::string& body, const std::string& status = "200 OK",
                           const std::string& type = "application/xml");

 private:
  void serve();
  void serveOne(int socket);

  Answer answer_;
  int listener_ = -1;
  int port_ = 0;
  mutable std::mutex mutex_;
  std::condition_variable released_;
  bool isReleased_ = false;
  std::atomic<bool> stopping_ = false;
  std::vector<TinyRequest> requests_;
  std::thread thread_;
};

}  // namespace test
