#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <string>

#include "workbench/exchange_progress.h"

// Internal to the HTTP command channel: one POST and its answer.

namespace workbench {

/// What a POST is made of.
struct HttpPost {
  std::string url;
  std::string body;
  std::chrono::milliseconds connectTime{};
  std::chrono::milliseconds wholeTime{};
  std::size_t replyBytes = 0;  ///< most bytes of the answer's body
  bool keepBody = true;        ///< whether the body of a successful answer is wanted
  std::string authorities;     ///< file of certificates, empty for the system's
  /// The fingerprint of the one certificate that is accepted, whoever vouches for it; empty to have
  /// certificates verified. It is compared before anything is sent.
  std::string onlyCertificate = {};
  /// Ends when the certificate is known, without sending anything.
  bool onlyLook = false;
};

/// How a POST ended.
struct HttpAnswer {
  enum class End {
    complete,
    cancelled,
    refused,
    hostNotFound,
    timedOut,
    closed,
    tooLarge,
    noMemory,
    certificate,
    otherCertificate,  ///< not the one that is accepted; also of a look
    address,
    failed,
  };
  End end = End::failed;
  std::string cause = {};  ///< for certificate and failed, in English
  int status = 0;
  bool plainText = false;        ///< the body is of the type text/plain
  std::string fingerprint = {};  ///< of the certificate, where it was looked at
  std::string body = {};         ///< of a status other than 200 at least the beginning
};

/// Sends a POST and waits for its answer, with @p progress kept alive when there is one.
HttpAnswer httpPost(const HttpPost& post, ExchangeProgress* progress);

}  // namespace workbench
