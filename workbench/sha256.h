#pragma once

#include <memory>
#include <string>
#include <string_view>

struct evp_md_ctx_st;  // of the cryptographic library

namespace workbench {

/// The SHA-256 digest (FIPS 180-4) of bytes that come in pieces.
class Sha256 {
 public:
  Sha256();
  void add(std::string_view bytes);
  /// The digest of all that was added, as 64 small hexadecimal digits. Called once, at the end.
  std::string text();

 private:
  std::unique_ptr<evp_md_ctx_st, void (*)(evp_md_ctx_st*)> context_;
};

/// The digest of @p bytes as 64 small hexadecimal digits.
std::string sha256Text(std::string_view bytes);

/// The digest of a certificate's binary form as above, its fingerprint. Empty when @p pem, which
/// may have other text in front, holds no certificate in PEM (RFC 7468).
std::string certificateFingerprint(std::string_view pem);

}  // namespace workbench
