#pragma once

#include <chrono>
#include <cstddef>
#include <string>

#include "host/services/services.h"
#include "workbench/exchange_progress.h"

namespace workbench {

/// What an exchange may take.
struct HttpLimits {
  /// Limits under which no exchange, the upload of a firmware neither, takes longer than @p time;
  /// connecting takes as long as ever, but never longer than that.
  static HttpLimits within(std::chrono::milliseconds time);

  std::chrono::milliseconds connect{5'000};
  std::chrono::milliseconds whole{30'000};
  std::chrono::milliseconds wholeFirmware{300'000};  ///< of command 52
  std::size_t replyBytes = 64U * 1024 * 1024;
  std::size_t depth = 64;
};

/// The command channel over HTTP: one POST a command to the address and port among its URI
/// parameters, on a connection of its own, so that no command is ever sent twice. Redirects,
/// proxies and certificates that can't be verified are not accepted. Failures carry a text that
/// names the address and the cause.
class HttpCommandChannel : public host::CommandChannel {
 public:
  explicit HttpCommandChannel(HttpLimits limits = {}) : limits_(limits) {}

  void setLimits(const HttpLimits& limits) { limits_ = limits; }
  /// Tells @p progress of every exchange from now on; null for none. It must outlive its use.
  void setProgress(ExchangeProgress* progress) { progress_ = progress; }
  /// Certificates are verified with the authorities of this file in place of the system's.
  void setAuthorities(std::string file) { authorities_ = std::move(file); }

  host::ExchangeReply exchange(const host::ExchangeRequest& request) override;

 private:
  HttpLimits limits_;
  ExchangeProgress* progress_ = nullptr;
  std::string authorities_;
};

}  // namespace workbench
