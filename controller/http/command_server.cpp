#include "controller/http/command_server.h"

#include "controller/http/command_desk.h"
#include "controller/http/control_desk.h"
#include "controller/http/http_server.h"
#include "controller/http/live_news.h"
#include "controller/http/live_page.h"
#include "controller/http/visitor_check.h"

namespace lamp::controller {
namespace {

constexpr std::size_t SmallBody = 64UL * 1024;
constexpr std::chrono::seconds SmallBodyTime{30};

}  // namespace

class CommandServer::Impl final : public HttpService {
 public:
  explicit Impl(const Service& service)
      : service_(service),
        visitors_(service.hostNames),
        commands_(service_),
        control_(service_),
        page_(service_),
        news_(service_),
        events_([this](bool restart) { return news_.next(restart); }),
        server_(*this, events_) {}

  HttpServer& server() { return server_; }

  bool admits(const HttpHead& head, std::size_t& mostBytes, std::chrono::seconds& mostTime,
              HttpReply& reply) override {
    mostBytes = SmallBody;
    mostTime = SmallBodyTime;
    if (const std::string fault = visitors_.faultOf(head.host, head.origin); !fault.empty()) {
      reply = HttpReply::text(403, fault);
      return false;
    }
    if (isCommand(head)) return CommandDesk::admits(head, mostBytes, mostTime, reply);
    if (!head.chunked && head.announced <= SmallBody) return true;
    reply = HttpReply::text(413, "Only commands have long bodies.");
    return false;
  }

  bool isQuick(const HttpHead& head) override {
    return !isCommand(head) && !ControlDesk::changes(head) && !LivePage::looksAtTheStreet(head);
  }

  HttpReply answer(HttpRequest& request) override {
    if (isCommand(request.head)) return commands_.answer(request);
    const bool reads = request.head.method == "GET" || request.head.method == "HEAD";
    if (reads && request.head.path == "/health")
      return HttpReply::text(200, service_.controller.statusLine());
    if (auto reply = control_.answer(request.head)) return std::move(*reply);
    if (reads) {
      if (auto reply = page_.answer(request.head)) return std::move(*reply);
    }
    return HttpReply::text(
        404, "There is nothing at this address; commands are at /lampmanager/command/{number}.");
  }

 private:
  static bool isCommand(const HttpHead& head) { return head.path.starts_with(CommandFolder); }

  const Service service_;
  const VisitorCheck visitors_;
  CommandDesk commands_;
  ControlDesk control_;
  LivePage page_;
  LiveNews news_;
  EventFeed events_;
  HttpServer server_;
};

CommandServer::CommandServer(const Service& service) : impl_(std::make_unique<Impl>(service)) {}

CommandServer::~CommandServer() {
  stop();
}

bool CommandServer::start(const std::string& address, int port) {
  return impl_->server().start(address, port);
}

int CommandServer::port() const {
  return impl_->server().port();
}

void CommandServer::stop() {
  impl_->server().stop();
}

}  // namespace lamp::controller
