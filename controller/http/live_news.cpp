#include "controller/http/live_news.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace lamp::controller {
namespace {

using nlohmann::json;

constexpr std::size_t MostAlarms = 200;
constexpr const char* Alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// Bytes that are no UTF-8 become U+FFFD.
std::string textOf(const json& value) {
  return value.dump(-1, ' ', false, json::error_handler_t::replace);
}

std::string letters(const std::vector<std::uint8_t>& powers) {
  std::string packed;
  packed.reserve(powers.size());
  for (const std::uint8_t power : powers) packed += Alphabet[(power * 63U + 50U) / 100U];
  return packed;
}

json alarmList(const LiveView& view) {
  json list = json::array();
  for (std::size_t i = 0; i < std::min(view.alarms.size(), MostAlarms); ++i) {
    const AlarmView& alarm = view.alarms[i];
    list.push_back({{"node", alarm.nodeId}, {"kind", alarm.kind}, {"since", alarm.since}});
  }
  return list;
}

json logList(const std::vector<LoggedCommand>& entries) {
  json list = json::array();
  for (const LoggedCommand& entry : entries) {
    list.push_back({{"number", entry.number},
                    {"command", entry.command},
                    {"date", entry.date},
                    {"parameters", entry.parameters.str()},
                    {"request", entry.request.str()},
                    {"status", entry.status},
                    {"reply", entry.reply.str()}});
  }
  return list;
}

json stepList(const std::vector<LightStep>& steps) {
  json list = json::array();
  for (const LightStep& step : steps)
    list.push_back({{"from", step.from}, {"minute", step.minute}, {"power", step.power}});
  return list;
}

// Everything but powers and commands, which come only when they are new.
json standing(const Service& service, const LiveView& view) {
  return {{"version", view.version},
          {"id", view.id},
          {"date", view.date},
          {"night", view.night},
          {"nightBegin", view.nightBegin},
          {"nightEnd", view.nightEnd},
          {"nightMinutes", view.nightMinutes},
          {"sunset", view.sunset},
          {"sunrise", view.sunrise},
          {"lit", view.lit},
          {"pending", view.pending},
          {"inputs", view.ports.inputs},
          {"outputs", view.ports.outputs},
          {"alarms", alarmList(view)},
          {"alarmCount", view.alarms.size()},
          {"speed", service.clock.speed()},
          {"paused", service.clock.paused()},
          {"faults", service.faults.list()}};
}

}  // namespace

std::string planJson(const StreetPlanView& plan) {
  json ids = json::array();
  json references = json::array();
  json positions = json::array();
  json ignored = json::array();
  for (std::size_t i = 0; i < plan.nodes.size(); ++i) {
    const NodeView& node = plan.nodes[i];
    ids.push_back(node.id);
    references.push_back(node.reference);
    positions.push_back(node.placed ? json{node.latitude, node.longitude} : json());
    if (node.ignored) ignored.push_back(i);
  }
  json programs = json::array();
  for (const ProgramGroup& group : plan.programs)
    programs.push_back({{"lamps", group.lamps}, {"steps", stepList(group.steps)}});
  return textOf({{"version", plan.version},
                 {"ids", std::move(ids)},
                 {"references", std::move(references)},
                 {"positions", std::move(positions)},
                 {"ignored", std::move(ignored)},
                 {"programs", std::move(programs)}});
}

std::string lampJson(const LampView& lamp) {
  return textOf({{"id", lamp.id},
                 {"reference", lamp.reference},
                 {"ignored", lamp.ignored},
                 {"power", lamp.power},
                 {"expectedWatts", lamp.expectedWatts},
                 {"measuredWatts", lamp.measuredWatts},
                 {"hours", lamp.hours},
                 {"energy", lamp.energy},
                 {"condition", lamp.condition},
                 {"alarm", lamp.alarm},
                 {"overrideEnd", lamp.overrideEnd},
                 {"steps", stepList(lamp.steps)}});
}

News LiveNews::next(bool restart) {
  const LiveView view = service_.controller.view();
  const json news = standing(service_, view);
  std::string rest = textOf(news);
  std::string powers = letters(view.powers);
  const std::vector<LoggedCommand> entries = service_.log.after(restart ? 0 : logged_);
  const bool otherPowers = restart || powers != powers_;
  if (!restart && rest == rest_ && !otherPowers && entries.empty()) return {};
  json changed = news;
  json whole = news;
  whole["powers"] = powers;
  if (otherPowers) changed["powers"] = powers;
  if (!entries.empty()) {
    changed["log"] = logList(entries);
    logged_ = entries.back().number;
  }
  const std::vector<LoggedCommand> all = service_.log.after(0);
  if (!all.empty()) whole["log"] = logList(all);
  rest_ = std::move(rest);
  powers_ = std::move(powers);
  return News{textOf(changed), textOf(whole)};
}

}  // namespace lamp::controller
