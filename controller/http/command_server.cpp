#include "controller/http/command_server.h"

#include <httplib.h>
#include <sys/socket.h>

#include <algorithm>
#include <charconv>
#include <thread>

#include "controller/http/body_budget.h"
#include "controller/http/connection.h"
#include "controller/http/control_desk.h"
#include "controller/http/faulty_reply.h"
#include "controller/http/live_page.h"
#include "controller/http/patience.h"
#include "controller/http/visitor_check.h"

namespace lamp::controller {
namespace {

constexpr std::size_t kMebibyte = 1024U * 1024U;
constexpr std::size_t kSmallBody = 64 * 1024;
constexpr std::size_t kBodyLimit = 64 * kMebibyte;
// A firmware travels as base64 inside its document.
constexpr std::size_t kFirmwareLimit = 256 * kMebibyte;
// Of all requests that are being received or carried out.
constexpr std::size_t kBodiesTogether = 1024 * kMebibyte;
constexpr int kFirmwareCommand = 52;
constexpr std::size_t kThreads = 96;
constexpr int kBacklog = 256;
// What a request leaves unread (a body that is refused, a line that is too long) would be taken for
// the next one on its connection, and a form of a foreign page could have made that up.
constexpr std::size_t kRequestsPerConnection = 1;
constexpr const char* kPlainText = "text/plain; charset=utf-8";

// The text is shown to a user as it stands, so nothing is put behind it.
void answer(httplib::Response& response, int status, const std::string& text) {
  response.status = status;
  response.set_content(text, kPlainText);
}

bool hasBody(const httplib::Request& request) {
  const std::string length = request.get_header_value("Content-Length");
  return request.has_header("Transfer-Encoding") ||
         length.find_first_not_of('0') != std::string::npos;
}

// The number in the path, or -1 where the path holds something else.
int commandNumber(const std::string& text) {
  int number = -1;
  const auto end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, number);
  return result.ec == std::errc() && result.ptr == end && number >= 0 ? number : -1;
}

// The library's own choice would let a second controller share the port of the first.
void allowQuickRestart(socket_t socket) {
  const int yes = 1;
  ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
}

// The library listens with a queue of five, which fifty clients at once overrun.
class PatientServer final : public httplib::Server {
 public:
  void lengthenQueue() const { ::listen(svr_sock_, kBacklog); }
};

}  // namespace

class CommandServer::Impl {
 public:
  explicit Impl(const Service& service)
      : service_(service),
        visitors_(service.hostNames),
        desk_(service_),
        page_(service_, patience_) {
    server_.new_task_queue = [] { return new httplib::ThreadPool(kThreads); };
    server_.set_socket_options(allowQuickRestart);
    server_.set_tcp_nodelay(true);
    server_.set_keep_alive_max_count(kRequestsPerConnection);
    server_.set_read_timeout(30);
    server_.set_write_timeout(30);
    server_.set_payload_max_length(kFirmwareLimit);
    receiveVisitors();
    forgetWhatIsLeftUnread();
    addCommands();
    addPlainPages();
    desk_.install(server_);
    page_.install(server_);
    addFailures();
  }

  bool start(const std::string& address, int port) {
    const int bound = port == 0 ? server_.bind_to_any_port(address)
                                : (server_.bind_to_port(address, port) ? port : -1);
    if (bound <= 0) return false;
    server_.lengthenQueue();
    port_ = bound;
    thread_ = std::thread([this] { server_.listen_after_bind(); });
    return true;
  }

  int port() const { return port_; }

  void stop() {
    if (!thread_.joinable()) return;
    // A stop before the thread has begun to listen would be lost.
    while (!server_.is_running()) std::this_thread::yield();
    patience_.end();
    server_.stop();
    hearNobody(port_);
    thread_.join();
  }

 private:
  static constexpr const char* kCommandFolder = "/lampmanager/command/";
  static constexpr const char* kCommandPath = R"(/lampmanager/command/([^/]*))";

  void receiveVisitors() {
    server_.set_pre_routing_handler([this](const httplib::Request& request,
                                           httplib::Response& response) {
      bodyWasRead_ = false;
      const std::string fault =
          visitors_.faultOf(request.get_header_value("Host"), request.get_header_value("Origin"));
      if (!fault.empty()) {
        answer(response, 403, fault);
        return httplib::Server::HandlerResponse::Handled;
      }
      if (isTooLongForItsPlace(request)) {
        answer(response, 413, "Only commands have long bodies.");
        return httplib::Server::HandlerResponse::Handled;
      }
      giveALength(request);
      return httplib::Server::HandlerResponse::Unhandled;
    });
  }

