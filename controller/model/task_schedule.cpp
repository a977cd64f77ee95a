#include "controller/model/task_schedule.h"

#include <algorithm>
#include <cstdlib>

#include "controller/model/names.h"
#include "controller/model/value_rules.h"

namespace lamp::controller {
namespace {

using namespace std::chrono;

constexpr const char* kRuns = "taskRuns";
constexpr const char* kRun = "run";
constexpr const char* kLast = "last";

int digitsOf(std::string_view text, std::size_t from, std::size_t count) {
  return std::atoi(std::string(text.substr(from, count)).c_str());
}

bool isYes(pugi::xml_node element, const char* name) {
  return std::string_view(element.attribute(name).value()) == "Y";
}

// The largest count of periods whose moment is not after `now`; -1 when the start is still to come.
long countUpTo(CivilTime start, const Period& period, CivilTime now) {
  if (now < start) return -1;
  if (period.never()) return 0;
  const auto shortest = days{28} * period.months + period.rest;
  long low = 0;
  long high = static_cast<long>((now - start) / shortest) + 1;
  while (low < high) {
    const long middle = low + (high - low + 1) / 2;
    if (repeated(start, period, middle) <= now) {
      low = middle;
    } else {
      high = middle - 1;
    }
  }
  return low;
}

// Every run after `last` and up to `now`, the latest ones only.
std::vector<CivilTime> runsBetween(CivilTime start, const Period& period, CivilTime last,
                                   CivilTime now, std::size_t most) {
  std::vector<CivilTime> runs;
  for (long count = countUpTo(start, period, now); count >= 0 && runs.size() < most; --count) {
    const CivilTime moment = repeated(start, period, count);
    if (moment <= last) break;
    runs.push_back(moment);
  }
  std::reverse(runs.begin(), runs.end());
  return runs;
}

ChildIndex recordsIn(pugi::xml_node records) {
  return {records, kRun, names::kTaskNumber};
}

void remember(pugi::xml_node records, ChildIndex& present, const char* task, CivilTime last) {
  pugi::xml_node record = present.find(task);
  if (!record) {
    record = records.append_child(kRun);
    putAttribute(record, names::kTaskNumber, task);
    present.add(record);
  }
  putAttribute(record, kLast, std::to_string(last.time_since_epoch().count()).c_str());
}

bool sameSchedule(pugi::xml_node task, pugi::xml_node kept) {
  for (const char* name : {names::kTaskStart, names::kTaskPeriod}) {
    const std::string_view text = task.attribute(name).value();
    if (text != kept.attribute(name).value()) return false;
  }
  return true;
}

// What a task has done is not repeated when the clock goes back by the hour of summer time. A clock
// that was set back by more would keep it from running until it has caught up with itself.
bool wasSetBack(CivilTime last, CivilTime now) {
  return last > now + hours{2};
}

void addActions(pugi::xml_node task, CivilTime moment, std::vector<DueReport>& due) {
  for (const pugi::xml_node action : task.children(names::kAction)) {
    DueReport report;
    report.task = task.attribute(names::kTaskNumber).value();
    report.request = action.attribute(names::kActionRequest).value();
    report.send = isYes(action, names::kActionSend);
    report.store = isYes(action, names::kActionStore);
    report.moment = moment;
    report.priority = task.attribute(names::kTaskPriority).as_int(2);
    due.push_back(std::move(report));
  }
}

}  // namespace

Period Period::read(std::string_view digits) {
  if (digits.size() != 14) return {};
  Period period;
  period.months = digitsOf(digits, 0, 4) * 12 + digitsOf(digits, 4, 2);
  period.rest = days{digitsOf(digits, 6, 2)} + hours{digitsOf(digits, 8, 2)} +
                minutes{digitsOf(digits, 10, 2)} + seconds{digitsOf(digits, 12, 2)};
  return period;
}

CivilTime repeated(CivilTime start, const Period& period, long count) {
  const auto day = floor<days>(start);
  const year_month_day date{day};
  const auto target =
      year_month{date.year(), date.month()} + months{static_cast<int>(period.months * count)};
  const auto last = year_month_day_last{target.year(), month_day_last{target.month()}}.day();
  const local_days moved{target / std::min(date.day(), last)};
  return moved + (start - day) + period.rest * count;
}

DueTasks dueTasks(const SectionStore& store, Moment now, const ZoneRule& zone) {
  const CivilTime civil = toCivil(now, zone);
  const ChildIndex records = recordsIn(store.section(kRuns));
  DueTasks due;
  for (const pugi::xml_node task : store.section(names::kTasks).children(names::kTask)) {
    const auto start = parseStamp(task.attribute(names::kTaskStart).value());
    if (!start) continue;
    const char* number = task.attribute(names::kTaskNumber).value();
    const pugi::xml_attribute known = records.find(number).attribute(kLast);
    const CivilTime kept{seconds{known.as_llong()}};
    const bool restarts = !known || wasSetBack(kept, civil);
    const CivilTime last = !known ? civil - seconds{1} : restarts ? civil : kept;
    const Period period = Period::read(task.attribute(names::kTaskPeriod).value());
    const std::size_t most = isYes(task, names::kTaskFillHoles) ? kMostCaughtUp : 1;
    const std::vector<CivilTime> runs = runsBetween(start->civil, period, last, civil, most);
    for (const CivilTime moment : runs) addActions(task, moment, due.reports);
    if (restarts || !runs.empty()) due.progress.push_back(TaskProgress{number, civil});
  }
  std::stable_sort(due.reports.begin(), due.reports.end(),
                   [](const DueReport& a, const DueReport& b) { return a.priority < b.priority; });
  return due;
}

void rememberProgress(SectionStore& store, const std::vector<TaskProgress>& progress) {
  pugi::xml_node records = store.sectionToChange(kRuns);
  ChildIndex present = recordsIn(records);
  for (const TaskProgress& task : progress)
    remember(records, present, task.task.c_str(), task.last);
}

void beginTasks(SectionStore& store, pugi::xml_node element, CivilTime now) {
  pugi::xml_node records = store.section(kRuns);
  ChildIndex present = recordsIn(records);
  const ChildIndex tasks(store.section(names::kTasks), names::kTask, names::kTaskNumber);
  for (const pugi::xml_node task : element.children(names::kTask)) {
    const char* number = task.attribute(names::kTaskNumber).value();
    const pugi::xml_node kept = tasks.find(number);
    if (kept && sameSchedule(task, kept)) continue;
    const bool deleted = *task.attribute(names::kTaskPeriod).value() == '\0';
    if (deleted) {
      const pugi::xml_node record = present.find(number);
      present.remove(number);
      records.remove_child(record);
    } else {
      if (!records) records = store.sectionToChange(kRuns);
      remember(records, present, number, now - seconds{1});
    }
  }
}

}  // namespace lamp::controller
