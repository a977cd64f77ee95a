#include <gtest/gtest.h>

#include "tests/controller/support/http_client.h"
#include "tests/controller/support/server_rig.h"

namespace lamp::controller::test {
namespace {

const std::string kRead = "<deviceCfg><L05/></deviceCfg>";
const std::string kWrite = "<deviceCfg><E01 name=\"Changed\"/></deviceCfg>";

HttpAnswer readWith(const std::string& fault) {
  ServerRig server;
  server.order(fault);
  return httpCommand(server.base, 1, kRead);
}

TEST(Faults, NoAnswerHoldsTheConnectionUntilTheClientGivesUp) {
  ServerRig server;
  server.order("no-answer");
  const HttpAnswer answer =
      httpSend("POST", server.base + "/lampmanager/command/1", kRead, "application/xml", 1);
  EXPECT_EQ(answer.status, 0);
  EXPECT_NE(answer.fault.find("timed out"), std::string::npos) << answer.fault;
}

TEST(Faults, NoAnswerEndsWithoutAByteWhenItsTimeIsOver) {
  EXPECT_NE(readWith("no-answer:0").fault.find("mpty reply"), std::string::npos);
}

TEST(Faults, DelayAnswersAfterTheTime) {
  ServerRig server;
  server.order("delay:1#1");
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_EQ(httpCommand(server.base, 1, kRead).status, 200);
  EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::seconds{1});
}

TEST(Faults, CloseMidReplyEndsTheConnectionInTheDocument) {
  const HttpAnswer answer = readWith("close-mid-reply");
  EXPECT_EQ(answer.status, 0);
  EXPECT_NE(answer.fault.find("remaining"), std::string::npos) << answer.fault;
}

TEST(Faults, TheDocumentCanBeSpoiled) {
  const std::string whole = readWith("delay:0").body;
  EXPECT_EQ(readWith("truncated-xml").body, whole.substr(0, whole.size() / 2));
  EXPECT_NE(readWith("wrong-section").body.find("<L00 "), std::string::npos);
  EXPECT_EQ(readWith("wrong-section").body.find("L05"), std::string::npos);
  EXPECT_NE(readWith("no-section").body.find("<ZelLamp Id=\"LM-TEST\"/></deviceCfg>"),
            std::string::npos);
  EXPECT_EQ(readWith("empty").body, "");
  EXPECT_EQ(readWith("empty").status, 200);
  EXPECT_EQ(readWith("oversize:3MiB").body.size(), 3U << 20U);
  EXPECT_NE(readWith("dtd").body.find("<!DOCTYPE"), std::string::npos);
  EXPECT_EQ(readWith("deep:70").body.substr(0, 6), "<a><a>");
  pugi::xml_document document;
  const std::string garbage = readWith("garbage").body;
  EXPECT_FALSE(document.load_buffer(garbage.data(), garbage.size()));
}

TEST(Faults, RefuseAnswersItsTextAndChangesNothing) {
  ServerRig server;
  server.order("refuse:Not today.#1");
  const HttpAnswer answer = httpCommand(server.base, 2, kWrite);
  EXPECT_EQ(answer.status, 422);
  EXPECT_EQ(answer.body, "Not today.");
  EXPECT_STREQ(server.rig.read("L01").attribute("name").value(), "Old Town");
  EXPECT_EQ(httpCommand(server.base, 2, kWrite).status, 200);
}

TEST(Faults, EverySecondWriteIsRefused) {
  ServerRig server;
  server.order("refuse-every-second-write");
  for (const int status : {200, 422, 200, 422}) {
    EXPECT_EQ(httpCommand(server.base, 2, kWrite).status, status);
    EXPECT_EQ(httpCommand(server.base, 1, kRead).status, 200);
  }
}

TEST(Faults, ALostReplyIsAnAppliedWrite) {
  ServerRig server;
  server.order("apply-lose-reply#1");
  EXPECT_EQ(httpCommand(server.base, 2, kWrite).status, 0);
  EXPECT_STREQ(server.rig.read("L01").attribute("name").value(), "Changed");
}

TEST(Faults, ARestartComesBeforeTheCommand) {
  ServerRig server;
  server.order("restart-mid-command#1");
  EXPECT_EQ(httpCommand(server.base, 2, kWrite).status, 0);
  EXPECT_EQ(server.restarts, 1);
  EXPECT_STREQ(server.rig.read("L01").attribute("name").value(), "Old Town");
}

TEST(Faults, AClockJumpMovesTheControllersDate) {
  ServerRig server;
  server.order("clock-jump:3600");
  httpCommand(server.base, 29, "");
  EXPECT_STREQ(server.rig.read("L01").attribute("Fh").value(), "20250315130000");
}

}  // namespace
}  // namespace lamp::controller::test
