#include <algorithm>
#include <map>
#include <mutex>

#include "controller/model/controller.h"
#include "controller/model/names.h"

namespace lamp::controller {
namespace {

using std::chrono::minutes;

constexpr std::size_t kMostPrograms = 12;
constexpr int kLongestNight = 24 * 60;

std::string timeOfDay(Moment moment, const ZoneRule& zone) {
  return formatReadable(toCivil(moment, zone)).substr(11, 5);
}

// Minute by minute through the night: the programs are cheap to ask and hard to turn into a list.
std::vector<LightStep> stepsOf(const LampStreet& street, const Lamp& lamp, const Night& night) {
  std::vector<LightStep> steps;
  for (int minute = 0; minute < kLongestNight; ++minute) {
    const Moment moment = night.begin + minutes{minute};
    if (moment >= night.end) break;
    const int power = street.programPower(lamp, night, moment);
    if (!steps.empty() && steps.back().power == power) continue;
    steps.push_back(LightStep{timeOfDay(moment, street.zone()), minute, power});
  }
  return steps;
}

// What makes two lamps burn alike.
std::vector<int> programKey(const Lamp& lamp, bool byClock) {
  std::vector<int> key;
  for (std::size_t i = 0; i < 4; ++i) {
    key.push_back(byClock ? lamp.clock.power[i] : lamp.interval.power[i]);
    if (!byClock) key.push_back(lamp.interval.minutes[i]);
    if (byClock && i < 3) key.push_back(lamp.clock.start[i]);
  }
  return key;
}

std::vector<ProgramGroup> groupPrograms(const LampStreet& street, Moment now) {
  const auto night = street.nightClock().atOrAfter(now);
  if (!night) return {};
  const bool byCalendar = street.dayProgram(*night) != nullptr;
  std::map<std::vector<int>, std::pair<std::size_t, const Lamp*>> groups;
  for (const Lamp& lamp : street.lamps()) {
    if (lamp.ignored) continue;
    // By a day type of the calendar all burn alike.
    auto& group = groups[byCalendar ? std::vector<int>() : programKey(lamp, street.byClock())];
    ++group.first;
    group.second = &lamp;
  }
  std::vector<std::pair<std::size_t, const Lamp*>> sorted;
  for (const auto& [key, group] : groups) sorted.push_back(group);
  std::stable_sort(sorted.begin(), sorted.end(),
                   [](const auto& a, const auto& b) { return a.first > b.first; });
  sorted.resize(std::min(sorted.size(), kMostPrograms));
  std::vector<ProgramGroup> programs;
  for (const auto& [count, lamp] : sorted) {
    programs.push_back(ProgramGroup{count, stepsOf(street, *lamp, *night)});
  }
  return programs;
}

}  // namespace

LiveView Controller::view() {
  bringIntoForce();  // a fault shows in what is tried again all the time
  const std::lock_guard lock(mutex_);
  const Moment now = clock_.now();
  settle(now);
  LiveView view;
  view.version = version_;
  view.id = id_;
  view.date = formatReadable(toCivil(now, zone()));
  view.night = street_.isNight();
  if (const auto night = street_.nightClock().atOrAfter(now)) {
    view.nightBegin = timeOfDay(night->begin, zone());
    view.nightEnd = timeOfDay(night->end, zone());
    view.nightMinutes = static_cast<int>((night->end - night->begin) / minutes{1});
  }
  const Place& place = street_.nightClock().place;
  const SunDay today = sunDay(solarDate(now, place), place);
  if (today.sunset) view.sunset = timeOfDay(*today.sunset, zone());
  if (today.sunrise) view.sunrise = timeOfDay(*today.sunrise, zone());
  view.lit = street_.litCount();
  view.pending = settings_.pending().size();
  view.powers.reserve(street_.lamps().size());
  for (const Lamp& lamp : street_.lamps()) {
    view.powers.push_back(static_cast<std::uint8_t>(lamp.power));
  }
  view.ports = switchPorts(settings_.inForce(), street_);
  for (const LampAlarm& alarm : street_.alarms(now)) {
    view.alarms.push_back(AlarmView{settings_.inForce().nodes()[alarm.node].id, alarm.kind,
                                    formatReadable(toCivil(alarm.since, zone()))});
  }
  return view;
}

std::optional<LampView> Controller::lampView(const std::string& nodeId) {
  bringIntoForce();
  const std::lock_guard lock(mutex_);
  const NodeRows* rows = settings_.inForce().find(nodeId);
  if (rows == nullptr) return std::nullopt;
  const Moment now = clock_.now();
  settle(now);
  const auto index = static_cast<std::size_t>(rows - settings_.inForce().nodes().data());
  const Lamp& lamp = street_.lamps()[index];
  LampView view;
  view.id = rows->id;
  view.reference = rows->row(Family::Table).attribute(names::kReference).value();
  view.ignored = lamp.ignored;
  view.power = lamp.power;
  view.expectedWatts = lamp.watts * lamp.power / 100.0;
  view.measuredWatts = view.expectedWatts * lamp.health;
  view.hours = lamp.litSeconds / 3600.0;
  view.energy = lamp.wattSeconds / 3600000.0;
  view.condition = textOf(presentCondition(lamp.touched.condition, rows->id));
  for (const LampAlarm& alarm : street_.alarms(now)) {
    if (alarm.node == index) view.alarm = alarm.kind;
  }
  if (lamp.overrideBegin <= now && now < lamp.overrideEnd) {
    view.overrideEnd = formatReadable(toCivil(lamp.overrideEnd, zone()));
  }
  const auto night = street_.nightClock().atOrAfter(now);
  if (night && !lamp.ignored) view.steps = stepsOf(street_, lamp, *night);
  return view;
}

StreetPlanView Controller::planView() {
  bringIntoForce();
  const std::lock_guard lock(mutex_);
  const Moment now = clock_.now();
  settle(now);
  StreetPlanView plan;
  plan.version = version_;
  const std::vector<NodeRows>& nodes = settings_.inForce().nodes();
  plan.nodes.reserve(nodes.size());
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    const Lamp& lamp = street_.lamps()[i];
    plan.nodes.push_back(
        NodeView{nodes[i].id, nodes[i].row(Family::Table).attribute(names::kReference).value(),
                 lamp.latitude, lamp.longitude,
                 !nodes[i].row(Family::Table).attribute(names::kLatitude).empty(), lamp.ignored});
  }
  plan.programs = groupPrograms(street_, now);
  return plan;
}

}  // namespace lamp::controller
