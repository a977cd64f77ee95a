#pragma once

#include <cstdint>

#include "host/services/services.h"

namespace workbench {

/// What a window shows of an exchange that runs, and how it stays alive meanwhile. Everything is
/// called on the thread that called the channel.
class ExchangeProgress {
 public:
  virtual ~ExchangeProgress() = default;

  virtual void started(const host::ExchangeRequest& request) = 0;
  /// Bytes of the bodies so far; @p toSend is the size of the request's body.
  virtual void moved(std::uint64_t sent, std::uint64_t toSend, std::uint64_t received) = 0;
  /// Called again and again, about every 10 ms or oftener: works on the window's events. False
  /// cancels the exchange.
  virtual bool pump() = 0;
  /// Called once for every started(), whatever became of the exchange.
  virtual void finished() = 0;
};

}  // namespace workbench
