#include "controller/http/street_view.h"

#include <nlohmann/json.hpp>

namespace lamp::controller {
namespace {

using nlohmann::json;

constexpr std::size_t kMostAlarms = 200;
constexpr const char* kAlphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

std::string text(const json& value) {
  return value.dump(-1, ' ', false, json::error_handler_t::replace);
}

std::string letters(const std::vector<std::uint8_t>& powers) {
  std::string packed;
  packed.reserve(powers.size());
  for (const std::uint8_t power : powers) packed += kAlphabet[(power * 63U + 50U) / 100U];
  return packed;
}

json listOf(const std::array<bool, kPorts>& states) {
  json list = json::array();
  for (const bool state : states) list.push_back(state);
  return list;
}

json alarmList(const LiveView& view) {
  json list = json::array();
  for (const AlarmView& alarm : view.alarms) {
    if (list.size() == kMostAlarms) break;
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
                    {"parameters", entry.parameters},
                    {"request", entry.request},
                    {"status", entry.status},
                    {"reply", entry.reply}});
  }
  return list;
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
  for (const ProgramGroup& group : plan.programs) {
    json steps = json::array();
    for (const LightStep& step : group.steps) {
      steps.push_back({{"from", step.from}, {"minute", step.minute}, {"power", step.power}});
    }
    programs.push_back({{"lamps", group.lamps}, {"steps", steps}});
  }
  return text({{"version", plan.version},
               {"ids", ids},
               {"references", references},
               {"positions", positions},
               {"ignored", ignored},
               {"programs", programs}});
}

std::string newsJson(const Service& service, ViewerState& viewer) {
  const LiveView view = service.controller.view();
  json news = {{"version", view.version},
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
               {"inputs", listOf(view.ports.inputs)},
               {"outputs", listOf(view.ports.outputs)},
               {"alarms", alarmList(view)},
               {"alarmCount", view.alarms.size()},
               {"speed", service.clock.speed()},
               {"paused", service.clock.paused()},
               {"faults", service.faults.list()}};
  std::string rest = text(news);
  std::string powers = letters(view.powers);
  const std::vector<LoggedCommand> entries = service.log.after(viewer.logged);
  if (rest == viewer.rest && powers == viewer.powers && entries.empty()) return "";
  if (powers != viewer.powers || viewer.rest.empty()) news["powers"] = powers;
  if (!entries.empty()) {
    news["log"] = logList(entries);
    viewer.logged = entries.back().number;
  }
  viewer.rest = std::move(rest);
  viewer.powers = std::move(powers);
  return text(news);
}

}  // namespace lamp::controller
