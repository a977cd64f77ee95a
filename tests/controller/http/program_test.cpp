#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <csignal>
#include <fstream>
#include <pugixml.hpp>
#include <thread>

#include "controller/model/state_file.h"
#include "tests/controller/support/http_client.h"
#include "tests/controller/support/program.h"
#include "tests/controller/support/scratch_folder.h"

namespace lamp::controller::test {
namespace {

std::vector<std::string> command(const std::vector<std::string>& arguments) {
  std::vector<std::string> all = {LAMP_CONTROLLER_PROGRAM};
  all.insert(all.end(), arguments.begin(), arguments.end());
  return all;
}

TEST(ControllerProgram, ServesOnAFreePortAndEndsCleanlyOnASignal) {
  for (const int number : {SIGTERM, SIGINT}) {
    Program program(command({"--port", "0", "--nodes", "5", "--id", "LM-9"}));
    const std::string base = program.waitForAddress();
    ASSERT_TRUE(base.starts_with("http://127.0.0.1:")) << base;
    EXPECT_NE(httpCommand(base, 29, "").body.find("LM-9"), std::string::npos);
    program.signal(number);
    EXPECT_EQ(program.wait(), 0);
  }
}

TEST(ControllerProgram, GoesOnWithItsStateAfterBeingKilled) {
  const ScratchFolder folder;
  const std::string state = (folder.path() / "state.xml").string();
  {
    Program program(command({"--port", "0", "--nodes", "5", "--state", state}));
    const std::string base = program.waitForAddress();
    ASSERT_EQ(httpCommand(base, 2, "<deviceCfg><E01 name=\"Durable\"/></deviceCfg>").status, 200);
    program.signal(SIGKILL);
    EXPECT_EQ(program.wait(), 128 + SIGKILL);
  }
  Program again(command({"--port", "0", "--state", state}));
  const std::string base = again.waitForAddress();
  EXPECT_NE(httpCommand(base, 1, "<deviceCfg><L01/></deviceCfg>").body.find("\"Durable\""),
            std::string::npos);
}

// Several clients write their own attribute, each a higher number every time, until the program is
// killed. What was answered with success must be there afterwards.
TEST(ControllerProgram, LosesNothingThatItConfirmedWhenItIsKilled) {
  constexpr std::size_t kClients = 8;
  const ScratchFolder folder;
  const std::string state = (folder.path() / "state.xml").string();
  std::array<std::atomic<int>, kClients> confirmed{};
  {
    Program program(command({"--port", "0", "--nodes", "50", "--state", state}));
    const std::string base = program.waitForAddress();
    std::vector<std::thread> clients;
    for (std::size_t client = 0; client < kClients; ++client) {
      clients.emplace_back([&, client] {
        for (int number = 1;; ++number) {
          const std::string write = "<deviceCfg><E01 c" + std::to_string(client) + "=\"" +
                                    std::to_string(number) + "\"/></deviceCfg>";
          if (httpCommand(base, 2, write).status != 200) return;
          confirmed[client] = number;
        }
      });
    }
    // Killed in full flight: as soon as every client has been answered a few times.
    while (std::any_of(confirmed.begin(), confirmed.end(), [](const auto& n) { return n < 5; })) {
      std::this_thread::yield();
    }
    program.signal(SIGKILL);
    for (std::thread& client : clients) client.join();
    program.wait();
  }
  Program again(command({"--port", "0", "--state", state}));
  pugi::xml_document reply;
  const std::string base = again.waitForAddress();
  ASSERT_FALSE(base.empty());
  reply.load_string(httpCommand(base, 1, "<deviceCfg><L01/></deviceCfg>").body.c_str());
  const pugi::xml_node section = reply.child("deviceCfg").child("ZelLamp").child("L01");
  for (std::size_t client = 0; client < kClients; ++client) {
    EXPECT_GE(section.attribute(("c" + std::to_string(client)).c_str()).as_int(),
              confirmed[client].load());
  }
}

TEST(ControllerProgram, ServesFiftyClientsAtOnce) {
  constexpr int kClients = 50;
  constexpr int kRounds = 6;
  const ScratchFolder folder;
  Program program(command({"--port", "0", "--nodes", "200", "--state", folder.path().string()}));
  const std::string base = program.waitForAddress();
  std::atomic<int> good = 0;
  std::vector<std::thread> clients;
  for (int client = 0; client < kClients; ++client) {
    clients.emplace_back([&, client] {
      for (int round = 0; round < kRounds; ++round) {
        const bool writes = (client + round) % 3 == 0;
        good += httpCommand(base, writes ? 2 : 1,
                            writes ? "<deviceCfg><E01 name=\"x\"/></deviceCfg>"
                                   : "<deviceCfg><L04/></deviceCfg>")
                            .status == 200
                    ? 1
                    : 0;
      }
    });
  }
  for (std::thread& client : clients) client.join();
  EXPECT_EQ(good, kClients * kRounds);
}

TEST(ControllerProgram, MakesTheFolderOfItsState) {
  const ScratchFolder folder;
  Program program(
      command({"--port", "0", "--nodes", "1", "--state", (folder.path() / "a" / "b/").string()}));
  EXPECT_NE(program.waitForAddress(), "");
  EXPECT_TRUE(std::filesystem::exists(folder.path() / "a" / "b" / "lamp-controller.xml"));
}

TEST(ControllerProgram, RefusesAStateThatItCannotRead) {
  const ScratchFolder folder;
  const std::string state = (folder.path() / "state.xml").string();
  std::ofstream(state) << "<lampController";
  Program program(command({"--port", "0", "--state", state}));
  EXPECT_NE(program.readRest().find("was left as it is"), std::string::npos);
  EXPECT_EQ(program.wait(), 1);
  std::string text;
  EXPECT_EQ(readWholeFile(state, text), "");
  EXPECT_EQ(text, "<lampController");
}

TEST(ControllerProgram, ARestartInTheMiddleOfACommandForgetsIt) {
  const ScratchFolder folder;
  Program program(command({"--port", "0", "--nodes", "2", "--state", folder.path().string(),
                           "--fault", "restart-mid-command@2"}));
  const std::string base = program.waitForAddress();
  const std::string write = "<deviceCfg><E01 name=\"Lost\"/></deviceCfg>";
  EXPECT_EQ(httpCommand(base, 2, write).status, 0);
  EXPECT_EQ(program.waitForAddress(), base) << "it comes back at the same address";
  const std::string section = httpCommand(base, 1, "<deviceCfg><L01/></deviceCfg>").body;
  EXPECT_NE(section.find("\"Old Town\""), std::string::npos);
  EXPECT_EQ(httpCommand(base, 2, write).status, 200) << "and does not restart again";
}

TEST(ControllerProgram, RunsFasterWhenAsked) {
  Program program(command({"--port", "0", "--nodes", "1", "--speed", "0"}));
  const std::string base = program.waitForAddress();
  const std::string first = httpGet(base + "/health").body;
  EXPECT_EQ(httpGet(base + "/health").body, first) << "a clock of speed 0 stands still";
}

TEST(ControllerProgram, SaysWhatIsWrongWithItsOptions) {
  Program program(command({"--port", "many"}));
  EXPECT_EQ(program.readRest(),
            "lamp-controller: --port is \"many\"; it must be a number from 0 to 65535\n");
  EXPECT_EQ(program.wait(), 2);
}

TEST(ControllerProgram, SaysWhenItsPortIsTaken) {
  Program program(command({"--port", "0", "--nodes", "1"}));
  const std::string base = program.waitForAddress();
  const std::string port = base.substr(base.rfind(':') + 1);
  Program other(command({"--port", port, "--nodes", "1"}));
  EXPECT_NE(other.readRest().find("can't listen on 127.0.0.1 port " + port), std::string::npos);
  EXPECT_EQ(other.wait(), 1);
}

}  // namespace
}  // namespace lamp::controller::test
