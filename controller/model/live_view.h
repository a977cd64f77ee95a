#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "controller/model/port_switch.h"

namespace lamp::controller {

/// One step of tonight's light: from this time of day at this power.
struct LightStep {
  std::string from;  ///< "22:30"
  int minute = 0;    ///< after the beginning of the night
  int power = 0;     ///< percent
};

/// Lamps that burn alike tonight.
struct ProgramGroup {
  std::size_t lamps = 0;
  std::vector<LightStep> steps;
};

/// A faulty lamp.
struct AlarmView {
  std::string nodeId;
  std::string kind;
  std::string since;
};

/// What can be seen of the street at one moment.
struct LiveView {
  std::uint64_t version = 0;  ///< another one when something else than time has passed
  std::string id;
  std::string date;
  bool night = false;
  std::string nightBegin;  ///< this or the next night, "" where there is none
  std::string nightEnd;
  int nightMinutes = 0;
  std::string sunset;  ///< of the day by the sun, without offsets
  std::string sunrise;
  std::size_t lit = 0;
  std::size_t pending = 0;
  std::vector<std::uint8_t> powers;  ///< percent, in the order of the store's nodes
  PortStates ports;
  std::vector<AlarmView> alarms;
};

/// All about one lamp.
struct LampView {
  std::string id;
  std::string reference;
  bool ignored = false;  ///< it is blacklisted
  int power = 0;         ///< percent, now
  double expectedWatts = 0;
  double measuredWatts = 0;
  double hours = 0;              ///< lit, in all
  double energy = 0;             ///< kWh, in all
  std::string condition;         ///< "good", "ageing", "broken"
  std::string alarm;             ///< its kind, empty for none
  std::string overrideEnd;       ///< until when it burns by its own power, "" where it does not
  std::vector<LightStep> steps;  ///< tonight, by its program
};

/// Where a lamp stands and what it is called.
struct NodeView {
  std::string id;
  std::string reference;
  float latitude = 0;
  float longitude = 0;
  bool placed = false;   ///< it has a position
  bool ignored = false;  ///< it is blacklisted
};

/// What changes only with the settings.
struct StreetPlanView {
  std::uint64_t version = 0;
  std::vector<NodeView> nodes;
  std::vector<ProgramGroup> programs;  ///< tonight's, the most frequent first, at most twelve
};

}  // namespace lamp::controller
