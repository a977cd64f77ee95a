#pragma once

#include <filesystem>
#include <string>

#include "controller/delivery/delivery_settings.h"

namespace lamp::controller {

/// Takes one file where it is to go. Answers what went wrong, or an empty text.
class Courier {
 public:
  virtual ~Courier() = default;
  virtual std::string upload(const DeliverySettings& settings,
                             const std::filesystem::path& file) = 0;
  virtual std::string mail(const DeliverySettings& settings, const std::filesystem::path& file) = 0;
};

/// The courier that goes over the network: FTP (passive; encrypted where asked for) and SMTP
/// (encrypted where the server can). It waits 5 s for a connection and 60 s for everything.
class NetworkCourier final : public Courier {
 public:
  /// `authorities` is a file of certificates that servers are verified by; empty for the system's.
  explicit NetworkCourier(std::string authorities = "") : authorities_(std::move(authorities)) {}

  std::string upload(const DeliverySettings& settings, const std::filesystem::path& file) override;
  std::string mail(const DeliverySettings& settings, const std::filesystem::path& file) override;

 private:
  const std::string authorities_;
};

}  // namespace lamp::controller
