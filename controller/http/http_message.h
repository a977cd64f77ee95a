#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace lamp::controller {

/// The head of a request.
struct HttpHead {
  std::string method;
  std::string path;                               ///< as it was sent, up to the "?"
  std::string query;                              ///< as it was sent, behind the "?"
  std::map<std::string, std::string> parameters;  ///< of the query, decoded
  std::string host;
  std::string origin;
  std::string contentType;
  std::string controlToken;
  std::size_t announced = 0;  ///< the length of the body, where one is announced
  bool chunked = false;       ///< it comes in pieces without a length
  bool hasBody() const { return chunked || announced > 0; }

  /// The parameter, or an empty text.
  std::string parameter(const std::string& name) const {
    const auto found = parameters.find(name);
    return found == parameters.end() ? std::string() : found->second;
  }
};

struct HttpRequest {
  HttpHead head;
  std::string body;
};

/// How a connection ends.
enum class Ending {
  Whole,  ///< after the reply
  Half,   ///< after half of the body
  Broken  ///< without a byte of a reply
};

inline constexpr const char* PlainText = "text/plain; charset=utf-8";

/// What is answered.
struct HttpReply {
  int status = 200;
  std::string type;  ///< content type; empty where there is no body
  std::string body;
  std::vector<std::pair<std::string, std::string>> headers{};
  Ending ending = Ending::Whole;
  bool events = false;  ///< the stream of events follows in place of the body

  /// Where set, this is no reply yet: the client waits so long, and this makes the reply then.
  std::function<HttpReply()> afterwards{};
  std::chrono::milliseconds wait{0};

  /// A short text for people.
  static HttpReply text(int status, std::string text) {
    return HttpReply{status, PlainText, std::move(text)};
  }
  static HttpReply broken() {
    HttpReply reply;
    reply.ending = Ending::Broken;
    return reply;
  }
};

/// What a server serves. Called from several threads.
class HttpService {
 public:
  virtual ~HttpService() = default;

  /// Looks at a request before its body comes: false, with the `reply`, where it is refused. Sets
  /// how long the body may be and how long it may take to come.
  virtual bool admits(const HttpHead& head, std::size_t& mostBytes, std::chrono::seconds& mostTime,
                      HttpReply& reply) = 0;
  /// Whether the answer takes no time: it is given at once then, and otherwise by another thread
  /// than the one that serves the connections.
  virtual bool isQuick(const HttpHead& head) = 0;
  virtual HttpReply answer(HttpRequest& request) = 0;
};

}  // namespace lamp::controller
