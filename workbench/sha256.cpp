#include "workbench/sha256.h"

#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/x509.h>

#include <new>

namespace workbench {
namespace {

struct BioCloser {
  void operator()(BIO* bio) const { BIO_free(bio); }
};
struct CertificateCloser {
  void operator()(X509* certificate) const { X509_free(certificate); }
};

std::string hexText(const unsigned char* bytes, std::size_t size) {
  constexpr char Hex[] = "0123456789abcdef";
  std::string digits;
  for (std::size_t i = 0; i < size; ++i) {
    digits += Hex[bytes[i] >> 4];
    digits += Hex[bytes[i] & 15];
  }
  return digits;
}

// The library fails here only where there is no memory.
void need(bool done) {
  if (!done) throw std::bad_alloc();
}

}  // namespace

Sha256::Sha256() : context_(EVP_MD_CTX_new(), &EVP_MD_CTX_free) {
  need(context_ && EVP_DigestInit_ex(context_.get(), EVP_sha256(), nullptr) == 1);
}

void Sha256::add(std::string_view bytes) {
  need(EVP_DigestUpdate(context_.get(), bytes.data(), bytes.size()) == 1);
}

std::string Sha256::text() {
  unsigned char digest[EVP_MAX_MD_SIZE];
  unsigned int size = 0;
  need(EVP_DigestFinal_ex(context_.get(), digest, &size) == 1);
  return hexText(digest, size);
}

std::string sha256Text(std::string_view bytes) {
  Sha256 digest;
  digest.add(bytes);
  return digest.text();
}

std::string certificateFingerprint(std::string_view pem) {
  constexpr std::string_view Begin = "-----BEGIN CERTIFICATE-----";
  const std::size_t begin = pem.find(Begin);
  if (begin == std::string_view::npos) return {};
  pem.remove_prefix(begin);
  const std::unique_ptr<BIO, BioCloser> text(
      BIO_new_mem_buf(pem.data(), static_cast<int>(pem.size())));
  if (!text) return {};
  const std::unique_ptr<X509, CertificateCloser> certificate(
      PEM_read_bio_X509(text.get(), nullptr, nullptr, nullptr));
  unsigned char digest[EVP_MAX_MD_SIZE];
  unsigned int size = 0;
  if (!certificate || X509_digest(certificate.get(), EVP_sha256(), digest, &size) != 1) return {};
  return hexText(digest, size);
}

}  // namespace workbench
