#pragma once

#include <chrono>
#include <pugixml.hpp>
#include <string>
#include <variant>
#include <vector>

#include "controller/model/civil_time.h"
#include "controller/model/lamp_condition.h"
#include "controller/model/section_writer.h"

namespace lamp::controller {

/// A section is written: at once, or at `due` where its writer waits for that.
struct SectionWrite {
  const SectionWriter* writer = nullptr;
  pugi::xml_node element;  ///< as sent; not owned
  Moment due;
  Moment now;
};

/// A firmware image arrives: the file `incoming` in its folder takes the name `name`, and the
/// version in `write` is to be brought into force.
struct FirmwareArrival {
  SectionWrite write;
  std::string incoming;  ///< empty where no folder keeps firmware
  std::string name;
};

/// The clock is set: so far ahead of the machine's, which makes it `now`.
struct ClockSetting {
  std::chrono::seconds offset{0};
  Moment now;
};

/// Writes that waited come into force.
struct Activation {
  Moment now;
};

/// Input 1 to 8 is switched.
struct InputSwitch {
  int number = 0;
  bool active = false;
};

/// How far a task has come, by the wall clock.
struct TaskProgress {
  std::string task;
  CivilTime last;
};

/// Tasks have run.
struct TaskRuns {
  std::vector<TaskProgress> tasks;
};

/// What a lamp has used in all, and how well it burns.
struct LampUsage {
  std::string nodeId;
  double litSeconds = 0;
  double wattSeconds = 0;
  LampHealth health;
};

/// A lamp is made faulty, or good again.
struct LampTouch {
  std::string nodeId;
  LampHealth health;
};

/// The lamps have burned on.
struct UsageCount {
  std::vector<LampUsage> lamps;
};

/// One change of the controller's state, as it is kept before it takes effect. Carrying the same
/// changes out on the same state, in the same order, always leads to the same state.
using Change = std::variant<SectionWrite, FirmwareArrival, ClockSetting, Activation, InputSwitch,
                            TaskRuns, UsageCount, LampTouch>;

/// The change as one XML element and a line break.
std::string printChange(const Change& change);

/// Reads what `printChange` made; the element in it stays part of `record`. Answers what is wrong,
/// or an empty text.
std::string readChange(pugi::xml_node record, Change& change);

}  // namespace lamp::controller
