#include "tests/controller/support/raw_client.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdint>
#include <stdexcept>

namespace lamp::controller::test {

RawClient::RawClient(int port) : descriptor_(::socket(AF_INET, SOCK_STREAM, 0)) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  void* where = &address;
  if (::connect(descriptor_, static_cast<sockaddr*>(where), sizeof address) != 0) {
    throw std::runtime_error("nobody listens");
  }
}

RawClient::~RawClient() {
  ::close(descriptor_);
}

void RawClient::send(const std::string& bytes) const {
  ::send(descriptor_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
}

void RawClient::waitAtMost(long seconds) const {
  const timeval patience{seconds, 0};
  ::setsockopt(descriptor_, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
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

}  // namespace lamp::controller::test
