#include <algorithm>
#include <array>
#include <mutex>
#include <shared_mutex>

#include "controller/model/controller.h"
#include "controller/model/kept_text.h"
#include "controller/model/names.h"

namespace lamp::controller {
namespace {

// What a section's writing changes for the lamps.
enum class Concern {
  Nobody,
  Street,  // what all lamps have in common
  Rows,    // and the nodes of its rows
  All
};

Concern concernOf(std::string_view section) {
  struct Entry {
    const char* section;
    Concern concern;
  };
  constexpr std::array kConcerns = {
      Entry{"E01", Concern::Street}, Entry{"E04", Concern::Rows},   Entry{"E05", Concern::Rows},
      Entry{"E06", Concern::Rows},   Entry{"E07", Concern::Rows},   Entry{"E08", Concern::Rows},
      Entry{"E09", Concern::All},    Entry{"E13", Concern::Street}, Entry{"E17", Concern::Rows}};
  const auto* found = std::find_if(kConcerns.begin(), kConcerns.end(),
                                   [&](const Entry& entry) { return section == entry.section; });
  return found == kConcerns.end() ? Concern::Nobody : found->concern;
}

}  // namespace

std::string Controller::commit(const Change& change) {
  return commit(change, [&] { std::visit([this](const auto& each) { apply(each); }, change); });
}

std::string Controller::commit(const Change& change, const std::function<void()>& apply) {
  const auto carryOut = [&] {
    const std::lock_guard lock(mutex_);
    apply();
    ++version_;
    noteSummary();
  };
  if (log_ != nullptr) return log_->commit(printChange(change), carryOut);
  carryOut();
  return "";
}

// The clock itself is set to the moment, not by its offset, which counts whole seconds only.
std::string Controller::commitClock(Moment moment) {
  const ClockSetting setting{clock_.offsetAt(moment), moment};
  return commit(setting, [&] {
    noteClock(setting);
    clock_.set(moment);
  });
}

// What is due comes into force by a change of its own, so that a state that is built again from its
// changes goes through the same order of things.
std::string Controller::bringIntoForce() {
  const Moment now = clock_.now();
  {
    const std::shared_lock lock(mutex_);
    if (!settings_.isDue(now)) return "";
  }
  return commit(Activation{now});
}

// A clock that was moved from outside (by a time server, by hand) is kept too, but not at every
// moment of one that runs faster.
std::string Controller::followClock() {
  if (clock_.paused() || clock_.speed() != 1.0) return "";
  const std::chrono::seconds offset = clock_.offset();
  {
    const std::shared_lock lock(mutex_);
    // Rounding may tell the same offset one apart.
    if (abs(offset - keptOffset_) <= std::chrono::seconds{1}) return "";
  }
  const ClockSetting setting{offset, clock_.now()};
  return commit(setting, [&] { noteClock(setting); });
}

void Controller::apply(const SectionWrite& change) {
  if (std::string_view(change.writer->section) == names::kTaskCommand) {
    beginTasks(settings_.inForce(), change.element, toCivil(change.now, zone()));
  }
  settings_.write(*change.writer, change.element, change.due, change.now);
  noteStale(change);
}

void Controller::noteClock(const ClockSetting& change) {
  keptOffset_ = change.offset;
  activate(change.now);
}

void Controller::noteStale(const SectionWrite& change) {
  const Concern concern = concernOf(change.writer->section);
  if (concern == Concern::Nobody || stale_ == Stale::Everything) return;
  stale_ = concern == Concern::All ? Stale::Everything : Stale::SomeNodes;
  if (concern != Concern::Rows) return;
  for (const pugi::xml_node row : change.element.children()) {
    noteStale(row.attribute(names::kNodeId).value());
  }
}

void Controller::noteStale(std::string_view nodeId) {
  const SectionStore& store = settings_.inForce();
  const NodeRows* rows = store.find(nodeId);
  if (rows == nullptr || stale_ == Stale::Everything) return;
  stale_ = Stale::SomeNodes;
  staleNodes_.push_back(static_cast<std::size_t>(rows - store.nodes().data()));
  // Beyond that it is cheaper to read all of them once than some of them twice.
  if (staleNodes_.size() > store.nodes().size() / 2) stale_ = Stale::Everything;
}

void Controller::apply(const ClockSetting& change) {
  clock_.setOffset(change.offset);
  noteClock(change);
}

void Controller::apply(const Activation& change) {
  activate(change.now);
}

void Controller::activate(Moment now) {
  if (settings_.advance(now)) stale_ = Stale::Everything;
}

void Controller::apply(const InputSwitch& change) {
  settings_.switchInput(change.number, change.active);
}

void Controller::apply(const TaskRuns& change) {
  rememberProgress(settings_.inForce(), change.tasks);
}

void Controller::apply(const UsageCount& change) {
  const SectionStore& store = settings_.inForce();
  keptLitSeconds_ = 0;
  for (const LampUsage& lamp : change.lamps) {
    const NodeRows* rows = store.find(lamp.nodeId);
    if (rows == nullptr) continue;
    if (lamp.health.condition != LampCondition::AsBuilt) street_.touch(lamp.nodeId, lamp.health);
    keptLitSeconds_ += lamp.litSeconds;
    street_.restoreUsage(static_cast<std::size_t>(rows - store.nodes().data()), lamp.litSeconds,
                         lamp.wattSeconds);
  }
}

void Controller::apply(const LampTouch& change) {
  street_.touch(change.nodeId, change.health);
  noteStale(change.nodeId);
}

std::string Controller::replay(std::string_view records) {
  pugi::xml_document document;
  const pugi::xml_parse_result result =
      document.load_buffer(records.data(), records.size(), kKeptText, pugi::encoding_utf8);
  if (!result) return std::string("it is no XML: ") + result.description();
  const std::lock_guard lock(mutex_);
  for (const pugi::xml_node record : document.children()) {
    if (std::string fault = replayOne(record); !fault.empty()) return fault;
  }
  noteSummary();
  return "";
}

std::string Controller::replayOne(pugi::xml_node record) {
  Change change;
  if (std::string fault = readChange(record, change); !fault.empty()) return fault;
  if (const auto* write = std::get_if<SectionWrite>(&change)) {
    const Objection objection = write->writer->judge(write->element, settings_.shown());
    if (objection) return objection->text;
  }
  std::visit([this](const auto& each) { apply(each); }, change);
  ++version_;
  return "";
}

}  // namespace lamp::controller
