#include "controller/http/http_server.h"

#include <microhttpd.h>
#include <netdb.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cstring>
#include <list>
#include <mutex>
#include <optional>
#include <thread>

#include "controller/http/link.h"
#include "controller/http/memory_quota.h"
#include "controller/http/worker_pool.h"

namespace lamp::controller {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr std::size_t Mebibyte = 1024UL * 1024UL;
// All lines of a head together, and one of them.
constexpr std::size_t MostHeadBytes = 64UL * 1024;
constexpr std::size_t MostLineBytes = 16UL * 1024;
// The library keeps a head and what it makes of it here, and the piece of a body that just came.
constexpr std::size_t ConnectionMemory = 96UL * 1024;
// Of all requests that are being received or carried out.
constexpr std::size_t BodiesTogether = 1024 * Mebibyte;
// A body that is refused is read to its end all the same, or the client would never see why: up to
// this, the longest body of all.
constexpr std::size_t MostBytesPassedOver = 256 * Mebibyte;
constexpr rlim_t MostConnections = 2048;
constexpr rlim_t OwnDescriptors = 64;
constexpr unsigned Backlog = 1024;
constexpr std::size_t Workers = 32;
constexpr seconds HeadTime{10};
constexpr seconds ReplyTime{600};
// Without a byte to or from the client.
constexpr unsigned SilentSeconds = 30;
constexpr milliseconds Tick{50};
constexpr milliseconds LastReplies{500};

// How many connections the descriptors of this process are enough for.
unsigned mostConnections() {
  rlimit limit{};
  ::getrlimit(RLIMIT_NOFILE, &limit);
  const rlim_t free =
      limit.rlim_cur > 2 * OwnDescriptors ? limit.rlim_cur - OwnDescriptors : OwnDescriptors;
  return static_cast<unsigned>(std::min(free, MostConnections));
}

const char* orEmpty(const char* text) {
  return text == nullptr ? "" : text;
}

// A request from its first line to the end of its reply.
struct Exchange {
  enum class State { Head, Body, Working, Ready };

  explicit Exchange(MemoryQuota& quota) : share(quota) {}

  State state = State::Head;
  HttpRequest request;
  std::size_t mostBytes = 0;
  std::size_t received = 0;
  MemoryQuota::Share share;
  std::optional<HttpReply> reply;
  MHD_Connection* connection = nullptr;
  Link* link = nullptr;
};

// An exchange that waits until it is time to make its reply.
struct Held {
  Exchange* exchange;
  Link::Clock::time_point until;
};

std::uint16_t portOf(MHD_Daemon* daemon) {
  const MHD_DaemonInfo* info = MHD_get_daemon_info(daemon, MHD_DAEMON_INFO_BIND_PORT);
  return info == nullptr ? 0 : info->port;
}

struct HeadSize {
  std::size_t all = 0;
  std::size_t longest = 0;
};

HeadSize sizeOf(const HttpHead& head, MHD_Connection* connection) {
  const std::size_t line = head.method.size() + head.path.size() + head.query.size();
  HeadSize size{line, line};
  MHD_get_connection_values_n(
      connection, MHD_HEADER_KIND,
      [](void* sum, MHD_ValueKind, const char*, std::size_t name, const char*, std::size_t value) {
        auto* total = static_cast<HeadSize*>(sum);
        total->all += name + value + 4;
        total->longest = std::max(total->longest, name + value);
        return MHD_YES;
      },
      &size);
  return size;
}

std::string headerOf(MHD_Connection* connection, const char* name) {
  return orEmpty(MHD_lookup_connection_value(connection, MHD_HEADER_KIND, name));
}

void readHead(HttpHead& head, const char* method, MHD_Connection* connection) {
  head.method = method;
  head.host = headerOf(connection, MHD_HTTP_HEADER_HOST);
  head.origin = headerOf(connection, MHD_HTTP_HEADER_ORIGIN);
  head.contentType = headerOf(connection, MHD_HTTP_HEADER_CONTENT_TYPE);
  head.controlToken = headerOf(connection, "X-Control-Token");
  head.chunked = !headerOf(connection, MHD_HTTP_HEADER_TRANSFER_ENCODING).empty();
  const std::string length = headerOf(connection, MHD_HTTP_HEADER_CONTENT_LENGTH);
  std::from_chars(length.data(), length.data() + length.size(), head.announced);
  MHD_get_connection_values(
      connection, MHD_GET_ARGUMENT_KIND,
      [](void* parameters, MHD_ValueKind, const char* name, const char* value) {
        static_cast<std::map<std::string, std::string>*>(parameters)
            ->emplace(orEmpty(name), orEmpty(value));
        return MHD_YES;
      },
      &head.parameters);
}

// Half of a body, then the end of the connection.
struct HalfBody {
  std::string body;

