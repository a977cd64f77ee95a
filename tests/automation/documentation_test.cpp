#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "tests/automation/script_process.h"
#include "tests/support/temp_folder.h"
#include "tests/workbench/tiny_server.h"

namespace {

using nlohmann::json;
using test::TinyRequest;
using test::TinyServer;

using Exchange = std::pair<std::string, std::string>;

// The commands and answers of all "session" blocks of a document, in their order.
std::vector<Exchange> sessionsOf(const char* file) {
  std::vector<Exchange> found;
  std::ifstream in(file);
  bool inside = false;
  for (std::string line; std::getline(in, line);) {
    if (line.starts_with("```"))
      inside = line == "```session";
    else if (inside && line.starts_with("> "))
      found.emplace_back(line.substr(2), "");
    else if (inside && line.starts_with("< "))
      found.back().second = line.substr(2);
  }
  return found;
}

// Whether everything that is shown stands in the answer: a document shows answers in part.
bool shows(const json& shown, const json& answer) {
  if (shown.is_array() && answer.is_array()) {
    if (shown.size() > answer.size()) return false;
    for (std::size_t i = 0; i < shown.size(); ++i)
      if (!shows(shown[i], answer[i])) return false;
    return true;
  }
  if (!shown.is_object() || !answer.is_object()) return shown == answer;
  for (const auto& [name, value] : shown.items())
    if (!answer.contains(name) || !shows(value, answer[name])) return false;
  return true;
}

void answerLikeAController(const TinyRequest& request, const TinyServer::Connection& connection) {
  const bool nodes = request.body.find("<L04") != std::string::npos;
  connection.send(TinyServer::reply(
      nodes
          ? "<deviceCfg><ZelLamp Id=\"1\"><L04><Node nodeId=\"1\" Reference=\"a\"/></L04></ZelLamp>"
            "</deviceCfg>"
          : "<deviceCfg><ZelLamp Id=\"1\"><L01 Mod=\"m\"/></ZelLamp></deviceCfg>"));
}

TEST(Documentation, TheConversationsOfTheScriptingGuideRunAsShown) {
  const auto exchanges = sessionsOf(LAMP_SCRIPTING_GUIDE);
  ASSERT_GT(exchanges.size(), 20U);
  TinyServer server(&answerLikeAController);
  const support::TempFolder folder;
  test::ScriptProcess script({"--config", folder.path().string(), "--plugin", LAMP_REAL_PLUGIN,
                              "--verify-connection", "none", "--now", "2025-03-15T10:00:00"});
  for (auto [command, shown] : exchanges) {
    if (const std::size_t port = command.find("\"8080\""); port != std::string::npos)
      command.replace(port + 1, 4, std::to_string(server.port()));
    const json answer = script.line(command);
    EXPECT_TRUE(shows(json::parse(shown), answer)) << command << "\n" << shown << "\n" << answer;
  }
  EXPECT_EQ(script.end(), 0);
}

}  // namespace
