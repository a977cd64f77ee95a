#pragma once

#include <optional>

#include "controller/http/command_server.h"
#include "controller/http/http_message.h"

namespace lamp::controller {

/// The live page: GET / with its scripts and style, GET /street.json (the plan), GET /lamp.json
/// (one lamp, by "node") and GET /events (what changes, as server-sent events).
class LivePage {
 public:
  /// The service must outlive the page.
  explicit LivePage(const Service& service) : service_(service) {}

  /// Whether the answer takes the time to look at every lamp.
  static bool looksAtTheStreet(const HttpHead& head);
  /// Nothing where the page has nothing at this address.
  std::optional<HttpReply> answer(const HttpHead& head);

 private:
  const Service& service_;
};

}  // namespace lamp::controller
