// A section read over the command channel beside bare libcurl and the XML model on the same reply,
// from one server on loopback. Names read "http/read/<variant>/<nodes>".

#include <benchmark/benchmark.h>
#include <curl/curl.h>
#include <httplib.h>

#include <cstdio>
#include <string>
#include <thread>

#include "bench/documents.h"
#include "bench/sizes.h"
#include "host/xml/xml_document.h"
#include "workbench/http_command_channel.h"

namespace {

/// Answers every request with one document.
class Server {
 public:
  Server() {
    server_.Post(".*", [this](const httplib::Request&, httplib::Response& response) {
      response.set_content(reply_, "application/xml");
    });
    port_ = server_.bind_to_any_port("127.0.0.1");
    thread_ = std::thread([this] { server_.listen_after_bind(); });
  }
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;
  ~Server() {
    server_.stop();
    thread_.join();
  }
  int port() const { return port_; }
  /// Between requests only.
  void answer(std::string reply) { reply_ = std::move(reply); }

 private:
  std::string reply_;
  httplib::Server server_;
  int port_ = 0;
  std::thread thread_;
};

XmlDocument request() {
  XmlDocument document("deviceCfg");
  document.Root()->NewChild("L04");
  return document;
}

void overChannel(benchmark::State& state, int port) {
  workbench::HttpCommandChannel channel;
  const XmlDocument document = request();
  const std::string parameters = "address=127.0.0.1&socket=" + std::to_string(port);
  for (auto _ : state) {
    const host::ExchangeReply reply = channel.exchange(
        {1, host::CommandKind::get, XCBasicString::FromUtf8(parameters), &document});
    if (reply.status != host::ExchangeReply::Status::succeeded)
      state.SkipWithError(reply.error.ToUtf8().c_str());
  }
}

std::size_t append(char* data, std::size_t size, std::size_t count, void* text) {
  static_cast<std::string*>(text)->append(data, size * count);
  return size * count;
}

void overCurl(benchmark::State& state, int port) {
  const std::string url = "http://127.0.0.1:" + std::to_string(port) + "/";
  for (auto _ : state) {
    std::string body;
    const std::string sent = request().ToString();
    CURL* handle = curl_easy_init();
    curl_easy_setopt(handle, CURLOPT_URL, url.c_str());
    curl_easy_setopt(handle, CURLOPT_POSTFIELDS, sent.c_str());
    curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, append);
    curl_easy_setopt(handle, CURLOPT_WRITEDATA, &body);
    const CURLcode result = curl_easy_perform(handle);
    curl_easy_cleanup(handle);
    XmlDocument reply;
    if (result != CURLE_OK || !reply.Parse(std::move(body)))
      state.SkipWithError("the request failed");
  }
}

}  // namespace

int main(int argc, char** argv) {
  curl_global_init(CURL_GLOBAL_DEFAULT);
  Server server;
  const auto add = [&](const char* name, void (*run)(benchmark::State&, int)) {
    auto* registered = benchmark::RegisterBenchmark(name, [&, run](benchmark::State& state) {
      server.answer(bench::nodeTable(static_cast<std::size_t>(state.range(0))));
      run(state, server.port());
    });
    registered->UseRealTime();
    for (const long nodes : bench::Sizes) registered->Arg(nodes);
  };
  add("http/read/curl", overCurl);
  add("http/read/host", overChannel);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
