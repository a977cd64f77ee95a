// Stands between a program and the system's network and file calls and lets some of them fail.
//
// Preloaded into the program. The plan lies in a file that the environment variable FAILING_CALLS
// names; the test maps the same file, so it may change the plan while the program runs, and read
// how often each call was made. Network calls are those on Internet sockets; file calls are those
// that change regular files and folders.

#include <dlfcn.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace {

// The order is that of the test's list of names.
enum class Call : std::int32_t {
  none = -1,
  socket,
  connect,
  send,
  recv,
  poll,
  open,
  write,
  fsync,
  link,
  rename,
  mkdir,
};
constexpr int Calls = 11;

/// What fails, and what was counted. Numbers in the machine's own order.
struct Plan {
  std::int32_t call;    ///< the call that the plan is for, -1 for none
  std::int32_t first;   ///< the first one that is touched, from 1
  std::int32_t last;    ///< the last one that is touched
  std::int32_t error;   ///< errno of the failure; 0 for an end of the stream, or none with bytes
  std::int32_t bytes;   ///< send, recv, write: at most so many bytes are moved; -1 for any number
  std::int32_t spared;  ///< so many requests, from the first, are left alone with their calls
  std::atomic<std::int64_t> made[Calls];  ///< since the test set them to 0, spared ones left out
  std::atomic<std::int64_t> requests;     ///< that were begun since the test set it to 0
};

