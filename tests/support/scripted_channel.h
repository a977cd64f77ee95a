#pragma once

#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "host/services/services.h"
#include "tests/support/utf8.h"

namespace support {

/// One command as it went over the channel. Texts are UTF-8.
struct Exchange {
  int command = 0;
  host::CommandKind kind = host::CommandKind::get;
  std::string uri;                                              ///< as it was sent, percent-encoded
  std::vector<std::pair<std::string, std::string>> parameters;  ///< decoded, in their order
  std::string request;  ///< XML in one line without declaration; empty for no root
  host::ExchangeReply::Status status = host::ExchangeReply::Status::succeeded;
  std::string error;

  /// The value of a parameter, empty when it is absent.
  std::string parameter(const std::string& name) const;
};

/// A controller that answers as the test prepared: each exchange takes the next reply. A read
/// without a prepared reply fails the test; a write without one succeeds. A write also succeeds,
/// and takes nothing, while the next reply is a document, which only a read can take.
class ScriptedChannel : public host::CommandChannel {
 public:
  using Answer = std::function<host::ExchangeReply(const Exchange&)>;

  /// The next read is answered with this document. Throws when it is no XML.
  void replyWith(const std::string& xml);
  /// The next read succeeds with a document without root.
  void replyEmpty();
  /// The next write succeeds: for a success before a prepared failure.
  void acceptWrite();
  /// The next exchange fails with this error text, possibly empty.
  void failWith(Utf8 error = "");
  /// The next exchange is cancelled by the user.
  void cancel();
  /// The next exchange is answered by a function.
  void answer(Answer function);

  /// What was exchanged since the beginning or forget().
  const std::vector<Exchange>& exchanges() const { return exchanges_; }
  /// The last exchange; throws when there was none.
  const Exchange& last() const;
  std::size_t count() const { return exchanges_.size(); }
  void forget() { exchanges_.clear(); }
  /// Prepared replies that nothing took yet.
  std::size_t pending() const { return replies_.size(); }

  host::ExchangeReply exchange(const host::ExchangeRequest& request) override;

 private:
  enum class For { reads, writes, all };
  struct Prepared {
    For whom;
    Answer answer;
  };
  Answer take(const Exchange& exchange);

  std::deque<Prepared> replies_;
  std::vector<Exchange> exchanges_;
};

}  // namespace support
