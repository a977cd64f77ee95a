#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "controller/http/command_log.h"
#include "controller/http/fault_plan.h"
#include "controller/model/controller.h"

namespace lamp::controller {

/// What the web service serves. Everything must outlive the server.
struct Service {
  Controller& controller;
  ControllerClock& clock;
  FaultPlan& faults;
  CommandLog& log;
  std::string token;  ///< what a request must carry that changes the simulation
  /// Called when the controller is to restart in the middle of a command; may not return.
  std::function<void()> restart;
  /// Names besides addresses and "localhost" by which browsers may know it.
  std::vector<std::string> hostNames = {};
};

/// The controller's web service: commands in, documents out, the live page and the simulation's
/// control. Serves from threads of its own between `start` and `stop`.
class CommandServer {
 public:
  explicit CommandServer(const Service& service);
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
