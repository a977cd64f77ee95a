#include "controller/delivery/delivery_settings.h"

#include <algorithm>
#include <string_view>

#include "controller/model/names.h"

namespace lamp::controller {
namespace {

constexpr int kMostRetries = 100;

bool isYes(pugi::xml_node general, const char* name) {
  return std::string_view(general.attribute(name).value()) == "Y";
}

// A line break in a value would become a command of its own on the way.
std::string oneLine(pugi::xml_node general, const char* name) {
  std::string text = general.attribute(name).value();
  std::erase_if(text, [](char c) { return static_cast<unsigned char>(c) < 0x20U; });
  return text;
}

std::vector<std::string> addressesOf(const std::string& text) {
  std::vector<std::string> addresses;
  std::string address;
  for (const char c : text + ";") {
    if (c != ';' && c != ',' && c != ' ') {
      address += c;
    } else if (!address.empty()) {
      addresses.push_back(std::move(address));
      address.clear();
    }
  }
  return addresses;
}

}  // namespace

DeliverySettings DeliverySettings::read(pugi::xml_node general) {
  DeliverySettings settings;
  settings.ftpHost = oneLine(general, "IPftp");
  settings.byFtp = isYes(general, "FtpServer") && !settings.ftpHost.empty();
  settings.encrypted = isYes(general, "FtpsServer");
  settings.ftpUser = oneLine(general, "FTPUser");
  settings.ftpPassword = oneLine(general, "FTPPwd");
  settings.ftpPath = oneLine(general, "PathReports");
  settings.retries = std::clamp(general.attribute("RetryFtp").as_int(), 0, kMostRetries);
  settings.pause = std::chrono::seconds{general.attribute("TimeBetwFtp").as_int(60)};
  settings.mailHost = oneLine(general, "mailHost");
  settings.mailUser = oneLine(general, names::kMailUser);
  settings.mailPassword = oneLine(general, names::kMailPassword);
  settings.sender = oneLine(general, "mainMail");
  settings.recipients = addressesOf(oneLine(general, "destinationMail"));
  settings.byMail = !settings.mailHost.empty() && !settings.recipients.empty();
  settings.timeServer = oneLine(general, "IPNTP");
  settings.deviation = std::chrono::seconds{general.attribute("NTPMaxDeviation").as_int()};
  return settings;
}

}  // namespace lamp::controller
