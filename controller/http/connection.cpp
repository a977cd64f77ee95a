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

// The library hands out no descriptor, but every open one can be asked for its peer.
int findDescriptor(int clientPort) {
  constexpr int kMostDescriptors = 4096;
  for (int descriptor = 3; descriptor < kMostDescriptors; ++descriptor) {
    sockaddr_storage peer{};
    socklen_t length = sizeof peer;
    void* address = &peer;
    if (::getpeername(descriptor, static_cast<sockaddr*>(address), &length) == 0 &&
        portOf(peer) == clientPort) {
      return descriptor;
    }
  }
  return -1;
}

}  // namespace

void breakConnection(int clientPort) {
  const int descriptor = findDescriptor(clientPort);
  if (descriptor >= 0) ::shutdown(descriptor, SHUT_RDWR);
}

bool clientWaits(int clientPort) {
  const int descriptor = findDescriptor(clientPort);
  if (descriptor < 0) return false;
  pollfd watched{descriptor, POLLRDHUP, 0};
  ::poll(&watched, 1, 0);
  return (watched.revents & (POLLRDHUP | POLLHUP | POLLERR)) == 0;
}

}  // namespace lamp::controller
