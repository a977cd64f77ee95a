#include "controller/http/link.h"

#include <poll.h>
#include <sys/socket.h>

namespace lamp::controller {

bool Link::clientWaits() const {
  pollfd watched{descriptor, POLLRDHUP, 0};
  ::poll(&watched, 1, 0);
  return (watched.revents & (POLLRDHUP | POLLHUP | POLLERR)) == 0;
}

void LinkTable::add(Link* link) {
  const std::lock_guard lock(mutex_);
  links_.insert(link);
}

void LinkTable::remove(Link* link) {
  const std::lock_guard lock(mutex_);
  links_.erase(link);
}

// A link is taken out of the table before its descriptor is closed, so that no other connection can
// have got its number.
void LinkTable::endLate() {
  const Link::Clock::time_point now = Link::Clock::now();
  const std::lock_guard lock(mutex_);
  for (Link* link : links_) {
    if (link->deadline.load() > now) continue;
    ::shutdown(link->descriptor, SHUT_RDWR);
    link->expectNothing();
  }
}

}  // namespace lamp::controller
