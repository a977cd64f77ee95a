#include <algorithm>
#include <mutex>
#include <shared_mutex>
#include <utility>

#include "controller/model/controller.h"
#include "controller/model/data_folder.h"
#include "controller/model/names.h"
#include "controller/model/report.h"

namespace lamp::controller {
namespace fs = std::filesystem;

namespace {

constexpr const char* kReportFormat = "ReportFormat";

std::string keepIn(Disk& disk, const fs::path& folder, const std::string& name,
                   std::string_view text) {
  std::string fault = disk.makeFolder(folder);
  if (!fault.empty()) return fault;
  return writeFileSafely(disk, folder / name, folder / (name + data_folder::kUnfinished), text);
}

// How far a clock of this speed goes between two looks at it: a busy machine may look seldom.
std::chrono::seconds longestStep(double speed) {
  constexpr std::chrono::seconds kSeldom{2};
  const auto step = static_cast<long>(speed * static_cast<double>(kSeldom.count()));
  return std::max(std::chrono::seconds{3600}, std::chrono::seconds{step});
}

}  // namespace

// Lamps are read again only where something in force may have changed.
void Controller::settle(Moment now) {
  if (stale_ == Stale::Everything) {
    street_.rebuild(settings_.inForce());
  } else if (stale_ == Stale::SomeNodes) {
    street_.refresh(settings_.inForce(), staleNodes_);
  }
  stale_ = Stale::Nothing;
  staleNodes_.clear();
  street_.update(now, longestStep(clock_.speed()));
}

void Controller::setDataFolder(fs::path folder, Disk& disk) {
  dataFolder_ = std::move(folder);
  disk_ = &disk;
}

std::string Controller::tidyDataFolder() {
  if (dataFolder_.empty()) return "";
  for (const char* name : {data_folder::kFirmware, data_folder::kReports, data_folder::kOutbox}) {
    std::vector<std::string> files;
    std::string fault = disk_->list(dataFolder_ / name, files);
    for (const std::string& file : files) {
      if (fault.empty() && file.ends_with(data_folder::kUnfinished)) {
        fault = disk_->remove(dataFolder_ / name / file);
      }
    }
    if (!fault.empty()) return fault;
  }
  return "";
}

void Controller::followCalendar(DayCalendar calendar) {
  const std::lock_guard lock(mutex_);
  street_.follow(std::move(calendar));
}

void Controller::showLiveValues(pugi::xml_document& reply, const char* code) {
  const std::string_view section = code;
  if (!showsLiveValues(section)) return;
  const Moment now = clock_.now();
  settle(now);
  pugi::xml_node shown = reply.document_element().child(names::kZelLamp).child(code);
  if (section == names::kInputsOutputs) {
    showPorts(switchPorts(settings_.inForce(), street_), shown);
  } else if (section == names::kAlarmReport) {
    fillAlarmReport(settings_.inForce(), street_, now, shown);
  } else {
    fillUsageReport(settings_.inForce(), street_, shown);
  }
}

bool Controller::advance() {
  std::uint64_t before = 0;
  {
    const std::shared_lock lock(mutex_);
    before = version_;
  }
  std::string fault = finishFiles();
  if (fault.empty()) fault = followClock();
  if (fault.empty()) fault = bringIntoForce();
  {
    const std::lock_guard lock(mutex_);
    settle(clock_.now());
  }
  if (fault.empty()) fault = runTasks();
  const std::lock_guard lock(mutex_);
  noteFault(std::move(fault));
  return version_ != before;
}

// What was not kept is made again at the next time: a task has run when its reports are there.
std::string Controller::runTasks() {
  DueTasks due;
  {
    const std::shared_lock lock(mutex_);
    due = dueTasks(settings_.inForce(), clock_.now(), zone());
  }
  if (due.progress.empty()) return "";
  for (const DueReport& report : due.reports) {
    if (const std::string fault = keepReport(report); !fault.empty()) {
      return "a report can't be kept: " + fault;
    }
  }
  return commit(TaskRuns{std::move(due.progress)});
}

std::string Controller::keepReport(const DueReport& report) {
  if (dataFolder_.empty() || (!report.store && !report.send)) return "";
  std::string text;
  std::string name = formatDigits(report.moment) + "-task" + report.task + "-" + report.request;
  {
    const std::lock_guard lock(mutex_);
    const std::string format =
        settings_.inForce().section(names::kGeneral).attribute(kReportFormat).value();
    text = reportOf(report, format);
    name += reportEnding(format);
  }
  std::string fault;
  if (report.store) fault = keepIn(*disk_, dataFolder_ / data_folder::kReports, name, text);
  if (report.send && fault.empty()) {
    fault = keepIn(*disk_, dataFolder_ / data_folder::kOutbox, name, text);
  }
  return fault;
}

std::string Controller::reportOf(const DueReport& report, std::string_view format) {
  pugi::xml_document wanted;
  pugi::xml_document reply;
  readSection(wanted.append_child(report.request.c_str()), settings_.inForce(),
              ReplyHead{id_, formatDigits(report.moment)}, reply);
  showLiveValues(reply, report.request.c_str());
  return reportText(reply, report.request.c_str(), format);
}

void Controller::noteFault(std::string fault) {
  if (!fault.empty()) fault_ = std::move(fault);
}

std::string Controller::takeFault() {
  const std::lock_guard lock(mutex_);
  return std::exchange(fault_, std::string());
}

std::string Controller::setDate(CivilTime civil) {
  Moment moment;
  {
    const std::shared_lock lock(mutex_);
    moment = toMoment(civil, zone(), false);
  }
  return commitClock(moment);
}

DeliverySettings Controller::deliverySettings() const {
  const std::shared_lock lock(mutex_);
  return DeliverySettings::read(settings_.inForce().section(names::kGeneral));
}

std::string Controller::setInputState(int number, bool active) {
  if (number < 1 || number > kPorts) return "there are inputs 1 to 8 only";
  return commit(InputSwitch{number, active});
}

std::string Controller::setLampCondition(const std::string& nodeId, LampCondition condition) {
  {
    const std::shared_lock lock(mutex_);
    if (settings_.inForce().find(nodeId) == nullptr) return "there is no node " + nodeId;
  }
  return commit(LampTouch{nodeId, {condition, clock_.now()}});
}

UsageCount Controller::usage() const {
  UsageCount count;
  const std::vector<NodeRows>& nodes = settings_.inForce().nodes();
  const std::vector<Lamp>& lamps = street_.lamps();
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    // The lamps may not have been built yet, or not since one was touched.
    LampUsage used{nodes[i].id, 0, 0, street_.touchedHealth(nodes[i].id)};
    if (i < lamps.size()) {
      used.litSeconds = lamps[i].litSeconds;
      used.wattSeconds = lamps[i].wattSeconds;
    }
    if (used.litSeconds <= 0 && used.health.condition == LampCondition::AsBuilt) continue;
    count.lamps.push_back(std::move(used));
  }
  return count;
}

std::string Controller::keepUsage() {
  UsageCount count;
  double litSeconds = 0;
  {
    const std::shared_lock lock(mutex_);
    count = usage();
    for (const LampUsage& lamp : count.lamps) litSeconds += lamp.litSeconds;
    if (litSeconds == keptLitSeconds_) return "";
  }
  // The lamps burn on while this is being kept, so it is not applied to them.
  return commit(count, [&] { keptLitSeconds_ = litSeconds; });
}

}  // namespace lamp::controller