  static ssize_t read(void* self, std::uint64_t position, char* buffer, std::size_t size) {
    const std::string& body = static_cast<HalfBody*>(self)->body;
    const std::size_t half = body.size() / 2;
    if (position >= half) return MHD_CONTENT_READER_END_WITH_ERROR;
    const std::size_t count = std::min(size, half - static_cast<std::size_t>(position));
    std::memcpy(buffer, body.data() + position, count);
    return static_cast<ssize_t>(count);
  }
  static void close(void* self) { delete static_cast<HalfBody*>(self); }
};

MHD_Response* halfResponse(std::string body) {
  const std::size_t size = body.size();
  return MHD_create_response_from_callback(size, 16 * 1024, HalfBody::read,
                                           new HalfBody{std::move(body)}, HalfBody::close);
}

// The text goes out from where it lies.
MHD_Response* wholeResponse(std::string text) {
  auto* body = new std::string(std::move(text));
  return MHD_create_response_from_buffer_with_free_callback_cls(
      body->size(), body->data(), [](void* kept) { delete static_cast<std::string*>(kept); }, body);
}

}  // namespace

class HttpServer::Impl {
 public:
  Impl(HttpService& service, EventFeed& events) : service_(service), events_(events) {}
  ~Impl() { stop(); }

  bool start(const std::string& address, int port) {
    addrinfo wanted{};
    wanted.ai_flags = AI_PASSIVE;
    wanted.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    if (::getaddrinfo(address.c_str(), std::to_string(port).c_str(), &wanted, &found) != 0)
      return false;
    const std::unique_ptr<addrinfo, void (*)(addrinfo*)> owner(found, ::freeaddrinfo);
    const unsigned most = mostConnections();
    const unsigned family = found->ai_family == AF_INET6 ? unsigned{MHD_USE_IPv6} : 0U;
    daemon_ = MHD_start_daemon(
        MHD_USE_EPOLL_INTERNAL_THREAD | MHD_ALLOW_SUSPEND_RESUME | family, 0, nullptr, nullptr,
        onRequest, this, MHD_OPTION_SOCK_ADDR, found->ai_addr,  //
        MHD_OPTION_CONNECTION_LIMIT, most, MHD_OPTION_PER_IP_CONNECTION_LIMIT, most / 2,
        MHD_OPTION_CONNECTION_MEMORY_LIMIT, ConnectionMemory,  //
        MHD_OPTION_CONNECTION_TIMEOUT, SilentSeconds, MHD_OPTION_LISTEN_BACKLOG_SIZE, Backlog,
        MHD_OPTION_URI_LOG_CALLBACK, onFirstLine, this, MHD_OPTION_NOTIFY_CONNECTION, onConnection,
        this, MHD_OPTION_NOTIFY_COMPLETED, onCompleted, this, MHD_OPTION_END);
    if (daemon_ == nullptr) return false;
    port_ = portOf(daemon_);
    clockwork_ = std::jthread([this](const std::stop_token& stop) { watch(stop); });
    return true;
  }

  int port() const { return port_; }

  void stop() {
    if (daemon_ == nullptr) return;
    const MHD_socket listening = MHD_quiesce_daemon(daemon_);
    if (listening != MHD_INVALID_SOCKET) ::close(listening);
    stopping_ = true;
    clockwork_.request_stop();
    clockwork_.join();
    releaseHeld();
    workers_.stop();
    releaseHeld();
    events_.end();
    // What is answered now is still to reach its client.
    const auto until = Link::Clock::now() + LastReplies;
    while (replying_ > 0 && Link::Clock::now() < until)
      std::this_thread::sleep_for(milliseconds{5});
    MHD_stop_daemon(daemon_);
    daemon_ = nullptr;
  }

 private:
  static Impl& of(void* self) { return *static_cast<Impl*>(self); }

