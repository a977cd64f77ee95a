#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <fstream>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "tests/controller/support/http_client.h"
#include "tests/controller/support/program.h"
#include "tests/controller/support/scratch_folder.h"

namespace lamp::controller::test {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t kClients = 50;
#ifdef __SANITIZE_ADDRESS__
constexpr bool kMemoryCounts = false;  // what is freed stays in memory for a while
#else
constexpr bool kMemoryCounts = true;
#endif

struct Load {
  int nodes = 0;
  std::chrono::seconds time{0};
};

// The value of the first attribute `name` behind `mark`; empty where there is none.
std::string valueBehind(const std::string& text, const std::string& mark, const std::string& name) {
  const std::size_t element = text.find(mark);
  if (element == std::string::npos) return "";
  const std::string opening = " " + name + "=\"";
  const std::size_t begin = text.find(opening, element);
  if (begin == std::string::npos) return "";
  const std::size_t value = begin + opening.size();
  return text.substr(value, text.find('"', value) - value);
}

// What went wrong, the first few of it.
class Complaints {
 public:
  void add(const std::string& text) {
    const std::lock_guard lock(mutex_);
    if (++count_ <= 10) text_ += text + "\n";
  }
  std::string text() const { return text_; }

 private:
  std::mutex mutex_;
  int count_ = 0;
  std::string text_;
};

// A client that writes numbers of its own into three sections and reads them back.
class Client {
 public:
  Client(const std::string& base, std::size_t number, std::string node, Complaints& complaints)
      : connection_(base),
        name_("c" + std::to_string(number)),
        task_(std::to_string(1000 + number)),
        node_(std::move(node)),
        complaints_(complaints) {}

  void workUntil(Clock::time_point end) {
    for (int round = static_cast<int>(task_.back()); Clock::now() < end; ++round) {
      ++number_;
      write("<E01 " + name_ + "=\"" + std::to_string(number_) + "\"/>");
      write("<E04><Node nodeId=\"" + node_ + "\" Reference=\"" + std::to_string(number_) +
            "\"/></E04>");
      write("<E02><TP TpTar=\"" + task_ +
            "\" TpHi=\"20990101000000W\" TpPer=\"00000001000000\" TpCompl=\"N\" TpPrio=\"1\" "
            "TpNode=\"" +
            std::to_string(number_) +
            "\"><TpPro TpReq=\"L15\" TpSend=\"N\" TpStore=\"N\"/></TP></E02>");
      expectKept(round % 10 == 0);
    }
  }

  // Everything of this client is there.
  void expectKept(bool tableToo) {
    const std::string wanted = std::to_string(number_);
    expect(wanted, valueBehind(read("L01"), "<L01", name_), "L01");
    expect(wanted, valueBehind(read("L02"), "TpTar=\"" + task_ + "\"", "TpNode"), "L02");
    if (tableToo) {
      expect(wanted, valueBehind(read("L04"), "nodeId=\"" + node_ + "\"", "Reference"), "L04");
    }
  }

  void reconnect(const std::string& base) { connection_.moveTo(base); }
  long requests() const { return requests_; }
  std::chrono::milliseconds longest() const { return longest_; }

 private:
  HttpAnswer send(int command, const std::string& body) {
    const Clock::time_point begin = Clock::now();
    HttpAnswer answer = connection_.command(command, "<deviceCfg>" + body + "</deviceCfg>");
    longest_ = std::max(
        longest_, std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - begin));
    ++requests_;
    if (answer.status != 200) {
      complaints_.add(name_ + ": " + body.substr(0, 60) + ": " + std::to_string(answer.status) +
                      " " + answer.fault + answer.body.substr(0, 200));
    }
    return answer;
  }
  void write(const std::string& section) { send(2, section); }
  std::string read(const std::string& section) { return send(1, "<" + section + "/>").body; }
  void expect(const std::string& wanted, const std::string& found, const char* section) {
    if (wanted == found) return;
    complaints_.add(name_ + ": " + section + " shows \"" + found + "\" in place of " + wanted);
  }

