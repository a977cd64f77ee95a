#pragma once

#include <string>

namespace lamp::controller::test {

/// What a server answered; `status` is 0 when there was no answer, and `fault` says why.
struct HttpAnswer {
  long status = 0;
  std::string type;
  std::string body;
  std::string fault;
};

/// Sends one request with a client library of its own. `seconds` is the longest wait. The method
/// "POST-WITHOUT-LENGTH" is a POST without body and without the header that says so.
HttpAnswer httpSend(const std::string& method, const std::string& url, const std::string& body,
                    const std::string& contentType = "application/xml", long seconds = 30,
                    const std::string& header = "Expect:");

/// A command of the controller at `base` ("http://127.0.0.1:8080").
HttpAnswer httpCommand(const std::string& base, int number, const std::string& body);

/// A request of the simulation's control, with its token.
HttpAnswer httpControl(const std::string& address, const std::string& token = "test-token");

/// A plain read of an address.
HttpAnswer httpGet(const std::string& url);

/// A client that sends one request after the other over one connection, as long as the server keeps
/// that open.
class HttpConnection {
 public:
  /// `base` is "http://127.0.0.1:8080".
  explicit HttpConnection(std::string base);
  ~HttpConnection();
  HttpConnection(const HttpConnection&) = delete;
  HttpConnection& operator=(const HttpConnection&) = delete;

  /// The server is at another address from now on.
  void moveTo(std::string base) { base_ = std::move(base); }

  HttpAnswer get(const std::string& path);
  HttpAnswer command(int number, const std::string& body);

 private:
  std::string base_;
  void* curl_;
};

}  // namespace lamp::controller::test