  static void* onFirstLine(void* self, const char* uri, MHD_Connection* connection) {
    auto exchange = std::make_unique<Exchange>(of(self).bodies_);
    const std::string_view whole = uri;
    const std::size_t end = std::min(whole.find('?'), whole.size());
    exchange->request.head.path = whole.substr(0, end);
    exchange->request.head.query = whole.substr(std::min(end + 1, whole.size()));
    exchange->connection = connection;
    const MHD_ConnectionInfo* info =
        MHD_get_connection_info(connection, MHD_CONNECTION_INFO_SOCKET_CONTEXT);
    exchange->link = static_cast<Link*>(info->socket_context);
    return exchange.release();
  }

  static void onConnection(void* self, MHD_Connection* connection, void** context,
                           MHD_ConnectionNotificationCode what) {
    if (what == MHD_CONNECTION_NOTIFY_STARTED) {
      const MHD_ConnectionInfo* info =
          MHD_get_connection_info(connection, MHD_CONNECTION_INFO_CONNECTION_FD);
      auto* link = new Link(info->connect_fd);
      link->expect(HeadTime);
      of(self).links_.add(link);
      *context = link;
    } else {
      auto* link = static_cast<Link*>(*context);
      of(self).links_.remove(link);
      delete link;
    }
  }

  static void onCompleted(void* self, MHD_Connection*, void** context, MHD_RequestTerminationCode) {
    auto* exchange = static_cast<Exchange*>(*context);
    if (exchange == nullptr) return;
    if (exchange->state == Exchange::State::Ready) --of(self).replying_;
    delete exchange;
    *context = nullptr;
  }

  static MHD_Result onRequest(void* self, MHD_Connection*, const char*, const char* method,
                              const char*, const char* data, std::size_t* size, void** context) {
    auto* exchange = static_cast<Exchange*>(*context);
    if (exchange == nullptr) return MHD_NO;
    try {
      return of(self).goOn(*exchange, method, data, *size);
    } catch (const std::exception&) {
      return MHD_NO;
    }
  }

  // Called with each piece of a request, and again when its reply is ready.
  MHD_Result goOn(Exchange& exchange, const char* method, const char* data, std::size_t& size) {
    switch (exchange.state) {
      case Exchange::State::Head:
        exchange.state = Exchange::State::Body;
        return begin(exchange, method);
      case Exchange::State::Body:
        if (size > 0) return takeBody(exchange, data, size);
        exchange.link->expectNothing();
        return exchange.reply ? send(exchange) : carryOut(exchange);
      default:
        return send(exchange);
    }
  }

  MHD_Result begin(Exchange& exchange, const char* method) {
    HttpHead& head = exchange.request.head;
    readHead(head, method, exchange.connection);
    seconds mostTime{0};
    HttpReply refusal;
    const HeadSize size = sizeOf(head, exchange.connection);
    if (size.all > MostHeadBytes || size.longest > MostLineBytes) {
      exchange.reply = HttpReply::text(431, "The head of the request is too long.");
    } else if (!service_.admits(head, exchange.mostBytes, mostTime, refusal)) {
      exchange.reply = std::move(refusal);
    } else if (head.announced > exchange.mostBytes) {
      exchange.reply = tooLong(exchange);
    }
    exchange.link->expect(std::max(mostTime, HeadTime));
    if (!exchange.reply) {
      exchange.request.body.reserve(head.announced);
    } else if (!headerOf(exchange.connection, MHD_HTTP_HEADER_EXPECT).empty()) {
      return send(exchange);  // before the client sends the body for nothing
    }
    return MHD_YES;
  }

  static HttpReply tooLong(const Exchange& exchange) {
    const std::size_t most = exchange.mostBytes;
    const std::string text = most >= Mebibyte ? std::to_string(most / Mebibyte) + " MiB"
                                              : std::to_string(most / 1024) + " KiB";
    return HttpReply::text(413, "The request is larger than " + text + ".");
  }

  MHD_Result takeBody(Exchange& exchange, const char* data, std::size_t& size) {
    exchange.received += size;
    if (exchange.received > MostBytesPassedOver) return MHD_NO;
    if (!exchange.reply && exchange.received > exchange.mostBytes) {
      exchange.reply = tooLong(exchange);
    } else if (!exchange.reply && !exchange.share.take(size)) {
      exchange.reply = HttpReply::text(503, "Too much is being sent at once; send it again.");
    }
    if (exchange.reply) {
      std::string().swap(exchange.request.body);
    } else {
      exchange.request.body.append(data, size);
    }
    size = 0;
    return MHD_YES;
  }

