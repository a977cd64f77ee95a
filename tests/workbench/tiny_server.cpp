#include "tests/workbench/tiny_server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <strings.h>
#include <sys/socket.h>
#include <unistd.h>

#include <stdexcept>
#include <utility>

namespace test {
namespace {

// Reads up to the empty line and then as many bytes as the headers announce.
bool readRequest(int socket, TinyRequest& request) {
  std::string data;
  char block[16 * 1024];
  const auto more = [&] {
    const ssize_t count = ::recv(socket, block, sizeof block, 0);
    if (count > 0) data.append(block, static_cast<std::size_t>(count));
    return count > 0;
  };
  std::size_t end = 0;
  while ((end = data.find("\r\n\r\n")) == std::string::npos)
    if (!more()) return false;
  std::size_t at = 0;
  while (at < end) {
    const std::size_t stop = std::min(data.find("\r\n", at), end);
    const std::string line = data.substr(at, stop - at);
    if (request.line.empty())
      request.line = line;
    else
      request.headers.push_back(line);
    at = stop + 2;
  }
  const std::string length = request.header("Content-Length");
  const std::size_t size = length.empty() ? 0 : std::stoul(length);
  while (data.size() < end + 4 + size)
    if (!more()) return false;
  request.body = data.substr(end + 4);
  return true;
}

}  // namespace

std::string TinyRequest::header(const std::string& name) const {
  for (const std::string& header : headers) {
    const std::size_t colon = header.find(':');
    if (colon == name.size() && ::strncasecmp(header.c_str(), name.c_str(), colon) == 0)
      return header.substr(header.find_first_not_of(' ', colon + 1));
  }
  return {};
}

void TinyServer::Connection::send(const std::string& bytes) const {
  std::size_t sent = 0;
  while (sent < bytes.size()) {
    const ssize_t count = ::send(socket_, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
    if (count <= 0) return;
    sent += static_cast<std::size_t>(count);
  }
}

void TinyServer::Connection::hang() const {
  std::unique_lock lock(server_.mutex_);
  server_.released_.wait(lock, [this] { return server_.isReleased_; });
}

TinyServer::TinyServer(Answer answer) : answer_(std::move(answer)) {
  listener_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  auto* any = reinterpret_cast<sockaddr*>(&address);
  if (::bind(listener_, any, size) != 0 || ::listen(listener_, 16) != 0 ||
      ::getsockname(listener_, any, &size) != 0)
    throw std::runtime_error("can't listen on 127.0.0.1");
  port_ = ntohs(address.sin_port);
  thread_ = std::thread([this] { serve(); });
}

TinyServer::~TinyServer() {
  stopping_ = true;
  release();
  ::shutdown(listener_, SHUT_RDWR);
  thread_.join();
  ::close(listener_);
}

void TinyServer::release() {
  const std::lock_guard lock(mutex_);
  isReleased_ = true;
  released_.notify_all();
}

std::vector<TinyRequest> TinyServer::requests() const {
  const std::lock_guard lock(mutex_);
  return requests_;
}

void TinyServer::serve() {
  while (!stopping_) {
    const int socket = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    if (socket < 0) return;
    serveOne(socket);
    ::shutdown(socket, SHUT_WR);
    ::close(socket);
  }
}

void TinyServer::serveOne(int socket) {
  TinyRequest request;
  if (!readRequest(socket, request)) return;
  {
    const std::lock_guard lock(mutex_);
    requests_.push_back(request);
  }
  answer_(request, Connection(*this, socket));
}

std::string TinyServer::reply(const std::string& body, const std::string& status,
                              const std::string& type) {
  return "HTTP/1.1 " + status + "\r\nContent-Type: " + type +
         "\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

}  // namespace test
