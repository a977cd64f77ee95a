#include "controller/http/street_view.h"

#include "controller/http/json_text.h"

namespace lamp::controller {
namespace {

constexpr std::size_t kMostAlarms = 200;
constexpr const char* kAlphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

std::string letters(const std::vector<std::uint8_t>& powers) {
  std::string packed;
  packed.reserve(powers.size());
  for (const std::uint8_t power : powers) packed += kAlphabet[(power * 63U + 50U) / 100U];
  return packed;
}

std::string listOf(const std::array<bool, kPorts>& states) {
  JsonText list('[');
  for (const bool state : states) list.add("", state);
  return list.done();
}

std::string alarmList(const LiveView& view) {
  JsonText list('[');
  for (std::size_t i = 0; i < view.alarms.size() && i < kMostAlarms; ++i) {
    const AlarmView& alarm = view.alarms[i];
    list.addRaw("", JsonText('{')
                        .add("node", alarm.nodeId)
                        .add("kind", alarm.kind)
                        .add("since", alarm.since)
                        .done());
  }
  return list.done();
}

std::string logList(const std::vector<LoggedCommand>& entries) {
  JsonText list('[');
  for (const LoggedCommand& entry : entries) {
    list.addRaw("", JsonText('{')
                        .add("number", static_cast<std::size_t>(entry.number))
                        .add("command", entry.command)
                        .add("date", entry.date)
                        .add("parameters", entry.parameters.str())
                        .add("request", entry.request.str())
                        .add("status", entry.status)
                        .add("reply", entry.reply.str())
                        .done());
  }
  return list.done();
}

std::string stepList(const std::vector<LightStep>& steps) {
  JsonText list('[');
  for (const LightStep& step : steps) {
    list.addRaw("", JsonText('{')
                        .add("from", step.from)
                        .add("minute", step.minute)
                        .add("power", step.power)
                        .done());
  }
  return list.done();
}

std::string programList(const StreetPlanView& plan) {
  JsonText programs('[');
  for (const ProgramGroup& group : plan.programs) {
    programs.addRaw(
        "", JsonText('{').add("lamps", group.lamps).addRaw("steps", stepList(group.steps)).done());
  }
  return programs.done();
}

std::string positionOf(const NodeView& node) {
  if (!node.placed) return "null";
  return JsonText('[')
      .add("", static_cast<double>(node.latitude))
      .add("", static_cast<double>(node.longitude))
      .done();
}

// Everything but powers and commands, which come only when they are new.
JsonText standing(const Service& service, const LiveView& view) {
  JsonText news('{');
  news.add("version", static_cast<std::size_t>(view.version))
      .add("id", view.id)
      .add("date", view.date)
      .add("night", view.night)
      .add("nightBegin", view.nightBegin)
      .add("nightEnd", view.nightEnd)
      .add("nightMinutes", view.nightMinutes)
      .add("sunset", view.sunset)
      .add("sunrise", view.sunrise)
      .add("lit", view.lit)
      .add("pending", view.pending)
      .addRaw("inputs", listOf(view.ports.inputs))
      .addRaw("outputs", listOf(view.ports.outputs))
      .addRaw("alarms", alarmList(view))
      .add("alarmCount", view.alarms.size())
      .add("speed", service.clock.speed())
      .add("paused", service.clock.paused())
      .add("faults", service.faults.list());
  return news;
}

}  // namespace

std::string planJson(const StreetPlanView& plan) {
  JsonText ids('[');
  JsonText references('[');
  JsonText positions('[');
  JsonText ignored('[');
  for (std::size_t i = 0; i < plan.nodes.size(); ++i) {
    const NodeView& node = plan.nodes[i];
    ids.add("", node.id);
    references.add("", node.reference);
    positions.addRaw("", positionOf(node));
    if (node.ignored) ignored.add("", i);
  }
  return JsonText('{')
      .add("version", static_cast<std::size_t>(plan.version))
      .addRaw("ids", ids.done())
      .addRaw("references", references.done())
      .addRaw("positions", positions.done())
      .addRaw("ignored", ignored.done())
      .addRaw("programs", programList(plan))
      .done();
}

std::string lampJson(const LampView& lamp) {
  return JsonText('{')
      .add("id", lamp.id)
      .add("reference", lamp.reference)
      .add("ignored", lamp.ignored)
      .add("power", lamp.power)
      .add("expectedWatts", lamp.expectedWatts)
      .add("measuredWatts", lamp.measuredWatts)
      .add("hours", lamp.hours)
      .add("energy", lamp.energy)
      .add("condition", lamp.condition)
      .add("alarm", lamp.alarm)
      .add("overrideEnd", lamp.overrideEnd)
      .addRaw("steps", stepList(lamp.steps))
      .done();
}

std::string newsJson(const Service& service, ViewerState& viewer) {
  const LiveView view = service.controller.view();
  JsonText news = standing(service, view);
  std::string rest = news.done();
  std::string powers = letters(view.powers);
  const std::vector<LoggedCommand> entries = service.log.after(viewer.logged);
  if (rest == viewer.rest && powers == viewer.powers && entries.empty()) return "";
  if (powers != viewer.powers || viewer.rest.empty()) news.add("powers", powers);
  if (!entries.empty()) {
    news.addRaw("log", logList(entries));
    viewer.logged = entries.back().number;
  }
  viewer.rest = std::move(rest);
  viewer.powers = std::move(powers);
  return news.done();
}

}  // namespace lamp::controller
