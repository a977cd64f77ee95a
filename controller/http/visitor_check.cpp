#include "controller/http/visitor_check.h"

#include <arpa/inet.h>

#include <algorithm>

namespace lamp::controller {
namespace {

constexpr std::string_view kLocal = "localhost";

std::string lower(std::string_view text) {
  std::string folded(text);
  std::transform(folded.begin(), folded.end(), folded.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
  return folded;
}

// The host of "host", "host:port" or "[address]:port"; empty where it is none of these.
std::string_view withoutPort(std::string_view host) {
  if (host.starts_with('[')) {
    const std::size_t end = host.find(']');
    if (end == std::string_view::npos) return {};
    return host.substr(1, end - 1);
  }
  const std::size_t colon = host.find(':');
  return colon == std::string_view::npos ? host : host.substr(0, colon);
}

bool isAddress(const std::string& text) {
  in_addr v4;
  in6_addr v6;
  return ::inet_pton(AF_INET, text.c_str(), &v4) == 1 ||
         ::inet_pton(AF_INET6, text.c_str(), &v6) == 1;
}

std::string shown(std::string_view value) {
  std::string text = "\"";
  for (const char c : value.substr(0, 100)) text += c < 0x20 || c > 0x7E ? '?' : c;
  return text + "\"";
}

}  // namespace

VisitorCheck::VisitorCheck(std::vector<std::string> names) : names_(std::move(names)) {
  for (std::string& name : names_) name = lower(name);
}

bool VisitorCheck::isOwn(std::string_view name) const {
  const std::string text = lower(name);
  return isAddress(text) || text == kLocal || text.ends_with("." + std::string(kLocal)) ||
         std::find(names_.begin(), names_.end(), text) != names_.end();
}

std::string VisitorCheck::faultOf(std::string_view host, std::string_view origin) const {
  if (!host.empty() && !isOwn(withoutPort(host))) {
    return "The Host " + shown(host) +
           " is none of this controller's. Use its address in digits, or start it with "
           "--host-name and this name.";
  }
  // A page of the controller's own has its address for an origin.
  const bool own =
      origin == "http://" + std::string(host) || origin == "https://" + std::string(host);
  if (origin.empty() || (own && !host.empty())) return "";
  return "Requests from pages of other sites are not taken; this one is from " + shown(origin) +
         ".";
}

}  // namespace lamp::controller
