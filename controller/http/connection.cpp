#include "controller/http/connection.h"

#include <arpa/inet.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/socket.h>

namespace lamp::controller {
namespace {

int portOf(const sockaddr_storage& address) {
  if (address.ss_family == AF_INET) {
    sockaddr_in v4;
    __builtin_memcpy(&v4, &address, sizeof v4);
    return ntohs(v4.sin_port);
  }
  if (address.ss_family != AF_INET6) return -1;
  sockaddr_in6 v6;
  __builtin_memcpy(&v6, &address, sizeof v6);
  return ntohs(v6.sin6_port);
}

constexpr int kMostDescriptors = 4096;

using AddressOf = int (*)(int descriptor, sockaddr* address, socklen_t* length);

// The port of one end of a descriptor's connection; -1 where it is no connection.
int portOf(int descriptor, AddressOf end) {
  sockaddr_storage found{};
  socklen_t length = sizeof found;
  void* address = &found;
  return end(descriptor, static_cast<sockaddr*>(address), &length) == 0 ? portOf(found) : -1;
}

// The library hands out no descriptor, but every open one can be asked for its peer.
int findDescriptor(int clientPort) {
  for (int descriptor = 3; descriptor < kMostDescriptors; ++descriptor) {
    if (portOf(descriptor, ::getpeername) == clientPort) return descriptor;
  }
  return -1;
}

}  // namespace

void breakConnection(int clientPort) {
  const int descriptor = findDescriptor(clientPort);
  if (descriptor >= 0) ::shutdown(descriptor, SHUT_RDWR);
}

void endConnection(int clientPort) {
  const int descriptor = findDescriptor(clientPort);
  if (descriptor < 0) return;
  // Once both ways are shut nothing more can come; what has come is still to be had.
  ::shutdown(descriptor, SHUT_RDWR);
  char unread[4096];
  while (::recv(descriptor, unread, sizeof unread, MSG_DONTWAIT) > 0) {
  }
}

void hearNobody(int ownPort) {
  for (int descriptor = 3; descriptor < kMostDescriptors; ++descriptor) {
    const bool connected = portOf(descriptor, ::getpeername) >= 0;
    if (connected && portOf(descriptor, ::getsockname) == ownPort) ::shutdown(descriptor, SHUT_RD);
  }
}

bool clientWaits(int clientPort) {
  const int descriptor = findDescriptor(clientPort);
  if (descriptor < 0) return false;
  pollfd watched{descriptor, POLLRDHUP, 0};
  ::poll(&watched, 1, 0);
  return (watched.revents & (POLLRDHUP | POLLHUP | POLLERR)) == 0;
}

}  // namespace lamp::controller
