#pragma once

#include <pugixml.hpp>
#include <string>

#include "controller/model/lamp_street.h"
#include "controller/model/port_switch.h"
#include "controller/model/section_store.h"

namespace lamp::controller {

/// Adds one "Alarm" per faulty lamp: "nodeId", "type" ("lamp" or "power") and "since" (14 digits).
void fillAlarmReport(const SectionStore& store, const LampStreet& street, Moment now,
                     pugi::xml_node section);

/// Adds one "Node" per lamp that is not blacklisted: "nodeId", "power" (percent), "hours" lit in
/// all and "energy" in kilowatt-hours.
void fillUsageReport(const SectionStore& store, const LampStreet& street, pugi::xml_node section);

/// Sets "Value" of every input and output in a section that is read.
void showPorts(const PortStates& states, pugi::xml_node section);

/// The text of a report file: the reply document, or, where `format` is "1", its rows as comma-
/// separated values under a line of attribute names.
std::string reportText(const pugi::xml_document& reply, const char* section,
                       std::string_view format);

/// The ending that belongs to `format`: ".xml" or ".csv".
const char* reportEnding(std::string_view format);

}  // namespace lamp::controller
