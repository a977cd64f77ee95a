#pragma once

#include <chrono>
#include <cstddef>
#include <deque>
#include <functional>
#include <set>
#include <string>

#include "host/services/services.h"

namespace workbench {

/// One exchange as it is kept: texts in UTF-8, passwords masked.
struct ExchangeEntry {
  std::size_t number = 0;  ///< from 1, in the order in which they ended
  int command = 0;
  host::CommandKind kind = host::CommandKind::get;
  std::string uri;      ///< the URI parameters
  std::string request;  ///< the document sent, empty for none
  std::string reply;    ///< the document received by a read, empty for none
  bool ok = false;
  std::string error;  ///< the text of a failure; for a cancelled exchange the text that says so
  std::chrono::milliseconds took{};  ///< from the sending to the answer
};

/// Keeps what passes through a command channel. The document of a firmware upload is kept with its
/// long texts cut; when all texts together grow over a bound, those of the oldest exchanges go.
class ExchangeRecord : public host::CommandChannel {
 public:
  static constexpr std::size_t FirmwareTextLimit = 4U * 1024 * 1024;
  /// What stands in the place of a text that is no longer kept.
  static constexpr const char* Dropped = "(no longer kept)";
  static constexpr std::size_t DefaultBytes = 256U * 1024 * 1024;

  /// Records what passes to @p channel, which must outlive the record.
  explicit ExchangeRecord(host::CommandChannel& channel, std::size_t bytes = DefaultBytes)
      : channel_(channel), bytesAllowed_(bytes) {}

  host::ExchangeReply exchange(const host::ExchangeRequest& request) override;

  /// All exchanges since the start, the entry with number n at n - 1.
  const std::deque<ExchangeEntry>& entries() const { return entries_; }

  /// The next exchange, or the one after @p after more, fails as cancelled without being sent.
  void cancelNext(std::size_t after = 0) { toCancel_.insert(started_ + after); }

  /// Called after every exchange; null for nobody.
  void setListener(std::function<void(const ExchangeEntry&)> listener) {
    listener_ = std::move(listener);
  }

  /// Called after every exchange too, before the listener, with what was asked for as it was.
  void setWitness(std::function<void(const host::ExchangeRequest&, const ExchangeEntry&)> witness) {
    witness_ = std::move(witness);
  }

 private:
  void keep(const host::ExchangeRequest& request, const host::ExchangeReply& reply,
            std::chrono::milliseconds took);
  void dropOldTexts();

  host::CommandChannel& channel_;
  std::size_t bytesAllowed_;
  std::deque<ExchangeEntry> entries_;
  std::size_t started_ = 0;
  std::set<std::size_t> toCancel_;  // numbers of exchanges, from 0
  std::size_t bytes_ = 0;
  std::size_t dropped_ = 0;  // entries from the front whose texts are gone
  std::function<void(const ExchangeEntry&)> listener_;
  std::function<void(const host::ExchangeRequest&, const ExchangeEntry&)> witness_;
};

}  // namespace workbench
