#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <csignal>
#include <fstream>
#include <thread>

#include "tests/controller/support/http_client.h"
#include "tests/controller/support/program.h"
#include "tests/controller/support/raw_client.h"

namespace lamp::controller::test {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::seconds;

// The program, and clients that mean no good.
class HostileClient : public testing::Test {
 protected:
  void SetUp() override {
    base = program.waitForAddress();
    port = std::stoi(base.substr(base.rfind(':') + 1));
  }

  void TearDown() override {
    EXPECT_EQ(httpGet(base + "/health").status, 200);
    EXPECT_EQ(httpCommand(base, 29, "").status, 200);
    const auto begin = Clock::now();
    program.signal(SIGTERM);
    EXPECT_EQ(program.wait(), 0);
    EXPECT_LT(Clock::now() - begin, seconds{2});
  }

  // Resident memory in MiB.
  long memory() const {
    std::ifstream status("/proc/" + std::to_string(program.id()) + "/status");
    for (std::string line; std::getline(status, line);) {
      if (line.starts_with("VmRSS:")) return std::stol(line.substr(6)) / 1024;
    }
    return 0;
  }

  Program program{
      std::vector<std::string>{LAMP_CONTROLLER_PROGRAM, "--port", "0", "--nodes", "20"}};
  std::string base;
  int port = 0;
};

const std::string kHead = "POST /lampmanager/command/2 HTTP/1.1\r\nHost: 127.0.0.1\r\n";

TEST_F(HostileClient, WhoResetsAHalfSentRequestTakesNothingFromOthers) {
  for (int i = 0; i < 200; ++i) {
    RawClient client(port);
    client.send(kHead + "Content-Type: application/xml\r\nContent-Length: 1000\r\n\r\n<deviceCfg>");
    client.reset();
  }
}

TEST_F(HostileClient, HeadsWithoutEndAreRefusedAndKeepNoMemory) {
  const long before = memory();
  std::vector<std::unique_ptr<RawClient>> clients;
  for (int i = 0; i < 20; ++i) {
    clients.push_back(std::make_unique<RawClient>(port));
    clients.back()->send(kHead);
    for (int line = 0; line < 200; ++line)
      clients.back()->send("X-" + std::to_string(line) + ": " + std::string(4000, 'x') + "\r\n");
  }
  EXPECT_LT(memory() - before, 64);
  const RawClient client(port);
  client.send("GET /health HTTP/1.1\r\nHost: 127.0.0.1\r\nX-A: " + std::string(70000, 'x') +
              "\r\n\r\n");
  EXPECT_TRUE(client.receive().starts_with("HTTP/1.1 4"));
}

TEST_F(HostileClient, AHeadOfSixtyThousandBytesIsTaken) {
  std::string head = "GET /health HTTP/1.1\r\nHost: 127.0.0.1\r\n";
  for (int line = 0; line < 15; ++line)
    head += "X-" + std::to_string(line) + ": " + std::string(4000, 'x') + "\r\n";
  const RawClient client(port);
  client.send(head + "\r\n");
  EXPECT_TRUE(client.receive().starts_with("HTTP/1.1 200"));
}

TEST_F(HostileClient, ManyWhoDripShutNobodyOut) {
  std::vector<std::unique_ptr<RawClient>> clients;
  for (int i = 0; i < 300; ++i) {
    clients.push_back(std::make_unique<RawClient>(port));
    clients.back()->send("P");
  }
  for (const auto& client : clients) client->send("O");
  const auto begin = Clock::now();
  EXPECT_EQ(httpGet(base + "/health").status, 200);
  EXPECT_LT(Clock::now() - begin, seconds{2});
}

TEST_F(HostileClient, ARequestThatDripsEndsWhenItsTimeIsOver) {
  const RawClient client(port);
  const auto begin = Clock::now();
  client.send("GET /health HTTP/1.1\r\nX: ");
  while (client.send("x") && Clock::now() - begin < seconds{20})
    std::this_thread::sleep_for(std::chrono::milliseconds{100});
  EXPECT_LT(Clock::now() - begin, seconds{15});
}

TEST_F(HostileClient, AnOddRangeIsPassedOver) {
  const std::string write = "<deviceCfg><E01 name=\"Ranged\"/></deviceCfg>";
  std::string ranges = "Range: bytes=0-1";
  for (int i = 0; i < 1000; ++i) ranges += ",0-1";
  for (const std::string& range :
       {ranges, std::string("Range: lines=5-"), std::string("Range: -")}) {
    EXPECT_EQ(httpSend("POST", base + "/lampmanager/command/2", write, "application/xml", 30, range)
                  .status,
              200);
    EXPECT_NE(httpSend("POST", base + "/lampmanager/command/1", "<deviceCfg><L01/></deviceCfg>",
                       "application/xml", 30, range)
                  .body.find("Ranged"),
              std::string::npos);
  }
}

TEST_F(HostileClient, ABrokenReplyBreaksTheConnectionThatItBelongsTo) {
  // The refused one and the one whose reply is lost have the same port at different addresses.
  const std::string write = "<deviceCfg><E01 name=\"Kept\"/></deviceCfg>";
  for (int i = 0; i < 10; ++i) {
    RawClient first(port, "127.0.0.1");
    RawClient second(port, "127.0.0.2", first.ownPort());
    first.send(kHead + "Content-Type: application/xml\r\nContent-Length: " +
               std::to_string(write.size()) + "\r\n\r\n");
    second.send("POST /elsewhere HTTP/1.1\r\nHost: evil.example\r\nContent-Length: 5\r\n\r\nab");
    second.reset();
    first.send(write);
    EXPECT_TRUE(first.receive().starts_with("HTTP/1.1 200"));
  }
}

TEST_F(HostileClient, ARequestOfAnyShapeCostsLittleAndHealthIsAnsweredMeanwhile) {
  const std::string wide = [] {
    std::string text = "<deviceCfg><E10";
    for (int i = 0; i < 100000; ++i) text += " a" + std::to_string(i) + "=''";
    return text + "/></deviceCfg>";
  }();
  const std::string deep = [] {
    std::string text;
    for (int i = 0; i < 200000; ++i) text += "<a>";
    return text;
  }();
  std::string many = "<deviceCfg><E02>";
  for (int i = 0; i < 8000; ++i) {
    many += "<TP TpTar=\"" + std::to_string(i) +
            "\" TpHi=\"20990101000000W\" TpPer=\"00000000010000\"><TpPro TpReq=\"L03\"/></TP>";
  }
  many += "</E02></deviceCfg>";
  for (const std::string& body : {wide, deep, many, "<deviceCfg>" + std::string(1 << 20, '\n')}) {
    const auto begin = Clock::now();
    std::thread sender([&] { httpCommand(base, 2, body); });
    EXPECT_EQ(httpGet(base + "/health").status, 200);
    EXPECT_LT(Clock::now() - begin, seconds{1});
    sender.join();
    EXPECT_LT(Clock::now() - begin, seconds{3});
  }
}

TEST_F(HostileClient, FourHundredViewersSeeTheSameEvents) {
  std::vector<std::unique_ptr<RawClient>> viewers;
  for (int i = 0; i < 400; ++i) {
    viewers.push_back(std::make_unique<RawClient>(port));
    viewers.back()->send("GET /events HTTP/1.1\r\nHost: 127.0.0.1\r\n\r\n");
  }
  for (const auto& viewer : viewers) EXPECT_TRUE(viewer->receiveUntil("\"date\":"));
  EXPECT_EQ(httpCommand(base, 2, "<deviceCfg><E01 name=\"Seen\"/></deviceCfg>").status, 200);
  for (const auto& viewer : viewers) EXPECT_TRUE(viewer->receiveUntil("Seen"));
}

}  // namespace
}  // namespace lamp::controller::test
