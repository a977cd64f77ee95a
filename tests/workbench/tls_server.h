#pragma once

#include <openssl/ssl.h>

#include <atomic>
#include <filesystem>
#include <string>
#include <thread>

namespace test {

/// A server on 127.0.0.1 that answers every request over TLS with given bytes. Its certificate is
/// made at random, stands for @p address, and is signed by nobody but itself.
class TlsServer {
 public:
  TlsServer(const std::string& address, std::string answer);
  TlsServer(const TlsServer&) = delete;
  TlsServer& operator=(const TlsServer&) = delete;
  ~TlsServer();

  int port() const { return port_; }
  /// How many requests came in.
  int requests() const { return requests_; }
  /// The SHA-256 fingerprint of its certificate, "AB:CD:...".
  std::string fingerprint() const;
  /// Writes the certificate, for clients that are to trust it.
  void writeCertificate(const std::filesystem::path& file) const;

 private:
  void serve();
  void serveOne(int socket);

  std::string answer_;
  SSL_CTX* context_ = nullptr;
  int listener_ = -1;
  int port_ = 0;
  std::atomic<int> requests_ = 0;
  std::thread thread_;
};

}  // namespace test
