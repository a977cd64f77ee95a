#include "controller/http/live_page.h"

#include "controller/http/live_news.h"
#include "controller/web/web_files.h"

namespace lamp::controller {
namespace {

constexpr const char* TokenMark = "{{token}}";
constexpr const char* Json = "application/json";

std::string pageWithToken(std::string page, const std::string& token) {
  const std::size_t at = page.find(TokenMark);
  return at == std::string::npos ? page
                                 : page.replace(at, std::string_view(TokenMark).size(), token);
}

HttpReply protectedReply(std::string type, std::string body) {
  HttpReply reply{200, std::move(type), std::move(body)};
  reply.headers = {{"Content-Security-Policy",
                    "default-src 'none'; script-src 'self'; style-src 'self'; connect-src 'self'; "
                    "img-src 'self' data:; base-uri 'none'; form-action 'none'; "
                    "frame-ancestors 'none'"},
                   {"X-Content-Type-Options", "nosniff"},
                   {"Referrer-Policy", "no-referrer"},
                   {"Cache-Control", "no-store"}};
  return reply;
}

std::optional<HttpReply> fileAt(std::string_view path) {
  const std::string_view name = path.substr(1);
  const bool script = name.ends_with(".js");
  if (!script && !name.ends_with(".css")) return std::nullopt;
  const std::string_view text = webFile(name);
  if (text.empty()) return std::nullopt;
  return protectedReply(script ? "text/javascript; charset=utf-8" : "text/css; charset=utf-8",
                        std::string(text));
}

}  // namespace

bool LivePage::looksAtTheStreet(const HttpHead& head) {
  return head.path == "/street.json" || head.path == "/lamp.json";
}

std::optional<HttpReply> LivePage::answer(const HttpHead& head) {
  if (head.path == "/") {
    return protectedReply("text/html; charset=utf-8",
                          pageWithToken(std::string(webFile("page.html")), service_.token));
  }
  if (head.path == "/street.json")
    return protectedReply(Json, planJson(service_.controller.planView()));
  if (head.path == "/lamp.json") {
    const auto lamp = service_.controller.lampView(head.parameter("node"));
    if (lamp) return protectedReply(Json, lampJson(*lamp));
    return HttpReply::text(404, "There is no such node.\n");
  }
  if (head.path == "/events") {
    HttpReply reply = protectedReply("text/event-stream", "");
    reply.events = true;
    return reply;
  }
  return head.path.starts_with('/') ? fileAt(head.path) : std::nullopt;
}

}  // namespace lamp::controller
