#include "controller/delivery/time_server.h"

#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <memory>

namespace lamp::controller {
namespace {

using std::chrono::milliseconds;

constexpr std::size_t kPacket = 48;
using Packet = std::array<unsigned char, kPacket>;

// Offsets in the packet, in bytes.
constexpr std::size_t kOriginate = 24;
constexpr std::size_t kReceive = 32;
constexpr std::size_t kTransmit = 40;
constexpr unsigned char kClientVersion4 = 0x23;
constexpr unsigned kServerMode = 4;
constexpr unsigned kUnsynchronised = 3;
constexpr unsigned kHighestStratum = 15;
// From 1900, where the protocol begins to count, to 1970.
constexpr std::uint64_t kSecondsTo1970 = 2208988800ULL;

void putTime(Packet& packet, std::size_t at, milliseconds time) {
  const auto count = static_cast<std::uint64_t>(time.count());
  const std::uint64_t seconds = count / 1000 + kSecondsTo1970;
  const std::uint64_t fraction = ((count % 1000) << 32U) / 1000;
  for (std::size_t i = 0; i < 4; ++i) {
    packet[at + i] = static_cast<unsigned char>(seconds >> (24U - 8U * i));
    packet[at + 4 + i] = static_cast<unsigned char>(fraction >> (24U - 8U * i));
  }
}

milliseconds timeIn(const Packet& packet, std::size_t at) {
  std::uint64_t seconds = 0;
  std::uint64_t fraction = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    seconds = seconds << 8U | packet[at + i];
    fraction = fraction << 8U | packet[at + 4 + i];
  }
  // The count begins again in 2036: a small one is of the time after it.
  if (seconds < kSecondsTo1970) seconds += 1ULL << 32U;
  const std::uint64_t rounded = (fraction * 1000 + (1ULL << 31U)) >> 32U;
  return milliseconds{static_cast<milliseconds::rep>((seconds - kSecondsTo1970) * 1000 + rounded)};
}

class UdpSocket {
 public:
  explicit UdpSocket(const std::string& server) {
    std::string host = server;
    std::string port = "123";
    const std::size_t colon = server.rfind(':');
    if (colon != std::string::npos && server.find(':') == colon) {
      host = server.substr(0, colon);
      port = server.substr(colon + 1);
    }
    addrinfo hints{};
    hints.ai_socktype = SOCK_DGRAM;
    addrinfo* found = nullptr;
    if (::getaddrinfo(host.c_str(), port.c_str(), &hints, &found) != 0) return;
    descriptor_ = ::socket(found->ai_family, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (descriptor_ >= 0 && ::connect(descriptor_, found->ai_addr, found->ai_addrlen) != 0) {
      ::close(descriptor_);
      descriptor_ = -1;
    }
    ::freeaddrinfo(found);
  }
  UdpSocket(const UdpSocket&) = delete;
  UdpSocket& operator=(const UdpSocket&) = delete;
  ~UdpSocket() {
    if (descriptor_ >= 0) ::close(descriptor_);
  }

  bool valid() const { return descriptor_ >= 0; }
  bool send(const Packet& packet) const {
    return ::send(descriptor_, packet.data(), packet.size(), 0) ==
           static_cast<ssize_t>(packet.size());
  }
  bool receive(Packet& packet, milliseconds wait) const {
    pollfd watched{descriptor_, POLLIN, 0};
    if (::poll(&watched, 1, static_cast<int>(wait.count())) != 1) return false;
    return ::recv(descriptor_, packet.data(), packet.size(), 0) ==
           static_cast<ssize_t>(packet.size());
  }

 private:
  int descriptor_ = -1;
};

const char* faultOf(const Packet& question, const Packet& answer) {
  if ((answer[0] & 7U) != kServerMode) return "the answer is not that of a time server";
  if ((answer[0] >> 6U) == kUnsynchronised) return "the time server has no time itself";
  if (answer[1] == 0 || answer[1] > kHighestStratum) return "the time server refuses";
  if (std::memcmp(answer.data() + kOriginate, question.data() + kTransmit, 8) != 0) {
    return "the answer belongs to another question";
  }
  return nullptr;
}

}  // namespace

milliseconds offsetOf(milliseconds sent, milliseconds received, milliseconds answered,
                      milliseconds arrived) {
  return ((received - sent) + (answered - arrived)) / 2;
}

TimeAnswer askTimeServer(const std::string& server, milliseconds wait,
                         const std::function<milliseconds()>& ownNow) {
  TimeAnswer result;
  const UdpSocket socket(server);
  Packet question{};
  question[0] = kClientVersion4;
  const milliseconds sent = ownNow();
  putTime(question, kTransmit, sent);
  Packet answer{};
  if (!socket.valid() || !socket.send(question) || !socket.receive(answer, wait)) {
    result.fault = "no answer from " + server;
    return result;
  }
  const milliseconds arrived = ownNow();
  if (const char* fault = faultOf(question, answer)) {
    result.fault = server + ": " + fault;
    return result;
  }
  result.offset = offsetOf(sent, timeIn(answer, kReceive), timeIn(answer, kTransmit), arrived);
  return result;
}

}  // namespace lamp::controller
