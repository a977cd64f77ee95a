#include "workbench/upload_digest.h"

#include <openssl/evp.h>

#include <algorithm>
#include <memory>
#include <new>
#include <string>

#include "workbench/sha256.h"

namespace workbench {
namespace {

// A large file lies in memory often enough.
constexpr std::size_t Piece = 64 * 1024;

struct DecoderCloser {
  void operator()(EVP_ENCODE_CTX* decoder) const { EVP_ENCODE_CTX_free(decoder); }
};

void add(JournalEntry::Upload& upload, Sha256& digest, const std::string& bytes, int size) {
  digest.add({bytes.data(), static_cast<std::size_t>(size)});
  upload.bytes += static_cast<std::size_t>(size);
}

}  // namespace

JournalEntry::Upload uploadDigest(host::XmlText base64) {
  const std::unique_ptr<EVP_ENCODE_CTX, DecoderCloser> decoder(EVP_ENCODE_CTX_new());
  if (!decoder) throw std::bad_alloc();
  EVP_DecodeInit(decoder.get());
  JournalEntry::Upload upload;
  Sha256 digest;
  std::string piece;
  std::string bytes(Piece, '\0');
  auto* out = reinterpret_cast<unsigned char*>(bytes.data());
  int size = 0;
  for (std::size_t at = 0; at < base64.size(); at += Piece) {
    piece.clear();
    for (std::size_t i = at; i < std::min(at + Piece, base64.size()); ++i)
      piece += base64[i] < 0x80 ? static_cast<char>(base64[i]) : '*';  // no Base64 either way
    if (EVP_DecodeUpdate(decoder.get(), out, &size,
                         reinterpret_cast<const unsigned char*>(piece.data()),
                         static_cast<int>(piece.size())) < 0)
      return {};
    add(upload, digest, bytes, size);
  }
  if (EVP_DecodeFinal(decoder.get(), out, &size) < 0) return {};
  add(upload, digest, bytes, size);
  upload.sha256 = digest.text();
  return upload;
}

}  // namespace workbench
