#include "controller/http/live_page.h"

#include <httplib.h>

#include "controller/http/patience.h"
#include "controller/http/street_view.h"
#include "controller/web/web_files.h"

namespace lamp::controller {
namespace {

// Every viewer holds a thread of the server.
constexpr int kMostViewers = 32;
constexpr std::chrono::milliseconds kPace{250};
// A comment now and then tells a dead connection from a quiet one.
constexpr int kQuietRounds = 40;
constexpr const char* kTokenMark = "{{token}}";

std::string pageWithToken(std::string page, const std::string& token) {
  const std::size_t at = page.find(kTokenMark);
  return at == std::string::npos ? page
                                 : page.replace(at, std::string_view(kTokenMark).size(), token);
}

void protect(httplib::Response& response) {
  response.set_header(
      "Content-Security-Policy",
      "default-src 'none'; script-src 'self'; style-src 'self'; connect-src 'self'; "
      "img-src 'self' data:; base-uri 'none'; form-action 'none'; "
      "frame-ancestors 'none'");
  response.set_header("X-Content-Type-Options", "nosniff");
  response.set_header("Referrer-Policy", "no-referrer");
  response.set_header("Cache-Control", "no-store");
}

}  // namespace

void LivePage::install(httplib::Server& server) {
  serveFiles(server);
  server.Get("/street.json", [this](const httplib::Request&, httplib::Response& response) {
    protect(response);
    response.set_content(planJson(service_.controller.planView()), "application/json");
  });
  server.Get("/lamp.json", [this](const httplib::Request& request, httplib::Response& response) {
    protect(response);
    const auto lamp = service_.controller.lampView(request.get_param_value("node"));
    response.status = lamp ? 200 : 404;
    if (lamp) response.set_content(lampJson(*lamp), "application/json");
    if (!lamp) response.set_content("There is no such node.\n", "text/plain; charset=utf-8");
  });
  server.Get("/events", [this](const httplib::Request&, httplib::Response& response) {
    streamEvents(response);
  });
}

void LivePage::serveFiles(httplib::Server& server) {
  server.Get("/", [this](const httplib::Request&, httplib::Response& response) {
    protect(response);
    response.set_content(pageWithToken(std::string(webFile("page.html")), service_.token),
                         "text/html; charset=utf-8");
  });
  server.Get(R"(/([a-z]+\.(?:js|css)))", [](const httplib::Request& request,
                                            httplib::Response& response) {
    const std::string name = request.matches[1];
    const std::string_view text = webFile(name);
    if (text.empty()) {
      response.status = 404;
      return;
    }
    protect(response);
    response.set_content(std::string(text), name.ends_with(".js") ? "text/javascript; charset=utf-8"
                                                                  : "text/css; charset=utf-8");
  });
}

void LivePage::streamEvents(httplib::Response& response) {
  if (viewers_.fetch_add(1) >= kMostViewers) {
    --viewers_;
    response.status = 503;
    response.set_content("Too many pages are open; close one.\n", "text/plain; charset=utf-8");
    return;
  }
  protect(response);
  auto viewer = std::make_shared<ViewerState>();
  auto quiet = std::make_shared<int>(0);
  response.set_chunked_content_provider(
      "text/event-stream",
      [this, viewer, quiet](std::size_t, httplib::DataSink& sink) {
        const std::string news = newsJson(service_, *viewer);
        std::string event = news.empty() ? "" : "data: " + news + "\n\n";
        if (event.empty() && ++*quiet >= kQuietRounds) event = ": still here\n\n";
        if (!event.empty()) *quiet = 0;
        if (!event.empty() && !sink.write(event.data(), event.size())) return false;
        return patience_.wait(kPace, [] { return true; });
      },
      [this](bool) { --viewers_; });
}

}  // namespace lamp::controller
