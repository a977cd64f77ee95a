#include "controller/model/report.h"

#include <cstdio>
#include <sstream>

#include "controller/model/names.h"
#include "controller/model/value_rules.h"

namespace lamp::controller {
namespace {

constexpr std::string_view kCommaSeparated = "1";

std::string decimal(const char* format, double value) {
  char text[48];
  std::snprintf(text, sizeof text, format, value);
  return text;
}

void appendCell(std::string& line, std::string_view value) {
  if (!line.empty()) line += ',';
  line += '"';
  for (const char c : value) {
    if (c == '"') line += '"';
    line += c;
  }
  line += '"';
}

std::string commaSeparated(pugi::xml_node section) {
  std::string text;
  std::string header;
  for (const pugi::xml_node row : section.children()) {
    std::string names;
    std::string values;
    for (const pugi::xml_attribute attribute : row.attributes()) {
      appendCell(names, attribute.name());
      appendCell(values, attribute.value());
    }
    // Rows with other attributes than those above get a header of their own.
    if (names != header) text += names + "\r\n";
    header = names;
    text += values + "\r\n";
  }
  return text;
}

}  // namespace

void fillAlarmReport(const SectionStore& store, const LampStreet& street, Moment now,
                     pugi::xml_node section) {
  for (const LampAlarm& alarm : street.alarms(now)) {
    pugi::xml_node row = section.append_child("Alarm");
    putAttribute(row, names::kNodeId, store.nodes()[alarm.node].id.c_str());
    putAttribute(row, names::kType, alarm.kind);
    putAttribute(row, "since", formatDigits(toCivil(alarm.since, street.zone())).c_str());
  }
}

void fillUsageReport(const SectionStore& store, const LampStreet& street, pugi::xml_node section) {
  for (std::size_t i = 0; i < street.lamps().size(); ++i) {
    const Lamp& lamp = street.lamps()[i];
    if (lamp.ignored) continue;
    pugi::xml_node row = section.append_child(names::kNode);
    putAttribute(row, names::kNodeId, store.nodes()[i].id.c_str());
    putAttribute(row, names::kPower, std::to_string(lamp.power).c_str());
    putAttribute(row, "hours", decimal("%.2f", lamp.litSeconds / 3600.0).c_str());
    putAttribute(row, "energy", decimal("%.3f", lamp.wattSeconds / 3600000.0).c_str());
  }
}

void showPorts(const PortStates& states, pugi::xml_node section) {
  for (pugi::xml_node port : section.children()) {
    const int number = port.attribute(names::kDir).as_int();
    if (number < 1 || number > kPorts) continue;
    const auto index = static_cast<std::size_t>(number - 1);
    const std::string_view name = port.name();
    if (name == names::kInput) putAttribute(port, names::kValue, states.inputs[index] ? "1" : "0");
    if (name == names::kOutput) {
      putAttribute(port, names::kValue, states.outputs[index] ? "1" : "0");
    }
  }
}

std::string reportText(const pugi::xml_document& reply, const char* section,
                       std::string_view format) {
  if (format == kCommaSeparated) {
    return commaSeparated(reply.document_element().child(names::kZelLamp).child(section));
  }
  std::ostringstream text;
  reply.save(text, " ");
  return std::move(text).str();
}

const char* reportEnding(std::string_view format) {
  return format == kCommaSeparated ? ".csv" : ".xml";
}

}  // namespace lamp::controller
