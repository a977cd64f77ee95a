#pragma once

#include <unistd.h>

#include <cerrno>
#include <utility>

namespace host {

/// Owns a file descriptor of the system, and closes it on every way out.
class Descriptor {
 public:
  /// @p number may be negative, as when the file could not be opened.
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  ~Descriptor() {
    if (number_ >= 0) ::close(number_);
  }
  int number() const { return number_; }
  bool good() const { return number_ >= 0; }

 private:
  int number_;
};

/// Makes a call of the system again until no signal comes between; answers what it answered last,
/// negative with errno when it failed.
template <class Call>
auto uninterrupted(const Call& call) {
  auto result = call();
  while (result < 0 && errno == EINTR) result = call();
  return result;
}

}  // namespace host
