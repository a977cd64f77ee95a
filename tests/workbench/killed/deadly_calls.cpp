#include "tests/workbench/killed/deadly_calls.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/types.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdarg>
#include <stdexcept>

namespace {

enum class Call : std::size_t { open, write, fsync, close, link, rename, unlink };
constexpr std::array<const char*, 7> Names = {"open", "write",  "fsync", "close",
                                              "link", "rename", "unlink"};

/// Lies in memory that a child process shares with the one that forked it.
struct Count {
  std::array<long, Names.size()> calls;
  long moments;
};

bool armed = false;
long fatal = 0;

// Made before anybody forks.
Count* const shared = [] {
  void* memory =
      ::mmap(nullptr, sizeof(Count), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) throw std::runtime_error("no shared memory");
  return static_cast<Count*>(memory);
}();

void dieIfFatal() {
  if (++shared->moments == fatal) ::kill(::getpid(), SIGKILL);
}

void enter(Call call) {
  if (!armed) return;
  ++shared->calls[static_cast<std::size_t>(call)];
  dieIfFatal();
}

template <class Function>
Function* next(Call call) {
  return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, Names[static_cast<std::size_t>(call)]));
}

}  // namespace

namespace test {

void DeadlyCalls::arm(long fatalMoment) {
  *shared = {};
  fatal = fatalMoment;
  armed = true;
}

std::map<std::string, long> DeadlyCalls::counted() {
  std::map<std::string, long> counts;
  for (std::size_t i = 0; i < Names.size(); ++i)
    if (shared->calls[i] > 0) counts[Names[i]] = shared->calls[i];
  return counts;
}

}  // namespace test

// The library hides what it does not export; these must be seen by the libraries.
#define DEADLY extern "C" __attribute__((visibility("default")))

DEADLY int open(const char* path, int flags, ...) {
  static auto* const real = next<int(const char*, int, ...)>(Call::open);
  mode_t mode = 0;
  if ((flags & O_CREAT) != 0) {
    va_list more;
    va_start(more, flags);
    mode = va_arg(more, mode_t);
    va_end(more);
  }
  enter(Call::open);
  return real(path, flags, mode);
}

DEADLY ssize_t write(int descriptor, const void* block, size_t size) {
  static auto* const real = next<ssize_t(int, const void*, size_t)>(Call::write);
  enter(Call::write);
  if (!armed || size < 2) return real(descriptor, block, size);
  const ssize_t half = real(descriptor, block, size / 2);
  if (half < 0) return half;
  dieIfFatal();
  return half;  // the caller writes the rest
}

DEADLY int fsync(int descriptor) {
  static auto* const real = next<int(int)>(Call::fsync);
  enter(Call::fsync);
  return real(descriptor);
}

DEADLY int close(int descriptor) {
  static auto* const real = next<int(int)>(Call::close);
  enter(Call::close);
  return real(descriptor);
}

DEADLY int link(const char* from, const char* to) noexcept {
  static auto* const real = next<int(const char*, const char*)>(Call::link);
  enter(Call::link);
  return real(from, to);
}

DEADLY int rename(const char* from, const char* to) noexcept {
  static auto* const real = next<int(const char*, const char*)>(Call::rename);
  enter(Call::rename);
  return real(from, to);
}

DEADLY int unlink(const char* path) noexcept {
  static auto* const real = next<int(const char*)>(Call::unlink);
  enter(Call::unlink);
  return real(path);
}