  // The library reads the body of any other request as a whole, whatever it is for.
  static bool isTooLongForItsPlace(const httplib::Request& request) {
    if (request.path.starts_with(kCommandFolder)) return false;
    return request.has_header("Transfer-Encoding") ||
           request.get_header_value<std::uint64_t>("Content-Length") > kSmallBody;
  }

  // A request without a length has no body; the library would wait for the connection to end.
  static void giveALength(const httplib::Request& request) {
    if (!request.has_header("Content-Length") && !request.has_header("Transfer-Encoding")) {
      const_cast<httplib::Request&>(request).set_header("Content-Length", "0");
    }
  }

  // A connection that is closed while bytes of a body lie unread is reset, and the answer may be
  // lost with it. The library calls this when the answer is written.
  void forgetWhatIsLeftUnread() {
    server_.set_logger([](const httplib::Request& request, const httplib::Response&) {
      if (hasBody(request) && !bodyWasRead_) endConnection(request.remote_port);
    });
  }

  void addCommands() {
    server_.Post(kCommandPath, [this](const httplib::Request& request, httplib::Response& response,
                                      const httplib::ContentReader& reader) {
      receiveCommand(request, response, reader);
    });
    const auto wrongMethod = [](const httplib::Request&, httplib::Response& response) {
      response.set_header("Allow", "POST");
      answer(response, 405, "Commands are sent with POST.");
    };
    server_.Get(kCommandPath, wrongMethod);
    server_.Put(kCommandPath, wrongMethod);
    server_.Delete(kCommandPath, wrongMethod);
    server_.Patch(kCommandPath, wrongMethod);
  }

  void addPlainPages() {
    server_.Get("/health", [this](const httplib::Request&, httplib::Response& response) {
      response.set_content(service_.controller.statusLine(), kPlainText);
    });
  }

  void addFailures() {
    server_.set_exception_handler(
        [](const httplib::Request&, httplib::Response& response, const std::exception_ptr&) {
          answer(response, 500, "The controller failed on this command; send it again.");
        });
    server_.set_error_handler([](const httplib::Request& request, httplib::Response& response) {
      if (!response.body.empty()) return;
      if (response.status == 404) {
        answer(response, 404,
               "There is nothing at this address; commands are at /lampmanager/command/{number}.");
      } else if (response.status == 413) {
        answer(response, 413, "The request is larger than " + limitText(kFirmwareLimit) + ".");
      } else if (request.method.empty() || response.status >= 400) {
        answer(response, response.status, "The request could not be understood.");
      }
    });
  }

  static std::string limitText(std::size_t limit) {
    return std::to_string(limit / kMebibyte) + " MiB";
  }

  // Reads the whole body, so that the connection stays usable, but keeps no more than the limit,
  // and unpacks no more of a packed one than the largest limit. False when the body was longer or
  // did not arrive.
  static bool readBody(const httplib::ContentReader& reader, std::size_t announced,
                       std::size_t limit, BodyBudget::Share& share, std::string& body,
                       bool& tooLarge) {
    tooLarge = false;
    body.reserve(std::min(announced, limit));
    std::size_t received = 0;
    return reader([&](const char* data, std::size_t size) {
      received += size;
      if (received > limit) tooLarge = true;
      if (!tooLarge && !share.take(size)) return false;
      if (!tooLarge) body.append(data, size);
      return received <= kFirmwareLimit;
    });
  }

  void receiveCommand(const httplib::Request& request, httplib::Response& response,
                      const httplib::ContentReader& reader) {
    if (request.is_multipart_form_data()) {
      return answer(response, 415, "A command is one XML document; send it as application/xml.");
    }
    const int command = commandNumber(request.matches[1]);
    const std::size_t limit = command == kFirmwareCommand ? kFirmwareLimit : kBodyLimit;
    const auto announced =
        static_cast<std::size_t>(request.get_header_value<std::uint64_t>("Content-Length"));
    BodyBudget::Share share(bodies_);
    std::string body;
    bool tooLarge = false;
    const bool whole = readBody(reader, announced, limit, share, body, tooLarge);
    bodyWasRead_ = whole;
    if (tooLarge || response.status == 413) {
      return answer(response, 413, "The request is larger than " + limitText(limit) + ".");
    }
    if (share.refused()) {
      return answer(response, 503, "Too much is being sent at once; send it again.");
    }
    if (!whole) {
      return answer(response, 400, "The body of the request did not arrive whole.");
    }
    if (command < 0) return answer(response, 404, "A command is a number.");
    perform(command, std::move(body), request, response);
  }

