#include "tests/workbench/tls_server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/x509v3.h>
#include <sys/socket.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <utility>

namespace test {
namespace {

constexpr long OneDay = 24 * 60 * 60;

void addExtension(X509* certificate, int kind, const std::string& value) {
  X509V3_CTX context;
  X509V3_set_ctx_nodb(&context);
  X509V3_set_ctx(&context, certificate, certificate, nullptr, nullptr, 0);
  X509_EXTENSION* extension = X509V3_EXT_conf_nid(nullptr, &context, kind, value.c_str());
  X509_add_ext(certificate, extension, -1);
  X509_EXTENSION_free(extension);
}

X509* makeCertificate(EVP_PKEY* key, const std::string& address) {
  X509* certificate = X509_new();
  X509_set_version(certificate, 2);
  ASN1_INTEGER_set(X509_get_serialNumber(certificate), 1);
  X509_gmtime_adj(X509_getm_notBefore(certificate), -OneDay);
  X509_gmtime_adj(X509_getm_notAfter(certificate), OneDay);
  X509_set_pubkey(certificate, key);
  X509_NAME* name = X509_get_subject_name(certificate);
  X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_ASC,
                             reinterpret_cast<const unsigned char*>("test"), -1, -1, 0);
  X509_set_issuer_name(certificate, name);
  addExtension(certificate, NID_basic_constraints, "CA:TRUE");
  addExtension(certificate, NID_subject_alt_name, "IP:" + address);
  X509_sign(certificate, key, EVP_sha256());
  return certificate;
}

}  // namespace

TlsServer::TlsServer(const std::string& address, std::string answer) : answer_(std::move(answer)) {
  EVP_PKEY* key = EVP_EC_gen("P-256");
  X509* certificate = makeCertificate(key, address);
  context_ = SSL_CTX_new(TLS_server_method());
  SSL_CTX_use_certificate(context_, certificate);
  SSL_CTX_use_PrivateKey(context_, key);
  X509_free(certificate);
  EVP_PKEY_free(key);

  listener_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in any{};
  any.sin_family = AF_INET;
  any.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof any;
  auto* generic = reinterpret_cast<sockaddr*>(&any);
  if (::bind(listener_, generic, size) != 0 || ::listen(listener_, 4) != 0 ||
      ::getsockname(listener_, generic, &size) != 0)
    throw std::runtime_error("can't listen on 127.0.0.1");
  port_ = ntohs(any.sin_port);
  thread_ = std::thread([this] { serve(); });
}

TlsServer::~TlsServer() {
  ::shutdown(listener_, SHUT_RDWR);
  thread_.join();
  ::close(listener_);
  SSL_CTX_free(context_);
}

void TlsServer::writeCertificate(const std::filesystem::path& file) const {
  const std::unique_ptr<FILE, int (*)(FILE*)> out(std::fopen(file.c_str(), "w"), &std::fclose);
  PEM_write_X509(out.get(), SSL_CTX_get0_certificate(context_));
}

std::string TlsServer::fingerprint() const {
  unsigned char digest[EVP_MAX_MD_SIZE];
  unsigned int size = 0;
  X509_digest(SSL_CTX_get0_certificate(context_), EVP_sha256(), digest, &size);
  std::string text;
  for (unsigned int i = 0; i < size; ++i) {
    char pair[4];
    std::snprintf(pair, sizeof pair, i == 0 ? "%02X" : ":%02X", digest[i]);
    text += pair;
  }
  return text;
}

void TlsServer::serve() {
  // A client that refuses the certificate goes away; only this thread is to bear that.
  sigset_t pipe;
  sigemptyset(&pipe);
  sigaddset(&pipe, SIGPIPE);
  ::pthread_sigmask(SIG_BLOCK, &pipe, nullptr);
  for (;;) {
    const int socket = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    if (socket < 0) return;
    serveOne(socket);
  }
}

void TlsServer::serveOne(int socket) {
  SSL* tls = SSL_new(context_);
  SSL_set_fd(tls, socket);
  if (SSL_accept(tls) == 1) {
    std::string request;
    char block[4096];
    // The tests' request has no body.
    while (request.find("\r\n\r\n") == std::string::npos) {
      const int count = SSL_read(tls, block, sizeof block);
      if (count <= 0) break;
      request.append(block, static_cast<std::size_t>(count));
    }
    if (!request.empty()) ++requests_;
    SSL_write(tls, answer_.data(), static_cast<int>(answer_.size()));
    SSL_shutdown(tls);
  }
  SSL_free(tls);
  ::close(socket);
}

}  // namespace test
