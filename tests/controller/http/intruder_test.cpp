#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <sstream>

#include "tests/controller/support/http_client.h"
#include "tests/controller/support/program.h"
#include "tests/controller/support/raw_client.h"
#include "tests/controller/support/scratch_folder.h"
#include "tests/controller/support/server_rig.h"
#include "tests/controller/support/tar_maker.h"

namespace lamp::controller::test {
namespace {

const std::string kWrite = "<deviceCfg><E01 name=\"Intruder\"/></deviceCfg>";

std::string post(const std::string& path, const std::string& headers, const std::string& body) {
  return "POST " + path + " HTTP/1.1\r\n" + headers +
         "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

const std::string kCommandPath = "/lampmanager/command/2";
const std::string kOwnHost = "Host: 127.0.0.1\r\n";

class Intruder : public testing::Test {
 protected:
  std::string name() { return server.rig.read("L01").attribute("name").value(); }
  std::string raw(const std::string& bytes) {
    const RawClient client(server.server.port());
    client.send(bytes);
    return client.receive();
  }

  ServerRig server;
};

TEST_F(Intruder, APageOfAnotherSiteCanSendNoCommand) {
  for (const char* origin : {"http://evil.example", "null", "https://127.0.0.1"}) {
    const HttpAnswer answer = httpSend("POST", server.base + kCommandPath, kWrite,
                                       "application/xml", 30, std::string("Origin: ") + origin);
    EXPECT_EQ(answer.status, 403) << origin;
    EXPECT_EQ(name(), "Old Town");
  }
  const HttpAnswer own = httpSend("POST", server.base + kCommandPath, kWrite, "application/xml", 30,
                                  "Origin: " + server.base);
  EXPECT_EQ(own.status, 200) << own.body;
}

TEST_F(Intruder, ASiteWhoseNameWasMadeToPointHereSeesNothing) {
  for (const char* path : {"/", "/street.json", "/events", "/health", "/control/state",
                           "/lampmanager/command/1", "/page.js"}) {
    const HttpAnswer answer =
        httpSend("GET", server.base + path, "", "text/plain", 30, "Host: evil.example:8080");
    EXPECT_EQ(answer.status, 403) << path;
    EXPECT_EQ(answer.body.find("test-token"), std::string::npos);
  }
  EXPECT_EQ(httpSend("POST", server.base + kCommandPath, kWrite, "application/xml", 30,
                     "Host: evil.example")
                .status,
            403);
  EXPECT_EQ(name(), "Old Town");
}

// A request whose body holds another one, which begins where a reader that takes blocks of 4 KiB
// begins a block: what such a reader leaves there is the first that it finds later.
std::string postWithAnotherInside(const std::string& path, const std::string& headers) {
  constexpr std::size_t kBlock = 4096;
  const std::string inner = post(kCommandPath, kOwnHost, kWrite);
  // Every body here has a length of four digits, so that the head is as long as it was measured.
  const std::size_t head = post(path, headers, std::string(kBlock, 'x')).size() - kBlock;
  const std::string filler((head + kBlock - 1) / kBlock * kBlock - head, 'x');
  return post(path, headers, filler + inner + std::string(1000, '\n'));
}

TEST_F(Intruder, NoBodyThatWasRefusedIsTakenForANextRequest) {
  const std::string inner = post(kCommandPath, kOwnHost, kWrite);
  const std::string foreign = "Origin: http://evil.example\r\n";
  const std::string form = "Content-Type: multipart/form-data; boundary=x\r\n";
  std::vector<std::string> requests = {"POST " + kCommandPath + " HTTP/1.1\r\n" + kOwnHost +
                                           "Transfer-Encoding: chunked\r\n\r\nzz\r\n" + inner,
                                       "GET /health HTTP/1.1\r\n" + kOwnHost +
                                           "Content-Length: " + std::to_string(inner.size()) +
                                           "\r\n" + foreign + "\r\n" + inner};
  for (const std::string& path : {kCommandPath, std::string("/control/clock"),
                                  std::string("/elsewhere"), "/x?" + std::string(9000, 'x')}) {
    for (const std::string& headers : {kOwnHost + form + foreign, kOwnHost + form,
                                       kOwnHost + foreign, std::string("Host: evil.example\r\n"),
                                       kOwnHost + "Content-Type: multipart/form-data\r\n"}) {
      requests.push_back(postWithAnotherInside(path, headers));
    }
  }
  for (const std::string& request : requests) {
    const std::string answer = raw(request);
    EXPECT_EQ(answer.find("HTTP/1.1 200"), std::string::npos) << request << "\n" << answer;
    EXPECT_EQ(name(), "Old Town") << request;
  }
}

TEST_F(Intruder, ALongWayOfTalkingIsCutShort) {
  EXPECT_NE(raw("GET /" + std::string(20000, 'x') + " HTTP/1.1\r\n" + kOwnHost + "\r\n")
                .find("HTTP/1.1 4"),
            std::string::npos);
  EXPECT_NE(raw("GET / HTTP/1.1\r\n" + kOwnHost + "X-Long: " + std::string(20000, 'x') + "\r\n\r\n")
                .find("HTTP/1.1 4"),
            std::string::npos);
  EXPECT_EQ(httpCommand(server.base, 29, "").status, 200);
}

TEST_F(Intruder, OnlyCommandsHaveLongBodies) {
  const std::string large(100000, 'x');
  EXPECT_EQ(httpSend("POST", server.base + "/elsewhere", large).status, 413);
  EXPECT_EQ(httpSend("POST", server.base + "/control/clock?jump=1", large, "text/plain", 30,
                     "X-Control-Token: test-token")
                .status,
            413);
  EXPECT_NE(raw("POST /elsewhere HTTP/1.1\r\n" + kOwnHost +
                "Transfer-Encoding: chunked\r\n\r\n1\r\nx\r\n0\r\n\r\n")
                .find("HTTP/1.1 413"),
            std::string::npos);
}

TEST_F(Intruder, ABodyWithoutALengthIsLimitedToo) {
  std::string chunks = "POST /lampmanager/command/1 HTTP/1.1\r\n" + kOwnHost +
                       "Connection: close\r\nTransfer-Encoding: chunked\r\n\r\n";
  const std::string mebibyte(1U << 20U, ' ');
  for (int i = 0; i < 65; ++i) chunks += "100000\r\n" + mebibyte + "\r\n";
  chunks += "0\r\n\r\n";
  EXPECT_NE(raw(chunks).find("HTTP/1.1 413"), std::string::npos);
}

TEST_F(Intruder, AFirmwareNeverLeavesItsFolder) {
  const ScratchFolder folder;
  const std::filesystem::path data = folder.path() / "data";
  server.rig.controller.setDataFolder(data);
  const std::string image = encodeBase64(makeTar({{"version", "9"}}));
  for (const std::string name :
       {"../../up.tar", "..\\..\\up.tar", "/tmp/up.tar", "C:\\up.tar", "..", ".", "", "a/../b.tar",
        "x&#0;y", "con\xC3\xB1.tar", "a&#10;b.tar", "%2e%2e%2fup.tar"}) {
    httpCommand(server.base, 52,
                "<deviceCfg><firmwareFile>" + image + "</firmwareFile><E03 Firmware=\"" + name +
                    "\" ActDate=\"20250315120000W\"/></deviceCfg>");
  }
  std::size_t files = 0;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.path())) {
    if (!entry.is_regular_file()) continue;
    ++files;
    EXPECT_EQ(entry.path().parent_path(), data / "firmware") << entry.path();
  }
  EXPECT_GT(files, 3U);
}

TEST_F(Intruder, NoPathReadsAFile) {
  for (const char* path :
       {"/../../../../etc/passwd", "/%2e%2e/%2e%2e/etc/passwd", "/..%2f..%2fetc/passwd",
        "//etc/passwd", "/page.js/../../etc/passwd", "/lamp-controller.xml"}) {
    const std::string answer =
        raw(std::string("GET ") + path + " HTTP/1.1\r\n" + kOwnHost + "Connection: close\r\n\r\n");
    EXPECT_NE(answer.find("HTTP/1.1 404"), std::string::npos) << path << "\n" << answer;
    EXPECT_EQ(answer.find("root:"), std::string::npos) << path;
  }
}

// Every changing request of the simulation, without the token and with another.
TEST_F(Intruder, ChangesOfTheSimulationNeedTheToken) {
  for (const char* path : {"/control/clock?jump=60", "/control/input?number=1&active=1",
                           "/control/lamp?node=4100007&condition=broken",
                           "/control/fault?set=empty", "/control/fault?clear=1"}) {
    EXPECT_EQ(httpSend("POST", server.base + path, "").status, 403) << path;
    EXPECT_EQ(httpControl(server.base + path, "").status, 403) << path;
    EXPECT_EQ(httpControl(server.base + path, "test-toke").status, 403) << path;
    EXPECT_EQ(httpControl(server.base + path, "test-tokenx").status, 403) << path;
    EXPECT_EQ(
        httpSend("GET", server.base + path, "", "text/plain", 30, "X-Control-Token: test-token")
            .status,
        404)
        << path;
  }
}

// The addresses on which a process of this machine listens at a port, as the system writes them.
std::set<std::string> listeningAt(int port) {
  std::set<std::string> found;
  char wanted[8];
  std::snprintf(wanted, sizeof wanted, ":%04X", static_cast<unsigned>(port));
  for (const char* table : {"/proc/net/tcp", "/proc/net/tcp6"}) {
    std::ifstream lines(table);
    for (std::string line; std::getline(lines, line);) {
      std::istringstream words(line);
      std::string number;
      std::string local;
      std::string remote;
      std::string state;
      words >> number >> local >> remote >> state;
      if (state == "0A" && local.ends_with(wanted)) found.insert(local.substr(0, local.find(':')));
    }
  }
  return found;
}

TEST(ControllerProgramsAddress, IsTheLoopbackUnlessItIsToldOtherwise) {
  const std::pair<std::vector<std::string>, const char*> cases[] = {
      {{}, "0100007F"}, {{"--listen", "0.0.0.0"}, "00000000"}};
  for (const auto& [options, address] : cases) {
    std::vector<std::string> command = {LAMP_CONTROLLER_PROGRAM, "--port", "0", "--nodes", "1"};
    command.insert(command.end(), options.begin(), options.end());
    Program program(command);
    const std::string base = program.waitForAddress();
    EXPECT_EQ(listeningAt(std::stoi(base.substr(base.rfind(':') + 1))),
              std::set<std::string>{address});
  }
}

TEST(ControllerProgramsAddress, ANameThatItWasGivenIsItsOwn) {
  Program program(
      {LAMP_CONTROLLER_PROGRAM, "--port", "0", "--nodes", "1", "--host-name", "lamps.example"});
  const std::string base = program.waitForAddress();
  const auto status = [&](const char* host) {
    return httpSend("GET", base + "/health", "", "text/plain", 30, std::string("Host: ") + host)
        .status;
  };
  EXPECT_EQ(status("lamps.example"), 200);
  EXPECT_EQ(status("other.example"), 403);
}

}  // namespace
}  // namespace lamp::controller::test
