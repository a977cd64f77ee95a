#include <gtest/gtest.h>

#include <csignal>
#include <fstream>

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
