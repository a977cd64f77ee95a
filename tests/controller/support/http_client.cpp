#include "tests/controller/support/http_client.h"

#include <curl/curl.h>

#include <memory>

namespace lamp::controller::test {
namespace {

std::size_t collect(const char* data, std::size_t size, std::size_t count, void* target) {
  static_cast<std::string*>(target)->append(data, size * count);
  return size * count;
}

CURL* newClient() {
  static const bool ready = curl_global_init(CURL_GLOBAL_DEFAULT) == CURLE_OK;
  return ready ? curl_easy_init() : nullptr;
}

HttpAnswer sendWith(CURL* curl, const std::string& method, const std::string& url,
                    const std::string& body, const std::string& contentType, long seconds,
                    const std::string& header) {
  HttpAnswer answer;
  curl_easy_reset(curl);
  curl_slist* headers = curl_slist_append(nullptr, ("Content-Type: " + contentType).c_str());
  headers = curl_slist_append(headers, "Expect:");
  headers = curl_slist_append(headers, header.c_str());
  const bool bare = method == "POST-WITHOUT-LENGTH";
  char fault[CURL_ERROR_SIZE] = "";
  curl_easy_setopt(curl, CURLOPT_URL, url.c_str());
  curl_easy_setopt(curl, CURLOPT_CUSTOMREQUEST, bare ? "POST" : method.c_str());
  if (method != "GET" && !bare) {
    curl_easy_setopt(curl, CURLOPT_POSTFIELDS, body.data());
    curl_easy_setopt(curl, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(body.size()));
  }
  curl_easy_setopt(curl, CURLOPT_HTTPHEADER, headers);
  curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, collect);
  curl_easy_setopt(curl, CURLOPT_WRITEDATA, &answer.body);
  curl_easy_setopt(curl, CURLOPT_ERRORBUFFER, fault);
  curl_easy_setopt(curl, CURLOPT_TIMEOUT, seconds);
  curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);
  curl_easy_setopt(curl, CURLOPT_PROXY, "");
  const CURLcode code = curl_easy_perform(curl);
  curl_slist_free_all(headers);
  if (code != CURLE_OK) {
    answer.fault = *fault != '\0' ? fault : curl_easy_strerror(code);
    return answer;
  }
  curl_easy_getinfo(curl, CURLINFO_RESPONSE_CODE, &answer.status);
  const char* type = nullptr;
  curl_easy_getinfo(curl, CURLINFO_CONTENT_TYPE, &type);
  if (type != nullptr) answer.type = type;
  return answer;
}

}  // namespace

HttpAnswer httpSend(const std::string& method, const std::string& url, const std::string& body,
                    const std::string& contentType, long seconds, const std::string& header) {
  const std::unique_ptr<CURL, decltype(&curl_easy_cleanup)> curl(newClient(), curl_easy_cleanup);
  return curl ? sendWith(curl.get(), method, url, body, contentType, seconds, header)
              : HttpAnswer();
}

HttpConnection::HttpConnection(std::string base) : base_(std::move(base)), curl_(newClient()) {}

HttpConnection::~HttpConnection() {
  curl_easy_cleanup(curl_);
}

HttpAnswer HttpConnection::get(const std::string& path) {
  return sendWith(curl_, "GET", base_ + path, "", "text/plain", 30, "Expect:");
}

HttpAnswer HttpConnection::command(int number, const std::string& body) {
  return sendWith(curl_, "POST", base_ + "/lampmanager/command/" + std::to_string(number), body,
                  "application/xml", 60, "Expect:");
}

HttpAnswer httpCommand(const std::string& base, int number, const std::string& body) {
  return httpSend("POST", base + "/lampmanager/command/" + std::to_string(number), body);
}

HttpAnswer httpControl(const std::string& address, const std::string& token) {
  return httpSend("POST", address, "", "text/plain", 30, "X-Control-Token: " + token);
}

HttpAnswer httpGet(const std::string& url) {
  return httpSend("GET", url, "");
}

}  // namespace lamp::controller::test
