#pragma once

#include <openssl/ssl.h>

#include <filesystem>
#include <string>
#include <thread>

namespace test {

/// A server on 127.0.0.1 that answers one request over TLS with given bytes. Its certificate is
/// made at random, stands for @p address, and is signed by nobody but itself.
class TlsServer {
 public:
  TlsServer(const std::string& address, std::string answer);
  TlsServer(const TlsServer&) = delete;
  TlsServer& operator=(const TlsServer&) = delete;
  ~TlsServer();

  int port() const { return port_; }
  /// Writes the certificate, for clients that are to trust it.
  void writeCertificate(const std::filesystem::path& file) const;

 private:
  void serve();

  std::string answer_;
  SSL_CTX* context_ = nullptr;
  int listener_ = -1;
  int port_ = 0;
  std::thread thread_;
};

}  // namespace test
