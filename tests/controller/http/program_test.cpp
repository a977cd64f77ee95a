#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <csignal>
#include <fstream>
#include <functional>
#include <pugixml.hpp>
#include <random>
#include <thread>

#include "controller/storage/disk.h"
#include "tests/controller/support/http_client.h"
#include "tests/controller/support/program.h"
#include "tests/controller/support/raw_client.h"
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

TEST(ControllerProgram, EndsAtOnceAlthoughAClientHoldsItsConnection) {
  Program program(command({"--port", "0", "--nodes", "5"}));
  const std::string base = program.waitForAddress();
  const RawClient client(std::stoi(base.substr(base.rfind(':') + 1)));
  client.send("GET /health HTTP/1.1\r\n");
  // Whoever comes later is served later: by then the first one is being waited for.
  EXPECT_EQ(httpGet(base + "/health").status, 200);
  const auto begin = std::chrono::steady_clock::now();
  program.signal(SIGTERM);
  EXPECT_EQ(program.wait(), 0);
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds{3});
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

// What clients have written and had confirmed, each a number that grows.
struct Confirmed {
  static constexpr std::size_t kClients = 4;
  std::array<std::atomic<int>, kClients> pairs{};  // two attributes of one command
  std::atomic<int> rows = 0;                       // every row of the node table
  std::atomic<int> large = 0;                      // a section of 100 KiB
  std::atomic<int> answers = 0;
};

std::string numbered(const std::string& before, int number, const std::string& after) {
  return before + std::to_string(number) + after;
}

// Writes higher and higher numbers until there is no answer any more.
void writeUntilTheEnd(const std::string& base, std::atomic<int>& confirmed,
                      std::atomic<int>& answers,
                      const std::function<std::string(int number)>& section) {
  for (int number = confirmed + 1;; ++number) {
    const std::string body = "<deviceCfg>" + section(number) + "</deviceCfg>";
    if (httpCommand(base, 2, body).status != 200) return;
    confirmed = number;
    ++answers;
  }
}

std::vector<std::thread> startWriters(const std::string& base, Confirmed& confirmed,
                                      const std::vector<std::string>& nodes) {
  std::vector<std::thread> writers;
  for (std::size_t client = 0; client < Confirmed::kClients; ++client) {
    writers.emplace_back([&, base, client] {
      const std::string name = std::to_string(client);
      writeUntilTheEnd(base, confirmed.pairs[client], confirmed.answers, [&](int number) {
        return numbered("<E01 a" + name + "=\"", number, "\" ") +
               numbered("b" + name + "=\"", number, "\"/>");
      });
    });
  }
  writers.emplace_back([&, base] {
    writeUntilTheEnd(base, confirmed.rows, confirmed.answers, [&](int number) {
      std::string rows = "<E04>";
      for (const std::string& node : nodes) {
        rows += "<Node nodeId=\"" + node + numbered("\" Reference=\"", number, "\"/>");
      }
      return rows + "</E04>";
    });
  });
  writers.emplace_back([&, base] {
    writeUntilTheEnd(base, confirmed.large, confirmed.answers, [](int number) {
      return numbered("<E10 n=\"", number, "\" text=\"") + std::string(100000, 'x') + "\"/>";
    });
  });
  return writers;
}

pugi::xml_document readAll(const std::string& base, const char* section) {
  const std::string body =
      httpCommand(base, 1, std::string("<deviceCfg><") + section + "/></deviceCfg>").body;
  pugi::xml_document reply;
  reply.load_string(body.c_str());
  return reply;
}

pugi::xml_node sectionOf(const pugi::xml_document& reply, const char* section) {
  return reply.child("deviceCfg").child("ZelLamp").child(section);
}

