#include "controller/delivery/courier.h"

#include <curl/curl.h>

#include <cstdio>
#include <memory>

namespace lamp::controller {
namespace {

constexpr long kConnectSeconds = 5;
constexpr long kWholeSeconds = 60;

struct CurlEnd {
  void operator()(CURL* curl) const { curl_easy_cleanup(curl); }
  void operator()(curl_slist* list) const { curl_slist_free_all(list); }
  void operator()(curl_mime* mime) const { curl_mime_free(mime); }
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using Curl = std::unique_ptr<CURL, CurlEnd>;
using TextList = std::unique_ptr<curl_slist, CurlEnd>;

Curl beginTransfer(const char* protocols, const std::string& authorities) {
  static const bool ready = curl_global_init(CURL_GLOBAL_DEFAULT) == CURLE_OK;
  Curl curl(ready ? curl_easy_init() : nullptr);
  if (!curl) return curl;
  curl_easy_setopt(curl.get(), CURLOPT_PROTOCOLS_STR, protocols);
  curl_easy_setopt(curl.get(), CURLOPT_CONNECTTIMEOUT, kConnectSeconds);
  curl_easy_setopt(curl.get(), CURLOPT_TIMEOUT, kWholeSeconds);
  curl_easy_setopt(curl.get(), CURLOPT_NOSIGNAL, 1L);
  curl_easy_setopt(curl.get(), CURLOPT_PROXY, "");
  if (!authorities.empty()) curl_easy_setopt(curl.get(), CURLOPT_CAINFO, authorities.c_str());
  return curl;
}

std::string carryOut(CURL* curl) {
  char fault[CURL_ERROR_SIZE] = "";
  curl_easy_setopt(curl, CURLOPT_ERRORBUFFER, fault);
  const CURLcode code = curl_easy_perform(curl);
  if (code == CURLE_OK) return "";
  return *fault != '\0' ? fault : curl_easy_strerror(code);
}

void setLogin(CURL* curl, const std::string& user, const std::string& password) {
  if (user.empty()) return;
  curl_easy_setopt(curl, CURLOPT_USERNAME, user.c_str());
  curl_easy_setopt(curl, CURLOPT_PASSWORD, password.c_str());
}

// The folders of a path and a name, each escaped, so that no name leaves its folder. A path that
// begins with a slash begins at the server's root.
std::string escapedPath(CURL* curl, const std::string& path, const std::string& name) {
  std::string escaped = path.starts_with('/') ? "/%2F" : "/";
  std::string part;
  for (const char c : path + "/" + name + "/") {
    if (c != '/' && c != '\\') {
      part += c;
      continue;
    }
    if (!part.empty() && part != "." && part != "..") {
      char* text = curl_easy_escape(curl, part.c_str(), static_cast<int>(part.size()));
      escaped += (escaped.ends_with('/') || escaped.ends_with("%2F") ? "" : "/") +
                 std::string(text == nullptr ? "" : text);
      curl_free(text);
    }
    part.clear();
  }
  return escaped;
}

TextList append(TextList list, const std::string& text) {
  curl_slist* longer = curl_slist_append(list.release(), text.c_str());
  return TextList(longer);
}

}  // namespace

std::string NetworkCourier::upload(const DeliverySettings& settings,
                                   const std::filesystem::path& file) {
  const Curl curl = beginTransfer("ftp", authorities_);
  if (!curl) return "the transfer library could not be started";
  const std::unique_ptr<std::FILE, CurlEnd> input(std::fopen(file.c_str(), "rb"));
  if (!input) return "can't open " + file.string();
  const std::string url =
      "ftp://" + settings.ftpHost + escapedPath(curl.get(), settings.ftpPath, file.filename());
  curl_easy_setopt(curl.get(), CURLOPT_URL, url.c_str());
  setLogin(curl.get(), settings.ftpUser, settings.ftpPassword);
  curl_easy_setopt(curl.get(), CURLOPT_UPLOAD, 1L);
  curl_easy_setopt(curl.get(), CURLOPT_READDATA, input.get());
  const long create = CURLFTP_CREATE_DIR_RETRY;
  curl_easy_setopt(curl.get(), CURLOPT_FTP_CREATE_MISSING_DIRS, create);
  const long encryption = settings.encrypted ? CURLUSESSL_ALL : CURLUSESSL_NONE;
  curl_easy_setopt(curl.get(), CURLOPT_USE_SSL, encryption);
  return carryOut(curl.get());
}

std::string NetworkCourier::mail(const DeliverySettings& settings,
                                 const std::filesystem::path& file) {
  const Curl curl = beginTransfer("smtp", authorities_);
  if (!curl) return "the transfer library could not be started";
  curl_easy_setopt(curl.get(), CURLOPT_URL, ("smtp://" + settings.mailHost).c_str());
  setLogin(curl.get(), settings.mailUser, settings.mailPassword);
  const long encryption = CURLUSESSL_TRY;
  curl_easy_setopt(curl.get(), CURLOPT_USE_SSL, encryption);
  curl_easy_setopt(curl.get(), CURLOPT_MAIL_FROM, settings.sender.c_str());
  TextList recipients;
  std::string shown;
  for (const std::string& address : settings.recipients) {
    recipients = append(std::move(recipients), address);
    shown += (shown.empty() ? "" : ", ") + address;
  }
  curl_easy_setopt(curl.get(), CURLOPT_MAIL_RCPT, recipients.get());
  TextList headers;
  headers = append(std::move(headers), "From: " + settings.sender);
  headers = append(std::move(headers), "To: " + shown);
  headers = append(std::move(headers), "Subject: Lamp report " + file.filename().string());
  curl_easy_setopt(curl.get(), CURLOPT_HTTPHEADER, headers.get());
  const std::unique_ptr<curl_mime, CurlEnd> parts(curl_mime_init(curl.get()));
  curl_mimepart* text = curl_mime_addpart(parts.get());
  curl_mime_data(text, "The report is attached.\r\n", CURL_ZERO_TERMINATED);
  curl_mimepart* report = curl_mime_addpart(parts.get());
  if (curl_mime_filedata(report, file.c_str()) != CURLE_OK) return "can't open " + file.string();
  curl_mime_encoder(report, "base64");
  curl_easy_setopt(curl.get(), CURLOPT_MIMEPOST, parts.get());
  return carryOut(curl.get());
}

}  // namespace lamp::controller
