#pragma once

#include <memory>
#include <string>

#include "controller/model/controller.h"
#include "controller/model/state_keeper.h"

namespace lamp::controller {

/// The controller's web service: commands in, documents out. Serves from threads of its own between
/// `start` and `stop`.
class CommandServer {
 public:
  /// Both must outlive the server.
  CommandServer(Controller& controller, StateKeeper& keeper);
  ~CommandServer();
  CommandServer(const CommandServer&) = delete;
  CommandServer& operator=(const CommandServer&) = delete;

  /// Binds and begins to serve. Port 0 takes a free one. False when the address can't be had.
  bool start(const std::string& address, int port);
  /// The port that is served; 0 before `start`.
  int port() const;
  /// Ends every connection and waits for the threads.
  void stop();

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace lamp::controller
