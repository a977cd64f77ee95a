#include "workbench/system_services.h"

#include <sys/random.h>

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <random>

namespace workbench {
namespace {

constexpr std::string_view Form = "0000-00-00T00:00:00";

}  // namespace

XCDateTime SystemClock::now() const {
  if (fixed_) return *fixed_;
  const std::time_t seconds = std::time(nullptr);
  std::tm local{};
  ::localtime_r(&seconds, &local);
  return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
          local.tm_hour,        local.tm_min,     std::min(local.tm_sec, 59)};
}

std::optional<XCDateTime> SystemClock::parse(std::string_view text) {
  if (text.size() != Form.size()) return std::nullopt;
  int numbers[6] = {};
  std::size_t number = 0;
  for (std::size_t i = 0; i < Form.size(); ++i) {
    if (Form[i] != '0') {
      if (text[i] != Form[i]) return std::nullopt;
      ++number;
    } else {
      if (text[i] < '0' || text[i] > '9') return std::nullopt;
      numbers[number] = numbers[number] * 10 + (text[i] - '0');
    }
  }
  const XCDateTime moment(numbers[0], numbers[1], numbers[2], numbers[3], numbers[4], numbers[5]);
  if (!moment.isValidDate()) return std::nullopt;
  return moment;
}

std::array<std::uint8_t, 16> RandomIds::next() {
  std::array<std::uint8_t, 16> bytes{};
  std::size_t have = 0;
  while (have < bytes.size()) {
    const ssize_t count = ::getrandom(bytes.data() + have, bytes.size() - have, 0);
    if (count > 0)
      have += static_cast<std::size_t>(count);
    else if (errno != EINTR)
      break;
  }
  if (have == bytes.size()) return bytes;
  std::random_device device;  // a kernel without the call
  for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(device());
  return bytes;
}

}  // namespace workbench