Plan* mapPlan() {
  const char* path = std::getenv("FAILING_CALLS");
  if (path == nullptr) return nullptr;
  const int file = ::open(path, O_RDWR | O_CLOEXEC);
  if (file < 0) return nullptr;
  void* memory = ::mmap(nullptr, sizeof(Plan), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
  ::close(file);
  return memory == MAP_FAILED ? nullptr : static_cast<Plan*>(memory);
}

Plan* const plan = mapPlan();

template <class Function>
Function* next(const char* name) {
  return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

// Whether the calls of the request that is being made are left alone. Its connection is made before
// it begins.
bool isSpared(Call call, bool beginsRequest) {
  if (plan->spared == 0 || call > Call::poll) return false;
  if (beginsRequest) return plan->requests <= plan->spared;
  const bool connecting = call == Call::socket || call == Call::connect;
  return connecting ? plan->requests < plan->spared : plan->requests <= plan->spared;
}

// What one call is to do.
struct Order {
  bool fails = false;
  int error = 0;
  std::int32_t bytes = -1;
};

Order enter(Call call, bool beginsRequest = false) {
  if (plan == nullptr) return {};
  if (beginsRequest) ++plan->requests;
  if (isSpared(call, beginsRequest)) return {};
  const auto index = static_cast<std::int32_t>(call);
  const std::int64_t number = ++plan->made[index];
  if (plan->call != index || number < plan->first || number > plan->last) return {};
  // Some bytes first, the failure with the next call.
  if (plan->bytes >= 0 && (plan->error == 0 || number == plan->first))
    return {.fails = false, .error = 0, .bytes = plan->bytes};
  return {.fails = true, .error = plan->error};
}

int failed(const Order& order) {
  errno = order.error;
  return order.error == 0 ? 0 : -1;
}

std::size_t atMost(const Order& order, std::size_t size) {
  return order.bytes < 0 ? size : std::min(size, static_cast<std::size_t>(order.bytes));
}

bool isInternet(int descriptor) {
  int domain = 0;
  socklen_t size = sizeof domain;
  return ::getsockopt(descriptor, SOL_SOCKET, SO_DOMAIN, &domain, &size) == 0 &&
         (domain == AF_INET || domain == AF_INET6);
}

bool anyInternet(const pollfd* descriptors, nfds_t count) {
  return std::any_of(descriptors, descriptors + count,
                     [](const pollfd& each) { return isInternet(each.fd); });
}

bool isFile(int descriptor) {
  struct stat status {};
  return ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

int opened(const char* name, const char* path, int flags, mode_t mode) {
  auto* const real = next<int(const char*, int, ...)>(name);
  if ((flags & O_CREAT) == 0) return real(path, flags, mode);
  const Order order = enter(Call::open);
  return order.fails ? failed(order) : real(path, flags, mode);
}

}  // namespace

#define FAILING extern "C" __attribute__((visibility("default")))

FAILING int socket(int domain, int type, int protocol) noexcept {
  static auto* const real = next<int(int, int, int)>("socket");
  if (domain != AF_INET && domain != AF_INET6) return real(domain, type, protocol);
  const Order order = enter(Call::socket);
  return order.fails ? failed(order) : real(domain, type, protocol);
}

FAILING int connect(int descriptor, const sockaddr* address, socklen_t size) {
  static auto* const real = next<int(int, const sockaddr*, socklen_t)>("connect");
  if (!isInternet(descriptor)) return real(descriptor, address, size);
  const Order order = enter(Call::connect);
  return order.fails ? failed(order) : real(descriptor, address, size);
}

FAILING ssize_t send(int descriptor, const void* block, size_t size, int flags) {
  static auto* const real = next<ssize_t(int, const void*, size_t, int)>("send");
  if (!isInternet(descriptor)) return real(descriptor, block, size, flags);
  const std::string_view sent(static_cast<const char*>(block), size);
  const Order order = enter(Call::send, sent.starts_with("POST "));
  return order.fails ? failed(order) : real(descriptor, block, atMost(order, size), flags);
}

FAILING ssize_t recv(int descriptor, void* block, size_t size, int flags) {
  static auto* const real = next<ssize_t(int, void*, size_t, int)>("recv");
  if (!isInternet(descriptor)) return real(descriptor, block, size, flags);
  // What fails is the taking of bytes that have come: the other side has done its work by then.
  char byte = 0;
  if (size > 0 && real(descriptor, &byte, 1, MSG_PEEK | MSG_DONTWAIT) < 0)
    return real(descriptor, block, size, flags);
  const Order order = enter(Call::recv);
  return order.fails ? failed(order) : real(descriptor, block, atMost(order, size), flags);
}

FAILING int poll(pollfd* descriptors, nfds_t count, int timeout) {
  static auto* const real = next<int(pollfd*, nfds_t, int)>("poll");
  if (!anyInternet(descriptors, count)) return real(descriptors, count, timeout);
  const Order order = enter(Call::poll);
  return order.fails ? failed(order) : real(descriptors, count, timeout);
}

FAILING int open(const char* path, int flags, ...) {
  va_list more;
  va_start(more, flags);
  const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(more, mode_t) : 0;
  va_end(more);
  return opened("open", path, flags, mode);
}

FAILING int open64(const char* path, int flags, ...) {
  va_list more;
  va_start(more, flags);
  const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(more, mode_t) : 0;
  va_end(more);
  return opened("open64", path, flags, mode);
}

FAILING ssize_t write(int descriptor, const void* block, size_t size) {
  static auto* const real = next<ssize_t(int, const void*, size_t)>("write");
  if (!isFile(descriptor)) return real(descriptor, block, size);
  const Order order = enter(Call::write);
  return order.fails ? failed(order) : real(descriptor, block, atMost(order, size));
}

FAILING int fsync(int descriptor) {
  static auto* const real = next<int(int)>("fsync");
  const Order order = enter(Call::fsync);
  return order.fails ? failed(order) : real(descriptor);
}

FAILING int link(const char* from, const char* to) noexcept {
  static auto* const real = next<int(const char*, const char*)>("link");
  const Order order = enter(Call::link);
  return order.fails ? failed(order) : real(from, to);
}

FAILING int rename(const char* from, const char* to) noexcept {
  static auto* const real = next<int(const char*, const char*)>("rename");
  const Order order = enter(Call::rename);
  return order.fails ? failed(order) : real(from, to);
}

FAILING int mkdir(const char* path, mode_t mode) noexcept {
  static auto* const real = next<int(const char*, mode_t)>("mkdir");
  const Order order = enter(Call::mkdir);
  return order.fails ? failed(order) : real(path, mode);
}
