#pragma once

#include <chrono>
#include <functional>
#include <string>

namespace lamp::controller {

/// What a time server answered.
struct TimeAnswer {
  std::chrono::milliseconds offset{0};  ///< server minus own clock
  std::string fault;                    ///< empty when the answer is good
};

/// Asks a time server (host, or host:port; port 123 where none is given) how far the own clock is
/// off: SNTP version 4, RFC 4330, one question, `wait` for the answer. `ownNow` is the own clock as
/// milliseconds since 1970 and is asked before and after.
TimeAnswer askTimeServer(const std::string& server, std::chrono::milliseconds wait,
                         const std::function<std::chrono::milliseconds()>& ownNow);

/// The offset by the four moments of an exchange (RFC 4330): question sent and received, answer
/// sent and received.
std::chrono::milliseconds offsetOf(std::chrono::milliseconds sent,
                                   std::chrono::milliseconds received,
                                   std::chrono::milliseconds answered,
                                   std::chrono::milliseconds arrived);

}  // namespace lamp::controller
