#include "tests/controller/support/loopback_servers.h"

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstring>

namespace lamp::controller::test {
namespace {

sockaddr* generic(void* address) {
  return static_cast<sockaddr*>(address);
}

void say(int client, const std::string& line) {
  const std::string text = line + "\r\n";
  (void)!::send(client, text.data(), text.size(), MSG_NOSIGNAL);
}

// False at the end of the connection.
bool hear(int client, std::string& line) {
  line.clear();
  char c = 0;
  while (::recv(client, &c, 1, 0) == 1) {
    if (c == '\n') return true;
    if (c != '\r') line += c;
  }
  return !line.empty();
}

std::string hearAll(int client) {
  std::string text;
  char buffer[4096];
  for (ssize_t count = 0; (count = ::recv(client, buffer, sizeof buffer, 0)) > 0;) {
    text.append(buffer, static_cast<std::size_t>(count));
  }
  return text;
}

}  // namespace

LoopbackSocket::LoopbackSocket(int type) {
  descriptor_ = ::socket(AF_INET, type | SOCK_CLOEXEC, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t length = sizeof address;
  ::bind(descriptor_, generic(&address), length);
  if (type == SOCK_STREAM) ::listen(descriptor_, 16);
  ::getsockname(descriptor_, generic(&address), &length);
  port_ = ntohs(address.sin_port);
}

LoopbackSocket::~LoopbackSocket() {
  ::close(descriptor_);
}

void LoopbackSocket::shutDown() const {
  ::shutdown(descriptor_, SHUT_RDWR);
}

FtpServer::FtpServer() : socket_(SOCK_STREAM), thread_([this] { serve(); }) {}

FtpServer::~FtpServer() {
  socket_.shutDown();
  thread_.join();
}

std::map<std::string, std::string> FtpServer::files() {
  const std::lock_guard lock(mutex_);
  return files_;
}

std::vector<std::string> FtpServer::logins() {
  const std::lock_guard lock(mutex_);
  return logins_;
}

void FtpServer::serve() {
  for (int client = 0; (client = ::accept(socket_.descriptor(), nullptr, nullptr)) >= 0;) {
    talk(client);
    ::close(client);
  }
}

void FtpServer::talk(int client) {
  const LoopbackSocket data(SOCK_STREAM);
  std::string folder = "/";
  std::string user;
  std::string line;
  say(client, "220 ready");
  while (hear(client, line)) {
    const std::string verb = line.substr(0, line.find(' '));
    const std::string argument = line.size() > verb.size() ? line.substr(verb.size() + 1) : "";
    if (verb == "USER") {
      user = argument;
      say(client, "331 password");
    } else if (verb == "PASS") {
      const std::lock_guard lock(mutex_);
      logins_.push_back(user + ":" + argument);
      say(client, "230 in");
    } else if (verb == "PWD") {
      say(client, "257 \"/\"");
    } else if (verb == "CWD") {
      folder = argument.starts_with('/') ? argument : folder + argument;
      if (!folder.ends_with('/')) folder += '/';
      say(client, "250 there");
    } else if (verb == "EPSV") {
      say(client, "229 (|||" + std::to_string(data.port()) + "|)");
    } else if (verb == "STOR") {
      say(client, "150 send");
      const int sender = ::accept(data.descriptor(), nullptr, nullptr);
      const std::string bytes = hearAll(sender);
      ::close(sender);
      const std::lock_guard lock(mutex_);
      files_[folder + argument] = bytes;
      say(client, "226 got it");
    } else if (verb == "QUIT") {
      return say(client, "221 bye");
    } else {
      say(client, verb == "TYPE" ? "200 yes" : "502 no");
    }
  }
}

SmtpServer::SmtpServer() : socket_(SOCK_STREAM), thread_([this] { serve(); }) {}

SmtpServer::~SmtpServer() {
  socket_.shutDown();
  thread_.join();
}

std::vector<std::string> SmtpServer::conversations() {
  const std::lock_guard lock(mutex_);
  return conversations_;
}

void SmtpServer::serve() {
  for (int client = 0; (client = ::accept(socket_.descriptor(), nullptr, nullptr)) >= 0;) {
    talk(client);
    ::close(client);
  }
}

void SmtpServer::talk(int client) {
  std::string all;
  std::string line;
  bool inMessage = false;
  say(client, "220 ready");
  while (hear(client, line)) {
    all += line + "\n";
    if (inMessage) {
      if (line != ".") continue;
      inMessage = false;
      {
        // Before the answer, so that whoever has it finds the conversation.
        const std::lock_guard lock(mutex_);
        conversations_.push_back(all);
      }
      say(client, "250 got it");
    } else if (line == "DATA") {
      inMessage = true;
      say(client, "354 go on");
    } else if (line == "QUIT") {
      say(client, "221 bye");
      break;
    } else {
      say(client, "250 yes");
    }
  }
}

NtpServer::NtpServer(Answer answer)
    : socket_(SOCK_DGRAM), thread_([this, answer = std::move(answer)] {
        char buffer[64];
        sockaddr_in client{};
        socklen_t length = sizeof client;
        for (ssize_t size = 0; (size = ::recvfrom(socket_.descriptor(), buffer, sizeof buffer, 0,
                                                  generic(&client), &length)) > 0;) {
          std::string packet(buffer, static_cast<std::size_t>(size));
          answer(packet);
          ::sendto(socket_.descriptor(), packet.data(), packet.size(), 0, generic(&client), length);
        }
      }) {}

NtpServer::~NtpServer() {
  socket_.shutDown();
  thread_.join();
}

void NtpServer::answerWith(std::string& packet, std::chrono::milliseconds time) {
  packet.replace(24, 8, packet.substr(40, 8));
  packet[0] = 0x24;
  packet[1] = 2;
  const auto count = static_cast<unsigned long long>(time.count());
  const unsigned long long seconds = count / 1000 + 2208988800ULL;
  const unsigned long long fraction = (count % 1000 << 32U) / 1000;
  for (std::size_t at : {32U, 40U}) {
    for (std::size_t i = 0; i < 4; ++i) {
      packet[at + i] = static_cast<char>(seconds >> (24U - 8U * i));
      packet[at + 4 + i] = static_cast<char>(fraction >> (24U - 8U * i));
    }
  }
}

}  // namespace lamp::controller::test
