#pragma once

#include <chrono>
#include <pugixml.hpp>
#include <string>
#include <vector>

namespace lamp::controller {

/// What the general section says about sending reports and about the time server.
struct DeliverySettings {
  bool byFtp = false;      ///< "FtpServer" is "Y" and there is an address
  bool encrypted = false;  ///< "FtpsServer": the transfer must be encrypted
  std::string ftpHost;     ///< host, or host:port
  std::string ftpUser;
  std::string ftpPassword;
  std::string ftpPath;
  int retries = 0;                 ///< "RetryFtp", after the first try
  std::chrono::seconds pause{60};  ///< "TimeBetwFtp", between two tries

  bool byMail = false;  ///< there are a mail host and a recipient
  std::string mailHost;
  std::string mailUser;
  std::string mailPassword;
  std::string sender;
  std::vector<std::string> recipients;

  std::string timeServer;             ///< empty: none is asked
  std::chrono::seconds deviation{0};  ///< "NTPMaxDeviation"

  static DeliverySettings read(pugi::xml_node general);
};

}  // namespace lamp::controller
