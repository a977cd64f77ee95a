#include "tests/controller/support/controller_rig.h"

#include <gtest/gtest.h>

namespace lamp::controller::test {
namespace {

using namespace std::chrono;

constexpr TimeSource::Point kStart = sys_days{year{2025} / March / 15} + hours{11};

}  // namespace

ControllerRig::ControllerRig(StreetPlan plan)
    : time(kStart), clock(time), controller("LM-TEST", clock) {
  controller.buildStreet(plan);
}

pugi::xml_document ControllerRig::ask(int command, const std::string& body) {
  const Reply reply = controller.perform(command, body);
  EXPECT_EQ(reply.status, 200) << reply.body;
  pugi::xml_document document;
  EXPECT_TRUE(document.load_string(reply.body.c_str()));
  return document;
}

pugi::xml_node ControllerRig::read(const std::string& code) {
  lastReply = ask(1, "<deviceCfg><" + code + "/></deviceCfg>");
  return lastReply.child("deviceCfg").child("ZelLamp").child(code.c_str());
}

std::string ControllerRig::ofFirstNode(const std::string& code, const char* attribute) {
  return read(code).first_child().attribute(attribute).value();
}

int ControllerRig::send(int command, const std::string& body) {
  const Reply reply = controller.perform(command, body);
  refusal = reply.body;
  return reply.status;
}

std::string ControllerRig::state() {
  std::string text;
  controller.printState(text);
  return text;
}

std::vector<std::string> ControllerRig::nodeIds() {
  std::vector<std::string> ids;
  for (const pugi::xml_node node : read("L04").children("Node")) {
    ids.emplace_back(node.attribute("nodeId").value());
  }
  return ids;
}

}  // namespace lamp::controller::test
