#pragma once

#include <atomic>

namespace httplib {
class Server;
struct Request;
struct Response;
}  // namespace httplib

namespace lamp::controller {

class Patience;
struct Service;

/// The live page: GET / with its scripts and style, GET /street.json (the plan), GET /lamp.json
/// (one lamp, by "node") and GET /events (what changes, as server-sent events).
class LivePage {
 public:
  /// Both must outlive the page.
  LivePage(const Service& service, Patience& patience) : service_(service), patience_(patience) {}

  void install(httplib::Server& server);

 private:
  void serveFiles(httplib::Server& server);
  void streamEvents(httplib::Response& response);

  const Service& service_;
  Patience& patience_;
  std::atomic<int> viewers_ = 0;
};

}  // namespace lamp::controller
