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
    certificate,
    address,
    failed,
  };
  End end = End::failed;
  std::string cause = {};  ///< for certificate and failed, in English
  int status = 0;
  bool plainText = false;  ///< the body is of the type text/plain
  std::string body = {};   ///< of a status other than 200 at least the beginning
};

/// Sends a POST and waits for its answer, with @p progress kept alive when there is one.
HttpAnswer httpPost(const HttpPost& post, ExchangeProgress* progress);

}  // namespace workbench
