#include "controller/http/command_server.h"

#include <gtest/gtest.h>

#include <thread>

#include "tests/controller/support/http_client.h"
#include "tests/controller/support/memory_disk.h"
#include "tests/controller/support/server_rig.h"

namespace lamp::controller::test {
namespace {

class CommandServerTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(server.started); }

  ServerRig server;
  ControllerRig& rig = server.rig;
  const std::string& base = server.base;
};

TEST_F(CommandServerTest, AReadIsAnsweredWithADocument) {
  const HttpAnswer answer = httpCommand(base, 1, "<deviceCfg><L04/></deviceCfg>");
  EXPECT_EQ(answer.status, 200);
  EXPECT_EQ(answer.type, "application/xml");
  EXPECT_NE(answer.body.find("<L04 Fh="), std::string::npos);
}

TEST_F(CommandServerTest, AWriteIsAnsweredWithNothing) {
  const HttpAnswer answer = httpCommand(base, 2, "<deviceCfg><E01 name=\"x\"/></deviceCfg>");
  EXPECT_EQ(answer.status, 200);
  EXPECT_EQ(answer.body, "");
  EXPECT_STREQ(rig.read("L01").attribute("name").value(), "x");
}

TEST_F(CommandServerTest, TakesParametersAndAnEmptyBody) {
  const HttpAnswer answer = httpSend(
      "POST", base + "/lampmanager/command/29?driver=a%20b&address=%C3%A9&ftpPassword=", "");
  EXPECT_EQ(answer.status, 200);
  EXPECT_NE(answer.body.find("Id=\"LM-TEST\""), std::string::npos);
}

TEST_F(CommandServerTest, ARefusalIsShortPlainText) {
  const HttpAnswer answer = httpCommand(base, 2, "<deviceCfg><E01 hourIni=\"24\"/></deviceCfg>");
  EXPECT_EQ(answer.status, 422);
  EXPECT_TRUE(answer.type.starts_with("text/plain"));
  EXPECT_EQ(answer.body,
            "E01: hourIni is \"24\"; it must be a whole number from 0 to 23. Nothing was changed.");
}

TEST_F(CommandServerTest, OtherAddressesAndMethodsAreRefused) {
  EXPECT_EQ(httpSend("POST", base + "/lampmanager/command/x", "").status, 404);
  EXPECT_EQ(httpSend("POST", base + "/lampmanager/command/-1", "").status, 404);
  EXPECT_EQ(httpSend("POST", base + "/lampmanager/command/99999999999", "").status, 404);
  EXPECT_EQ(httpSend("POST", base + "/lampmanager/command/", "").status, 404);
  EXPECT_EQ(httpSend("POST", base + "/elsewhere", "").status, 404);
  EXPECT_EQ(httpGet(base + "/lampmanager/command/1").status, 405);
  EXPECT_EQ(httpSend("PUT", base + "/lampmanager/command/2", "<a/>").status, 405);
}

TEST_F(CommandServerTest, ABodyOverTheLimitIsRefusedAndTheNextCommandWorks) {
  const std::string large = "<deviceCfg>" + std::string((64U << 20U), ' ') + "<L01/></deviceCfg>";
  const HttpAnswer answer = httpCommand(base, 1, large);
  EXPECT_EQ(answer.status, 413) << answer.fault;
  EXPECT_NE(answer.body.find("64 MiB"), std::string::npos);
  EXPECT_EQ(httpCommand(base, 29, "").status, 200);
}

TEST_F(CommandServerTest, ABodyIsXmlByItsType) {
  const std::string read = "<deviceCfg><L01/></deviceCfg>";
  const auto status = [&](const std::string& body, const std::string& type) {
    return httpSend("POST", base + "/lampmanager/command/1", body, type).status;
  };
  for (const char* type : {"application/xml", "text/xml", "Application/XML; charset=utf-8",
                           "text/xml ;charset=utf-8"}) {
    EXPECT_EQ(status(read, type), 200) << type;
  }
  for (const char* type : {"multipart/form-data; boundary=y", "application/x-www-form-urlencoded",
                           "text/plain", "application/xmlx", "application/xml+x", "xml", ""}) {
    EXPECT_EQ(status(read, type), 415) << type;
  }
  const std::string identify = base + "/lampmanager/command/29";
  EXPECT_EQ(httpSend("POST", identify, "", "").status, 200) << "no body needs no type";
  EXPECT_EQ(httpSend("POST", identify, "", "text/plain").status, 200);
}

TEST_F(CommandServerTest, ShowsItsHealth) {
  const HttpAnswer answer = httpGet(base + "/health");
  EXPECT_EQ(answer.status, 200);
  EXPECT_EQ(answer.body, "controller LM-TEST, 2025-03-15 12:00:00, 20 nodes, 0 writes pending\n");
}

TEST_F(CommandServerTest, ManyClientsAtOnceAreServed) {
  std::vector<std::thread> clients;
  std::atomic<int> good = 0;
  for (int client = 0; client < 16; ++client) {
    clients.emplace_back([&, client] {
      for (int round = 0; round < 10; ++round) {
        const std::string write = "<deviceCfg><E01 c" + std::to_string(client) + "=\"" +
                                  std::to_string(round) + "\"/></deviceCfg>";
        good += httpCommand(base, 2, write).status == 200 ? 1 : 0;
        good += httpCommand(base, 1, "<deviceCfg><L01/></deviceCfg>").status == 200 ? 1 : 0;
      }
    });
  }
  for (std::thread& client : clients) client.join();
  EXPECT_EQ(good, 16 * 20);
  for (int client = 0; client < 16; ++client) {
    EXPECT_STREQ(rig.read("L01").attribute(("c" + std::to_string(client)).c_str()).value(), "9");
  }
}

TEST_F(CommandServerTest, ARequestWithoutALengthHasNoBody) {
  const HttpAnswer answer = httpSend("POST-WITHOUT-LENGTH", base + "/lampmanager/command/29", "");
  EXPECT_EQ(answer.status, 200) << answer.fault;
}

TEST(CommandServer, DoesNotStartOnAPortThatIsTakenOrAnAddressOfAnotherMachine) {
  ServerRig first;
  ASSERT_TRUE(first.started);
  const Service service{
      first.rig.controller, first.rig.clock, first.faults, first.log, "token", [] {}};
  CommandServer other(service);
  EXPECT_FALSE(other.start("127.0.0.1", first.server.port()));
  EXPECT_FALSE(other.start("203.0.113.1", 0));
}

TEST(CommandServer, AStateThatCannotBeKeptIsAFailure) {
  MemoryDisk disk;
  ServerRig server(StreetPlan{1, 7, false}, "kept/state.xml", disk);
  disk.failAt(disk.operations() + 1, 1000);
  const HttpAnswer answer = httpCommand(server.base, 2, "<deviceCfg><E01 name=\"x\"/></deviceCfg>");
  EXPECT_EQ(answer.status, 500);
  EXPECT_NE(answer.body.find("could not be kept"), std::string::npos);
  EXPECT_STREQ(server.rig.read("L01").attribute("name").value(), "Old Town");
}

}  // namespace
}  // namespace lamp::controller::test
