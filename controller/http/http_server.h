#pragma once

#include <memory>
#include <string>

#include "controller/http/event_feed.h"
#include "controller/http/http_message.h"

namespace lamp::controller {

/// Serves HTTP: one request on each connection, at most so many connections in all and from one
/// address, each with a limit of memory and a time in which its request must have come whole.
class HttpServer {
 public:
  /// Both must outlive the server. The events go to requests whose reply asks for them.
  HttpServer(HttpService& service, EventFeed& events);
  ~HttpServer();
  HttpServer(const HttpServer&) = delete;
  HttpServer& operator=(const HttpServer&) = delete;

  /// Binds and begins to serve. Port 0 takes a free one. False when the address can't be had.
  bool start(const std::string& address, int port);
  /// The port that is served; 0 before `start`.
  int port() const;
  /// Takes no connection any more, answers what is being carried out, and ends the others.
  void stop();

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace lamp::controller
