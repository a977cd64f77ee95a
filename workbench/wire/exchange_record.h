#pragma once

#include <chrono>
#include <cstddef>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>

#include "host/services/services.h"
#include "workbench/wire/kept_document.h"
#include "workbench/wire/secrets.h"

namespace workbench {

/// One exchange as it is kept: texts in UTF-8, secrets masked.
struct ExchangeEntry {
  std::size_t number = 0;  ///< from 1, in the order in which they ended
  int command = 0;
  host::CommandKind kind = host::CommandKind::get;
  std::string uri;       ///< the URI parameters
  std::string section;   ///< the section that the request was about, "L04"; empty for none
  KeptDocument request;  ///< the document sent
  KeptDocument reply;    ///< the document received by a read
  bool ok = false;
  std::string error;  ///< the text of a failure; for a cancelled exchange the text that says so
  std::chrono::milliseconds took{};  ///< from the sending to the answer
  /// What is known of the secrets of this controller; never null in the record.
  std::shared_ptr<const Secrets> secrets = std::make_shared<const Secrets>();
};

/// What a record keeps.
struct RecordLimits {
  /// Memory of all documents together, as memoryOf() counts it; those of the oldest exchanges go
  /// first. A document that is larger on its own is not kept.
  std::size_t bytes = 256U * 1024 * 1024;
  /// The longest text of an element in the upload of a firmware, in characters; a longer one is
  /// cut.
  std::size_t firmwareText = 4U * 1024 * 1024;
  /// Controllers whose secrets are remembered; the one that was used least recently is forgotten.
  std::size_t controllers = 1'024;
};

/// Keeps what passes through a command channel, and keeps secrets out of what is told of it: of
/// the texts of failures and of everything that is on record.
class ExchangeRecord : public host::CommandChannel {
 public:
  /// Records what passes to @p channel, which must outlive the record.
  explicit ExchangeRecord(host::CommandChannel& channel, RecordLimits limits = {})
      : channel_(channel), limits_(limits) {}

  host::ExchangeReply exchange(const host::ExchangeRequest& request) override;

  /// All exchanges since the start, the entry with number n at n - 1.
  const std::deque<ExchangeEntry>& entries() const { return entries_; }
  /// What the documents on record count together.
  std::size_t bytes() const { return bytes_; }

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
  struct Controller {
    std::shared_ptr<Secrets> secrets;
    std::size_t lastUsed = 0;
  };
  std::shared_ptr<Secrets> secretsOf(const std::string& address);
  void keep(const host::ExchangeRequest& request, const host::ExchangeReply& reply,
            std::shared_ptr<const Secrets> secrets, std::chrono::milliseconds took);
  KeptDocument copyOf(const XmlDocument& document, int command,
                      const std::shared_ptr<const Secrets>& secrets, std::size_t room) const;
  void dropOldDocuments();

  host::CommandChannel& channel_;
  RecordLimits limits_;
  std::deque<ExchangeEntry> entries_;
  std::map<std::string, Controller> controllers_;  // by address
  std::size_t started_ = 0;
  std::set<std::size_t> toCancel_;  // numbers of exchanges, from 0
  std::size_t bytes_ = 0;
  std::size_t dropped_ = 0;  // entries from the front whose documents are gone
  std::function<void(const ExchangeEntry&)> listener_;
  std::function<void(const host::ExchangeRequest&, const ExchangeEntry&)> witness_;
};

}  // namespace workbench
