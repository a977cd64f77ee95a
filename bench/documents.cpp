#include "bench/documents.h"

#include <functional>

namespace bench {
namespace {

std::string reply(const std::string& section, std::size_t nodes,
                  const std::function<std::string(std::size_t)>& attributes) {
  std::string xml =
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<reply>\n  <ZelLamp Id=\"LM-0001\">\n"
      "    <" +
      section + " Fh=\"20250315100000\">\n";
  for (std::size_t i = 0; i < nodes; ++i) xml += "      <Node " + attributes(i) + "/>\n";
  return xml + "    </" + section + ">\n  </ZelLamp>\n</reply>\n";
}

std::string number(std::size_t index) {
  return std::to_string(1000000 + index);
}

}  // namespace

std::string nodeId(std::size_t index) {
  return "0013A200" + number(index);
}

std::string nodeTable(std::size_t nodes) {
  return reply("L04", nodes, [](std::size_t i) {
    return "nodeId=\"" + nodeId(i) + "\" Reference=\"Street " + number(i) + "\" latitude=\"41." +
           number(i) + "\" longitude=\"2." + number(i) + "\"";
  });
}

std::string nodePower(std::size_t nodes) {
  return reply("L05", nodes, [](std::size_t i) {
    return "Id=\"" + nodeId(i) + "\" time=\"" + std::to_string(i % 600) + "\" power=\"" +
           std::to_string(i % 101) + "\"";
  });
}

std::string alarmThresholds(std::size_t nodes) {
  return reply("L07", nodes, [](std::size_t i) {
    const std::string old =
        " vf=\"0.2.9\" blinkActive=\"20\" blinkTime=\"10\" blinkTimes=\"3\" blinkTotalTime=\"60\""
        " brokenActive=\"5\" brokenTime=\"120\" capacitorReactive=\"40\" capacitorTime=\"90\"";
    const std::string recent =
        " vf=\"0.3.1\" powerLamp=\"100\" blinkTime=\"10\" blinkTimes=\"3\" timeAlarm=\"30\""
        " percentageAlarm=\"20\" factorPower=\"0.85\"";
    return "Id=\"" + nodeId(i) + "\"" + (i % 2 == 0 ? old : recent);
  });
}

std::string intervalPrograms(std::size_t nodes) {
  return reply("L06", nodes, [](std::size_t i) {
    std::string steps = "Id=\"" + nodeId(i) + "\"";
    for (std::size_t step = 1; step <= 4; ++step)
      steps += " time" + std::to_string(step) + "=\"" + std::to_string((i + 60 * step) % 400) +
               "\" power" + std::to_string(step) + "=\"" + std::to_string((i + step) % 101) + "\"";
    return steps;
  });
}

std::string nodeList(std::size_t nodes) {
  return reply("L03", nodes, [](std::size_t i) {
    return "nodeId=\"" + nodeId(i) + "\" Reference=\"Street " + number(i) + "\"";
  });
}

std::vector<std::string> references(std::size_t nodes) {
  std::vector<std::string> texts;
  texts.reserve(nodes);
  for (std::size_t i = 0; i < nodes; ++i) texts.push_back("Lamp " + std::to_string(i));
  return texts;
}

}  // namespace bench