  static bool isWrite(int command) {
    return command == 2 || command == 9 || command == 30 || command == kFirmwareCommand;
  }

  // Waits as long as the faults say. False when the client is to get no answer at all.
  bool waitAsOrdered(const std::vector<Fault>& faults, const httplib::Request& request) {
    if (const Fault* delay = findFault(faults, FaultKind::Delay)) {
      patience_.wait(std::chrono::seconds{delay->number}, [] { return true; });
    }
    if (const Fault* hold = findFault(faults, FaultKind::NoAnswer)) {
      patience_.wait(std::chrono::seconds{hold->number},
                     [&] { return clientWaits(request.remote_port); });
      return false;
    }
    return true;
  }

  // The refusal that the faults put in place of the controller's own answer.
  static std::optional<Refusal> refusalAsOrdered(const std::vector<Fault>& faults) {
    if (const Fault* fault = findFault(faults, FaultKind::Refuse)) {
      return Refusal{422, fault->argument.empty() ? "Refused on request." : fault->argument};
    }
    if (findFault(faults, FaultKind::RefuseEverySecondWrite) != nullptr) {
      return Refusal{422, "Every second write is refused on request. Nothing was changed."};
    }
    return std::nullopt;
  }

  Reply carryOut(int command, std::string body, const std::vector<Fault>& faults) {
    if (const Fault* jump = findFault(faults, FaultKind::ClockJump)) {
      service_.clock.jump(std::chrono::seconds{jump->number});
    }
    if (const auto refusal = refusalAsOrdered(faults)) return Reply::refusal(*refusal);
    return service_.controller.perform(command, std::move(body));
  }

  void perform(int command, std::string body, const httplib::Request& request,
               httplib::Response& response) {
    const std::vector<Fault> faults = service_.faults.take(command, isWrite(command));
    if (!waitAsOrdered(faults, request)) return breakConnection(request.remote_port);
    if (findFault(faults, FaultKind::RestartMidCommand) != nullptr) {
      service_.restart();
      return breakConnection(request.remote_port);
    }
    ShownText shown(body);
    Reply reply = carryOut(command, std::move(body), faults);
    record(command, std::move(shown), request, reply);
    if (findFault(faults, FaultKind::ApplyLoseReply) != nullptr) {
      return breakConnection(request.remote_port);
    }
    spoilReply(faults, reply);
    send(std::move(reply), findFault(faults, FaultKind::CloseMidReply) != nullptr, response);
  }

  void record(int command, ShownText body, const httplib::Request& request, const Reply& reply) {
    LoggedCommand entry;
    entry.command = command;
    entry.date = service_.controller.date();
    const std::size_t query = request.target.find('?');
    if (query != std::string::npos) {
      entry.parameters = ShownText(std::string_view(request.target).substr(query + 1));
    }
    entry.request = std::move(body);
    entry.status = reply.status;
    entry.reply = ShownText(reply.body);
    service_.log.add(std::move(entry));
  }

  static void send(Reply reply, bool onlyHalf, httplib::Response& response) {
    response.status = reply.status;
    if (onlyHalf) {
      if (reply.body.empty()) reply.body = "<deviceCfg/>";
      const std::size_t length = reply.body.size();
      response.set_content_provider(
          length, "application/xml",
          [body = std::move(reply.body)](std::size_t, std::size_t, httplib::DataSink& sink) {
            sink.write(body.data(), body.size() / 2);
            return false;
          });
    } else if (!reply.type.empty()) {
      response.set_content(std::move(reply.body), reply.type);
    }
  }

  // Of the request on which this thread works.
  static inline thread_local bool bodyWasRead_ = false;

  const Service service_;
  const VisitorCheck visitors_;
  BodyBudget bodies_{kBodiesTogether};
  Patience patience_;
  ControlDesk desk_;
  LivePage page_;
  PatientServer server_;
  std::thread thread_;
  int port_ = 0;
};

CommandServer::CommandServer(const Service& service) : impl_(std::make_unique<Impl>(service)) {}

CommandServer::~CommandServer() {
  stop();
}

bool CommandServer::start(const std::string& address, int port) {
  return impl_->start(address, port);
}

int CommandServer::port() const {
  return impl_->port();
}

void CommandServer::stop() {
  impl_->stop();
}

}  // namespace lamp::controller