// Nothing that was confirmed is missing, and nothing stands there by half.
void expectConfirmed(const std::string& base, Confirmed& confirmed) {
  const pugi::xml_document general = readAll(base, "L01");
  for (std::size_t client = 0; client < Confirmed::kClients; ++client) {
    const std::string name = std::to_string(client);
    const int a = sectionOf(general, "L01").attribute(("a" + name).c_str()).as_int();
    EXPECT_EQ(a, sectionOf(general, "L01").attribute(("b" + name).c_str()).as_int());
    EXPECT_GE(a, confirmed.pairs[client]);
    confirmed.pairs[client] = a;
  }
  const pugi::xml_document table = readAll(base, "L04");
  const int first = sectionOf(table, "L04").first_child().attribute("Reference").as_int();
  EXPECT_GE(first, confirmed.rows);
  confirmed.rows = first;
  for (const pugi::xml_node node : sectionOf(table, "L04").children()) {
    ASSERT_TRUE(first == 0 || node.attribute("Reference").as_int() == first);
  }
  const pugi::xml_document kept = readAll(base, "L10");
  const pugi::xml_node large = sectionOf(kept, "L10");
  EXPECT_GE(large.attribute("n").as_int(), confirmed.large);
  confirmed.large = large.attribute("n").as_int();
  if (confirmed.large > 0) {
    EXPECT_EQ(std::string_view(large.attribute("text").value()).size(), 100000U);
  }
}

// Killed again and again in full flight, at a random moment each time. The large section makes the
// program write its whole state every second or so, too.
TEST(ControllerProgram, LosesNothingThatItConfirmedHoweverOftenItIsKilled) {
  constexpr int kKills = 20;
  const ScratchFolder folder;
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  const auto upTo = [&](int most) { return std::uniform_int_distribution<int>(0, most)(random); };
  Confirmed confirmed;
  std::vector<std::string> nodes;
  for (int kill = 0; kill <= kKills && !testing::Test::HasFailure(); ++kill) {
    SCOPED_TRACE("after so many kills: " + std::to_string(kill));
    Program program(command({"--port", "0", "--nodes", "50", "--state", folder.path().string()}));
    const std::string base = program.waitForAddress();
    ASSERT_FALSE(base.empty());
    expectConfirmed(base, confirmed);
    if (nodes.empty()) {
      const pugi::xml_document table = readAll(base, "L04");
      for (const pugi::xml_node node : sectionOf(table, "L04").children()) {
        nodes.emplace_back(node.attribute("nodeId").value());
      }
    }
    const int enough = confirmed.answers + upTo(200);
    std::vector<std::thread> writers = startWriters(base, confirmed, nodes);
    while (confirmed.answers < enough) std::this_thread::yield();
    const auto moment = std::chrono::steady_clock::now() + std::chrono::microseconds{upTo(9999)};
    while (std::chrono::steady_clock::now() < moment) std::this_thread::yield();
    program.signal(SIGKILL);
    for (std::thread& writer : writers) writer.join();
    program.wait();
  }
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
  EXPECT_EQ(machineDisk().read(state, text), "");
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

std::string calendarOfOneDayType(const std::string& dayType) {
  return "<calendar><hasIOmodule>F</hasIOmodule><days><day><num>" + dayType +
         "</num><Interval time1='60' power1='13' time2='60' power2='17' time3='60' power3='19' "
         "time4='60' power4='23'/></day></days><year>" +
         std::string(366, dayType[0]) + "</year></calendar>";
}

TEST(ControllerProgram, BurnsByTheDayTypesOfACalendar) {
  const ScratchFolder folder;
  const std::string calendar = (folder.path() / "year.calendar").string();
  std::ofstream(calendar) << calendarOfOneDayType("4");
  Program program(command({"--port", "0", "--nodes", "5", "--calendar", calendar}));
  const std::string base = program.waitForAddress();
  const std::string plan = httpGet(base + "/street.json").body;
  for (const char* step : {"\"power\":13", "\"power\":17", "\"power\":19", "\"power\":23"}) {
    EXPECT_NE(plan.find(step), std::string::npos) << plan;
  }
}

TEST(ControllerProgram, RefusesACalendarThatItCannotRead) {
  const ScratchFolder folder;
  const std::string calendar = (folder.path() / "year.calendar").string();
  for (const char* text : {"", "<calendar>", "<other/>"}) {
    std::ofstream(calendar) << text;
    Program program(command({"--port", "0", "--nodes", "5", "--calendar", calendar}));
    EXPECT_NE(program.readRest().find("the calendar " + calendar + " can't be used"),
              std::string::npos)
        << text;
    EXPECT_EQ(program.wait(), 1);
  }
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
