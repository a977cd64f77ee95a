#include "tests/controller/support/raw_client.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include <stdexcept>

namespace lamp::controller::test {
namespace {

sockaddr_in addressOf(const std::string& host, int port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  ::inet_pton(AF_INET, host.c_str(), &address.sin_addr);
  return address;
}

const sockaddr* plain(const sockaddr_in& address) {
  const void* bytes = &address;
  return static_cast<const sockaddr*>(bytes);
}

}  // namespace

RawClient::RawClient(int port, const std::string& own, int ownPort)
    : descriptor_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  const int yes = 1;
  ::setsockopt(descriptor_, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
  const sockaddr_in from = addressOf(own, ownPort);
  const sockaddr_in to = addressOf("127.0.0.1", port);
  if (::bind(descriptor_, plain(from), sizeof from) != 0 ||
      ::connect(descriptor_, plain(to), sizeof to) != 0)
    throw std::runtime_error("can't connect to the port");
}

RawClient::~RawClient() {
  ::close(descriptor_);
}

bool RawClient::send(const std::string& bytes) const {
  return ::send(descriptor_, bytes.data(), bytes.size(), MSG_NOSIGNAL) ==
         static_cast<ssize_t>(bytes.size());
}

void RawClient::waitAtMost(long seconds) const {
  const timeval limit{seconds, 0};
  ::setsockopt(descriptor_, SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
}

std::string RawClient::receive() const {
  waitAtMost(30);
  std::string answer;
  char piece[4096];
  for (ssize_t count = 0; (count = ::recv(descriptor_, piece, sizeof piece, 0)) > 0;) {
    answer.append(piece, static_cast<std::size_t>(count));
    waitAtMost(1);
  }
  return answer;
}

bool RawClient::receiveUntil(const std::string& mark) const {
  waitAtMost(10);
  std::string text;
  char piece[4096];
  for (ssize_t count = 0; (count = ::recv(descriptor_, piece, sizeof piece, 0)) > 0;) {
    text.append(piece, static_cast<std::size_t>(count));
    if (text.find(mark) != std::string::npos) return true;
  }
  return false;
}

void RawClient::reset() {
  const linger none{1, 0};
  ::setsockopt(descriptor_, SOL_SOCKET, SO_LINGER, &none, sizeof none);
  ::close(descriptor_);
  descriptor_ = -1;
}

int RawClient::ownPort() const {
  sockaddr_in own{};
  socklen_t length = sizeof own;
  void* bytes = &own;
  ::getsockname(descriptor_, static_cast<sockaddr*>(bytes), &length);
  return ntohs(own.sin_port);
}

}  // namespace lamp::controller::test
