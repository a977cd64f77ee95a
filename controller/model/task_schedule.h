#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "controller/model/change.h"
#include "controller/model/civil_time.h"
#include "controller/model/section_store.h"

namespace lamp::controller {

/// A repetition as tasks carry it: 14 digits in the layout of a date.
struct Period {
  int months = 0;  ///< years count as twelve
  std::chrono::seconds rest{0};

  static Period read(std::string_view digits);
  bool never() const { return months == 0 && rest.count() == 0; }
};

/// Start plus `count` periods. A day that a month does not have becomes its last.
CivilTime repeated(CivilTime start, const Period& period, long count);

/// An action of a task that is due.
struct DueReport {
  std::string task;
  std::string request;  ///< "L03", "L09" or "L15"
  bool send = false;
  bool store = false;
  CivilTime moment;
  int priority = 2;
};

/// What the tasks have to do.
struct DueTasks {
  std::vector<DueReport> reports;      ///< higher priorities first
  std::vector<TaskProgress> progress;  ///< to be remembered once the reports are made
};

/// Finds the actions that became due since each task last ran. A task that is seen for the first
/// time begins now: what it would have done before is not caught up. Of several runs that were
/// missed, a task that fills holes ("TpCompl" is "Y") does all, but at most `kMostCaughtUp` and the
/// latest ones; any other does the latest. After the clock was set back, tasks go on from there.
DueTasks dueTasks(const SectionStore& store, Moment now, const ZoneRule& zone);

/// Remembers in the store how far tasks have come.
void rememberProgress(SectionStore& store, const std::vector<TaskProgress>& progress);

/// Before `element` (E02) is applied: tasks that it brings, or gives another start or period, begin
/// at `now`, and of those that it takes away nothing is remembered.
void beginTasks(SectionStore& store, pugi::xml_node element, CivilTime now);

inline constexpr std::size_t kMostCaughtUp = 100;

}  // namespace lamp::controller
