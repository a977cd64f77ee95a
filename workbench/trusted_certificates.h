#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>

namespace workbench {

/// The certificates that the person trusts although no authority vouches for them: for a
/// controller's address, "host:port", the SHA-256 fingerprint of one certificate. They lie in a
/// file that only its owner can read; every question looks there anew, because another program may
/// have been told meanwhile.
class TrustedCertificates {
 public:
  explicit TrustedCertificates(std::filesystem::path file) : file_(std::move(file)) {}

  /// The fingerprint, 64 small hexadecimal digits; none for an address without one. None also where
  /// the file can't be read or is damaged, as @p problem, where given, tells; it is empty
  /// otherwise.
  std::optional<std::string> find(const std::string& address, std::string* problem = nullptr) const;
  /// From now on this certificate and no other. False with the reason in @p cause when it can't be
  /// stored; a file that can't be read or is damaged is not replaced.
  bool trust(const std::string& address, const std::string& fingerprint, std::string& cause) const;
  /// No certificate is trusted any more for this address. False as above.
  bool forget(const std::string& address, std::string& cause) const;

 private:
  using Entries = std::map<std::string, std::string>;
  bool load(Entries& entries, std::string& cause) const;
  bool save(const Entries& entries, std::string& cause) const;

  std::filesystem::path file_;
};

/// A fingerprint for a person to compare: "AB:CD:...", as certificates' own tools write it.
std::string shownFingerprint(const std::string& fingerprint);

}  // namespace workbench
