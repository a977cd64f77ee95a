#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "controller/http/live_news.h"
#include "tests/controller/support/http_client.h"
#include "tests/controller/support/server_rig.h"

namespace lamp::controller::test {
namespace {

using nlohmann::json;

Service serviceOf(ServerRig& rig) {
  return Service{rig.rig.controller, rig.rig.clock, rig.faults, rig.log, "token", [] {}};
}

TEST(LivePage, CarriesTheTokenAndItsFiles) {
  ServerRig server;
  const HttpAnswer page = httpGet(server.base + "/");
  EXPECT_EQ(page.status, 200);
  EXPECT_TRUE(page.type.starts_with("text/html"));
  EXPECT_NE(page.body.find("content=\"test-token\""), std::string::npos);
  for (const char* file : {"page", "faults", "lamp", "map", "panels", "street"}) {
    const HttpAnswer script = httpGet(server.base + "/" + file + ".js");
    EXPECT_EQ(script.status, 200) << file;
    EXPECT_TRUE(script.type.starts_with("text/javascript")) << file;
    EXPECT_FALSE(script.body.empty());
    EXPECT_EQ(script.body.find('\0'), std::string::npos);
  }
  EXPECT_TRUE(httpGet(server.base + "/page.css").type.starts_with("text/css"));
  EXPECT_EQ(httpGet(server.base + "/other.js").status, 404);
  EXPECT_EQ(httpGet(server.base + "/page.html").status, 404) << "it is without its token";
}

TEST(LivePage, TellsAllAboutOneLamp) {
  ServerRig server;
  const json lamp = json::parse(httpGet(server.base + "/lamp.json?node=4100007").body);
  EXPECT_EQ(lamp["reference"], "Harbour Street pole 1");
  EXPECT_EQ(lamp["power"], 0);
  EXPECT_EQ(lamp["condition"], "good");
  EXPECT_EQ(lamp["steps"][1]["from"], "22:30");
  EXPECT_EQ(httpGet(server.base + "/lamp.json?node=nobody").status, 404);
  EXPECT_EQ(httpGet(server.base + "/lamp.json").status, 404);
}

TEST(LivePage, ThePlanNamesEveryNodeAndTonightsPrograms) {
  ServerRig server;
  const json plan = json::parse(httpGet(server.base + "/street.json").body);
  EXPECT_EQ(plan["ids"].size(), 20U);
  EXPECT_EQ(plan["ids"][0], "4100007");
  EXPECT_EQ(plan["references"][0], "Harbour Street pole 1");
  EXPECT_NEAR(plan["positions"][0][0].get<double>(), 41.547, 0.01);
  std::size_t lamps = 0;
  for (const json& program : plan["programs"]) lamps += program["lamps"].get<std::size_t>();
  EXPECT_EQ(lamps, 20U);
  const json& steps = plan["programs"][0]["steps"];
  EXPECT_EQ(steps[0]["power"], 100);
  EXPECT_EQ(steps[1]["from"], "22:30");
  EXPECT_EQ(steps[1]["power"], 70);
}

TEST(LivePage, ANodeWithoutPositionIsNotPlaced) {
  ServerRig server;
  ASSERT_EQ(server.rig.write("<E08><Node nodeId=\"4100007\"/></E08>"), 200);
  const json plan = json::parse(httpGet(server.base + "/street.json").body);
  EXPECT_TRUE(plan["positions"][0].is_null());
  EXPECT_EQ(plan["references"][0], "");
}

TEST(LiveNews, ComeOnlyWhenThereAreSome) {
  ServerRig server;
  const Service service = serviceOf(server);
  LiveNews news(service);
  const json first = json::parse(news.next(true).changed);
  EXPECT_EQ(first["date"], "2025-03-15 12:00:00");
  EXPECT_EQ(first["powers"], std::string(20, 'A'));
  EXPECT_EQ(news.next(false).changed, "");
  server.rig.time.pass(std::chrono::hours{8});
  const json second = json::parse(news.next(false).changed);
  EXPECT_EQ(second["lit"], 20);
  EXPECT_EQ(second["powers"].get<std::string>()[0], '/') << "100 % is the last letter";
  server.rig.time.pass(std::chrono::seconds{1});
  const News third = news.next(false);
  EXPECT_FALSE(json::parse(third.changed).contains("powers"));
  EXPECT_TRUE(json::parse(third.whole).contains("powers")) << "for whoever comes now";
}

TEST(LiveNews, ShowCommandsWithoutTheirPasswordsAndOnce) {
  ServerRig server;
  const Service service = serviceOf(server);
  LiveNews news(service);
  news.next(true);
  httpSend("POST", server.base + "/lampmanager/command/2?ftpUser=u&ftpPassword=s3cret",
           "<deviceCfg><E01 FTPPwd=\"s3cret\" mailPassword=\"s3cret\"/></deviceCfg>");
  httpCommand(server.base, 1, "<deviceCfg><L01/></deviceCfg>");
  const News update = news.next(false);
  for (const std::string& text : {update.changed, update.whole}) {
    EXPECT_EQ(text.find("s3cret"), std::string::npos);
    const json log = json::parse(text)["log"];
    ASSERT_EQ(log.size(), 2U);
    EXPECT_EQ(log[0]["parameters"], "ftpUser=u&ftpPassword=***");
    EXPECT_EQ(log[1]["status"], 200);
  }
  EXPECT_EQ(news.next(false).changed, "");
  httpCommand(server.base, 1, "<deviceCfg><L01/></deviceCfg>");
  const News next = news.next(false);
  EXPECT_EQ(json::parse(next.changed)["log"].size(), 1U);
  EXPECT_EQ(json::parse(next.whole)["log"].size(), 3U);
}

TEST(LiveNews, BytesThatAreNoTextAreReplaced) {
  ServerRig server;
  const Service service = serviceOf(server);
  LiveNews news(service);
  server.order("refuse:a\xFF\xC3");
  const json shown = json::parse(news.next(true).changed);
  EXPECT_EQ(shown["faults"][0], "refuse:a\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(LivePage, StreamsNewsAsEvents) {
  ServerRig server;
  // The stream has no end: it is listened to until something came, longer on a slow machine.
  HttpAnswer stream;
  for (int seconds = 1; stream.body.empty() && seconds <= 16; seconds *= 4)
    stream = httpSend("GET", server.base + "/events", "", "text/plain", seconds);
  EXPECT_TRUE(stream.body.starts_with("data: {")) << stream.body;
  EXPECT_NE(stream.body.find("\n\n"), std::string::npos);
}

}  // namespace
}  // namespace lamp::controller::test
