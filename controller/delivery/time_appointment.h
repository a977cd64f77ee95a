#pragma once

#include <chrono>

#include "controller/delivery/delivery_settings.h"

namespace lamp::controller {

/// When the time server is asked: at the start, every hour, at once when its address or the
/// tolerated deviation changes, and 15 s after a question that brought no time (the shortest
/// interval that RFC 4330 grants a client).
class TimeAppointment {
 public:
  using Moment = std::chrono::steady_clock::time_point;

  /// Whether to ask now. Never where the settings name no server.
  bool due(const DeliverySettings& settings, Moment now) const;
  /// Notes that the server of these settings was asked, and whether it told the time.
  void kept(const DeliverySettings& settings, bool answered, Moment now);

 private:
  std::string server_;
  std::chrono::seconds deviation_{0};
  Moment next_;
};

}  // namespace lamp::controller