  MHD_Result carryOut(Exchange& exchange) {
    if (service_.isQuick(exchange.request.head)) {
      exchange.reply = service_.answer(exchange.request);
      return send(exchange);
    }
    exchange.state = Exchange::State::Working;
    MHD_suspend_connection(exchange.connection);
    workers_.submit(
        [this, &exchange] { work(exchange, [&] { return service_.answer(exchange.request); }); });
    return MHD_YES;
  }

  void work(Exchange& exchange, const std::function<HttpReply()>& answer) noexcept {
    HttpReply reply;
    try {
      reply = stopping_ ? HttpReply::broken() : answer();
    } catch (const std::exception&) {
      reply = HttpReply::text(500, "The controller failed on this command; send it again.");
    }
    const milliseconds wait = reply.wait;
    const bool waits = static_cast<bool>(reply.afterwards);
    exchange.reply = std::move(reply);
    if (!waits) return finish(exchange);
    const std::lock_guard lock(heldMutex_);
    held_.push_back(Held{&exchange, Link::Clock::now() + wait});
  }

  // Its thread is that of the connections from here on.
  void finish(Exchange& exchange) { MHD_resume_connection(exchange.connection); }

  MHD_Result send(Exchange& exchange) {
    HttpReply& reply = *exchange.reply;
    if (reply.ending == Ending::Broken) return MHD_NO;
    MHD_Response* response = responseOf(exchange, reply);
    if (response == nullptr) return MHD_NO;
    for (const auto& [name, value] : reply.headers)
      MHD_add_response_header(response, name.c_str(), value.c_str());
    if (!reply.type.empty())
      MHD_add_response_header(response, MHD_HTTP_HEADER_CONTENT_TYPE, reply.type.c_str());
    // What a request leaves unread is never taken for a next one.
    MHD_add_response_header(response, MHD_HTTP_HEADER_CONNECTION, "close");
    exchange.state = Exchange::State::Ready;
    ++replying_;
    if (!reply.events) exchange.link->expect(ReplyTime);
    const MHD_Result result =
        MHD_queue_response(exchange.connection, static_cast<unsigned>(reply.status), response);
    MHD_destroy_response(response);
    return result;
  }

  MHD_Response* responseOf(Exchange& exchange, HttpReply& reply) {
    if (reply.events) {
      exchange.link->expectNothing();
      if (MHD_Response* stream = events_.open(exchange.connection)) return stream;
      reply = HttpReply::text(503, "Too many pages are open; close one.\n");
    }
    return reply.ending == Ending::Half ? halfResponse(std::move(reply.body))
                                        : wholeResponse(std::move(reply.body));
  }

  // Ends connections whose time is over, and goes on with exchanges that have waited long enough.
  void watch(const std::stop_token& stop) {
    while (!stop.stop_requested()) {
      std::this_thread::sleep_for(Tick);
      links_.endLate();
      for (Exchange* exchange : dueNow()) {
        workers_.submit([this, exchange] {
          const std::function<HttpReply()> answer = std::move(exchange->reply->afterwards);
          work(*exchange, answer);
        });
      }
    }
  }

  std::vector<Exchange*> dueNow() {
    const auto now = Link::Clock::now();
    std::vector<Exchange*> due;
    const std::lock_guard lock(heldMutex_);
    std::erase_if(held_, [&](const Held& held) {
      const bool over = held.until <= now || !held.exchange->link->clientWaits();
      if (over) due.push_back(held.exchange);
      return over;
    });
    return due;
  }

  void releaseHeld() {
    const std::lock_guard lock(heldMutex_);
    for (const Held& held : held_) {
      held.exchange->reply = HttpReply::broken();
      finish(*held.exchange);
    }
    held_.clear();
  }

  HttpService& service_;
  EventFeed& events_;
  MemoryQuota bodies_{BodiesTogether};
  LinkTable links_;
  std::mutex heldMutex_;
  std::list<Held> held_;
  std::atomic<bool> stopping_ = false;
  std::atomic<int> replying_ = 0;
  int port_ = 0;
  MHD_Daemon* daemon_ = nullptr;
  WorkerPool workers_{Workers};
  std::jthread clockwork_;
};

HttpServer::HttpServer(HttpService& service, EventFeed& events)
    : impl_(std::make_unique<Impl>(service, events)) {}

HttpServer::~HttpServer() = default;

bool HttpServer::start(const std::string& address, int port) {
  return impl_->start(address, port);
}

int HttpServer::port() const {
  return impl_->port();
}

void HttpServer::stop() {
  impl_->stop();
}

}  // namespace lamp::controller