  HttpConnection connection_;
  const std::string name_;
  const std::string task_;
  const std::string node_;
  Complaints& complaints_;
  int number_ = 0;
  long requests_ = 0;
  std::chrono::milliseconds longest_{0};
};

// Resident memory of a process, in MiB.
long residentMemory(pid_t process) {
  std::ifstream status("/proc/" + std::to_string(process) + "/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with("VmRSS:")) return std::stol(line.substr(6)) / 1024;
  }
  return 0;
}

std::vector<std::string> firstNodes(const std::string& base, std::size_t count) {
  const std::string table = httpCommand(base, 1, "<deviceCfg><L04/></deviceCfg>").body;
  const std::string mark = "<Node nodeId=\"";
  std::vector<std::string> nodes;
  for (std::size_t at = table.find(mark); at != std::string::npos && nodes.size() < count;
       at = table.find(mark, at + 1)) {
    const std::size_t begin = at + mark.size();
    nodes.push_back(table.substr(begin, table.find('"', begin) - begin));
  }
  return nodes;
}

std::vector<std::string> command(const Load& load, const ScratchFolder& folder) {
  return {
      LAMP_CONTROLLER_PROGRAM,     "--port", "0", "--nodes", std::to_string(load.nodes), "--state",
      folder.path().string() + "/"};
}

// Memory at every tenth of the time.
std::vector<long> watchMemory(const Program& program, const Load& load) {
  std::vector<long> memory;
  for (int tenth = 0; tenth < 10; ++tenth) {
    std::this_thread::sleep_for(load.time / 10.0);
    memory.push_back(residentMemory(program.id()));
  }
  return memory;
}

// Once everybody has been served a few times, memory grows no more.
void expectNoGrowth(const std::vector<long>& memory) {
  const long before = *std::max_element(memory.begin() + 2, memory.begin() + 6);
  const long after = *std::max_element(memory.begin() + 6, memory.end());
  if (kMemoryCounts) {
    EXPECT_LT(after, before + before / 10 + 16);
  }
}

void bear(const Load& load) {
  const ScratchFolder folder;
  Complaints complaints;
  std::vector<std::unique_ptr<Client>> clients;
  {
    Program program(command(load, folder));
    const std::string base = program.waitForAddress();
    const std::vector<std::string> nodes = firstNodes(base, kClients);
    ASSERT_EQ(nodes.size(), kClients);
    for (std::size_t i = 0; i < kClients; ++i) {
      clients.push_back(std::make_unique<Client>(base, i, nodes[i], complaints));
    }
    std::vector<std::thread> threads;
    const Clock::time_point end = Clock::now() + load.time;
    for (const auto& client : clients) {
      threads.emplace_back([&client, end] { client->workUntil(end); });
    }
    const std::vector<long> memory = watchMemory(program, load);
    for (std::thread& thread : threads) thread.join();
    expectNoGrowth(memory);
    std::printf("memory in MiB:");
    for (const long each : memory) std::printf(" %ld", each);
    program.signal(SIGKILL);
    program.wait();
  }
  Program again(command(load, folder));
  const std::string base = again.waitForAddress();
  long requests = 0;
  std::chrono::milliseconds longest{0};
  for (const auto& client : clients) {
    requests += client->requests();
    longest = std::max(longest, client->longest());
    client->reconnect(base);
    client->expectKept(true);
  }
  std::printf("; %ld requests, the longest took %ld ms\n", requests,
              static_cast<long>(longest.count()));
  EXPECT_EQ(complaints.text(), "");
}

TEST(FiftyClients, ReadAndWriteAtOnceWithoutAnErrorALossOrGrowth) {
  bear(Load{2000, std::chrono::seconds{5}});
}

TEST(FiftyClientsForAMinute, ReadAndWriteAHundredThousandNodesAtOnce) {
  bear(Load{100000, std::chrono::seconds{60}});
}

}  // namespace
}  // namespace lamp::controller::test
