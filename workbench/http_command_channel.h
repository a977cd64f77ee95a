#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "host/services/services.h"
#include "workbench/exchange_progress.h"
#include "workbench/trusted_certificates.h"

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

/// A certificate that can't be verified, for a person to judge.
struct CertificateQuestion {
  XCBasicString address;
  XCBasicString cause;      ///< why it can't be verified, in English
  std::string fingerprint;  ///< SHA-256, as shownFingerprint() writes it
};

struct CommandAddress;
struct HttpAnswer;
struct HttpPost;

/// The command channel over HTTP: one POST a command to the address and port among its URI
/// parameters, on a connection of its own, so that no command is ever sent twice. Redirects,
/// proxies and certificates that can't be verified are not accepted. Failures carry a text that
/// names the address and the cause.
class HttpCommandChannel : public host::CommandChannel {
 public:
  /// The longest error text that is taken from a controller.
  static constexpr std::size_t ErrorCharacters = 2'000;

  explicit HttpCommandChannel(HttpLimits limits = {}) : limits_(limits) {}

  void setLimits(const HttpLimits& limits) { limits_ = limits; }
  /// Tells @p progress of every exchange from now on; null for none. It must outlive its use.
  void setProgress(ExchangeProgress* progress) { progress_ = progress; }
  /// Certificates are verified with the authorities of this file in place of the system's.
  void setAuthorities(std::string file) { authorities_ = std::move(file); }

  /// Certificates that are trusted although they can't be verified; null for none. It must outlive
  /// its use. Of an address with such a certificate no other one is accepted, verified or not.
  void setTrust(const TrustedCertificates* trust) { trust_ = trust; }
  /// Asked when a certificate can't be verified and none is trusted for the address, before
  /// anything is sent: whether this one is to be trusted from now on. Without it the answer is no.
  using Judge = std::function<bool(const CertificateQuestion&)>;
  void setJudge(Judge judge) { judge_ = std::move(judge); }

  host::ExchangeReply exchange(const host::ExchangeRequest& request) override;

 private:
  host::ExchangeReply attempt(const host::ExchangeRequest& request);
  HttpAnswer post(const host::ExchangeRequest& request, HttpPost& post) const;
  std::optional<host::ExchangeReply> askForTrust(const CommandAddress& address,
                                                 const host::ExchangeRequest& request,
                                                 HttpPost& post, HttpAnswer& answer) const;

  HttpLimits limits_;
  ExchangeProgress* progress_ = nullptr;
  std::string authorities_;
  const TrustedCertificates* trust_ = nullptr;
  Judge judge_;
};

}  // namespace workbench
