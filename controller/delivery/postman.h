#pragma once

#include <condition_variable>
#include <filesystem>
#include <mutex>
#include <thread>

#include "controller/delivery/outbox.h"
#include "controller/delivery/time_server.h"
#include "controller/model/controller.h"

namespace lamp::controller {

/// Does what the controller does on the network of its own accord: sends the reports of the outbox
/// and keeps the clock by the time server. Works in a thread of its own while it lives.
class Postman {
 public:
  /// The controller and its clock must outlive the postman. `authorities` is a file of
  /// certificates that servers are verified by; empty for those of the system.
  Postman(Controller& controller, ControllerClock& clock, std::filesystem::path outbox,
          std::string authorities);
  ~Postman();
  Postman(const Postman&) = delete;
  Postman& operator=(const Postman&) = delete;

 private:
  void work(const std::stop_token& stop);
  bool keepTime(const DeliverySettings& settings);

  Controller& controller_;
  ControllerClock& clock_;
  NetworkCourier courier_;
  Outbox outbox_;
  std::mutex mutex_;
  std::condition_variable_any waking_;
  std::jthread thread_;
};

/// What to do with a time server's answer: the correction of the clock, zero where it is off by no
/// more than the general section tolerates ("NTPMaxDeviation", seconds).
std::chrono::milliseconds correctionFor(std::chrono::milliseconds offset,
                                        std::chrono::seconds tolerated);

}  // namespace lamp::controller
