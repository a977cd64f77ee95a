#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/controller/support/http_client.h"
#include "tests/controller/support/server_rig.h"

namespace lamp::controller::test {
namespace {

TEST(ControlDesk, NeedsTheToken) {
  ServerRig server;
  EXPECT_EQ(httpControl(server.base + "/control/clock?jump=60", "wrong").status, 403);
  EXPECT_EQ(httpSend("POST", server.base + "/control/clock?jump=60", "").status, 403);
  EXPECT_STREQ(server.rig.read("L01").attribute("Fh").value(), "20250315120000");
}

TEST(ControlDesk, SetsTheClock) {
  ServerRig server;
  EXPECT_EQ(httpControl(server.base + "/control/clock?jump=-60").status, 200);
  EXPECT_STREQ(server.rig.read("L01").attribute("Fh").value(), "20250315115900");
  EXPECT_EQ(httpControl(server.base + "/control/clock?set=20250601220000").status, 200);
  EXPECT_STREQ(server.rig.read("L01").attribute("Fh").value(), "20250601220000");
  EXPECT_EQ(httpControl(server.base + "/control/clock?speed=600").status, 200);
  server.rig.time.pass(std::chrono::seconds{1});
  EXPECT_STREQ(server.rig.read("L01").attribute("Fh").value(), "20250601221000");
  EXPECT_EQ(httpControl(server.base + "/control/clock?paused=1").status, 200);
  server.rig.time.pass(std::chrono::seconds{1});
  EXPECT_STREQ(server.rig.read("L01").attribute("Fh").value(), "20250601221000");
}

TEST(ControlDesk, RefusesWhatItDoesNotUnderstand) {
  ServerRig server;
  for (const char* request :
       {"clock", "clock?speed=x", "clock?speed=90000", "clock?paused=2", "clock?jump=1h",
        "clock?set=20250231000000", "input?number=9&active=1", "input?number=1", "fault",
        "fault?set=bogus", "lamp?node=4100007", "lamp?node=4100007&condition=dim",
        "lamp?node=4100007&condition=", "lamp?node=nobody&condition=good"}) {
    const HttpAnswer answer = httpControl(server.base + "/control/" + request);
    EXPECT_EQ(answer.status, 400) << request;
    EXPECT_FALSE(answer.body.empty()) << request;
  }
}

TEST(ControlDesk, SwitchesAnInputAndTheOutputThatFollowsIt) {
  ServerRig server;
  const auto value = [&] {
    return std::string(server.rig.read("L13")
                           .find_child_by_attribute("Output", "Dir", "4")
                           .attribute("Value")
                           .value());
  };
  EXPECT_EQ(value(), "0");
  EXPECT_EQ(httpControl(server.base + "/control/input?number=1&active=1").status, 200);
  EXPECT_EQ(value(), "1");
}

TEST(ControlDesk, MakesALampFaultyAndGoodAgain) {
  ServerRig server;
  for (const char* condition : {"broken", "ageing", "good"}) {
    const std::string request = "/control/lamp?node=4100007&condition=";
    EXPECT_EQ(httpControl(server.base + request + condition, "wrong").status, 403);
    EXPECT_EQ(httpControl(server.base + request + condition).status, 200);
    EXPECT_EQ(server.rig.controller.lampView("4100007")->condition, condition);
  }
}

TEST(ControlDesk, DescribesEveryFaultThatCanBeOrdered) {
  ServerRig server;
  const auto faults = nlohmann::json::parse(httpGet(server.base + "/control/faults").body);
  EXPECT_EQ(faults.size(), 16U);
  for (const auto& fault : faults) {
    EXPECT_FALSE(fault["effect"].get<std::string>().empty());
    const std::string name = fault["name"];
    EXPECT_EQ(httpControl(server.base + "/control/fault?set=" + name + "%2399").status, 200);
    const std::string withArgument = "/control/fault?set=" + name + ":12%2399";
    EXPECT_EQ(httpControl(server.base + withArgument).status,
              fault["argument"].get<std::string>().empty() ? 400 : 200)
        << name;
  }
}

TEST(ControlDesk, OrdersAndClearsFaults) {
  ServerRig server;
  const HttpAnswer ordered =
      httpControl(server.base + "/control/fault?set=refuse:later%40home%401");
  EXPECT_EQ(ordered.status, 200);
  EXPECT_NE(ordered.body.find("refuse:later@home@1"), std::string::npos);
  EXPECT_EQ(httpCommand(server.base, 1, "<deviceCfg><L01/></deviceCfg>").body, "later@home");
  EXPECT_EQ(httpControl(server.base + "/control/fault?clear=1").status, 200);
  EXPECT_EQ(httpCommand(server.base, 1, "<deviceCfg><L01/></deviceCfg>").status, 200);
}

TEST(ControlDesk, ShowsWhereThingsStand) {
  ServerRig server;
  server.order("delay:0");
  const HttpAnswer state = httpGet(server.base + "/control/state");
  EXPECT_EQ(state.type, "application/json");
  EXPECT_EQ(state.body,
            "{\"date\":\"2025-03-15 12:00:00\",\"faults\":[\"delay:0\"],\"paused\":false,"
            "\"speed\":1}\n");
}

}  // namespace
}  // namespace lamp::controller::test
