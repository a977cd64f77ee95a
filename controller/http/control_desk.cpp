#include "controller/http/control_desk.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <nlohmann/json.hpp>

#include "controller/http/command_server.h"

namespace lamp::controller {
namespace {

using nlohmann::json;

constexpr std::string_view Folder = "/control/";

template <class Number>
bool readNumber(const std::string& text, Number low, Number high, Number& number) {
  const char* end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, number);
  return result.ec == std::errc() && result.ptr == end && number >= low && number <= high;
}

// Takes as long for a wrong token as for the right one.
bool sameToken(const std::string& given, const std::string& wanted) {
  unsigned difference = given.size() == wanted.size() ? 0U : 1U;
  for (std::size_t i = 0; i < given.size() && i < wanted.size(); ++i) {
    difference |= given[i] == wanted[i] ? 0U : 1U;
  }
  return difference == 0;
}

json faultList() {
  json list = json::array();
  for (const FaultDescription& fault : describeFaults()) {
    list.push_back({{"name", fault.name},
                    {"argument", fault.argument},
                    {"usual", fault.usual},
                    {"effect", fault.effect}});
  }
  return list;
}

// What people order may hold bytes that are no UTF-8.
std::string textOf(const json& value) {
  return value.dump(-1, ' ', false, json::error_handler_t::replace) + "\n";
}

HttpReply jsonReply(std::string text) {
  return HttpReply{200, "application/json", std::move(text)};
}

constexpr std::array Orders = {std::string_view("clock"), std::string_view("input"),
                               std::string_view("lamp"), std::string_view("fault")};

}  // namespace

bool ControlDesk::changes(const HttpHead& head) {
  return head.method == "POST" && head.path.starts_with(Folder);
}

std::optional<HttpReply> ControlDesk::answer(const HttpHead& head) {
  if (!head.path.starts_with(Folder)) return std::nullopt;
  const std::string_view order = std::string_view(head.path).substr(Folder.size());
  if (head.method == "GET" && order == "faults") return jsonReply(textOf(faultList()));
  if (head.method == "GET" && order == "state") return jsonReply(state());
  if (head.method != "POST" || std::find(Orders.begin(), Orders.end(), order) == Orders.end())
    return std::nullopt;
  if (!sameToken(head.controlToken, service_.token)) {
    return HttpReply::text(
        403, "The header X-Control-Token must carry the token that the program was given.\n");
  }
  const std::string fault = carryOut(order, head);
  return fault.empty() ? jsonReply(state()) : HttpReply::text(400, fault + "\n");
}

std::string ControlDesk::carryOut(std::string_view order, const HttpHead& head) {
  if (order == "clock") return setClock(head);
  if (order == "input") return setInput(head);
  if (order == "lamp") return setLamp(head);
  return setFaults(head);
}

std::string ControlDesk::setClock(const HttpHead& head) {
  constexpr long kLongestJump = 100L * 366 * 86400;
  bool understood = false;
  if (head.parameters.contains("speed")) {
    double speed = 0;
    if (!readNumber(head.parameter("speed"), 0.0, 86400.0, speed)) {
      return "speed must be a number from 0 to 86400";
    }
    service_.clock.setSpeed(speed);
    understood = true;
  }
  if (head.parameters.contains("paused")) {
    int paused = 0;
    if (!readNumber(head.parameter("paused"), 0, 1, paused)) {
      return "paused must be 0 or 1";
    }
    service_.clock.setPaused(paused == 1);
    understood = true;
  }
  if (head.parameters.contains("jump")) {
    long seconds = 0;
    if (!readNumber(head.parameter("jump"), -kLongestJump, kLongestJump, seconds)) {
      return "jump must be a number of seconds, at most a hundred years";
    }
    service_.clock.jump(std::chrono::seconds{seconds});
    understood = true;
  }
  if (head.parameters.contains("set")) {
    const auto civil = parseDigits(head.parameter("set"));
    if (!civil) return "set must be 14 digits of an existing date and time";
    if (std::string fault = service_.controller.setDate(*civil); !fault.empty()) return fault;
    understood = true;
  }
  return understood ? "" : "one of speed, paused, jump and set is needed";
}

std::string ControlDesk::setInput(const HttpHead& head) {
  int number = 0;
  int active = 0;
  if (!readNumber(head.parameter("number"), 1, kPorts, number) ||
      !readNumber(head.parameter("active"), 0, 1, active)) {
    return "number must be 1 to 8 and active 0 or 1";
  }
  return service_.controller.setInputState(number, active == 1);
}

std::string ControlDesk::setLamp(const HttpHead& head) {
  LampCondition condition = LampCondition::AsBuilt;
  if (!readCondition(head.parameter("condition"), condition) ||
      condition == LampCondition::AsBuilt) {
    return "condition must be good, ageing or broken";
  }
  return service_.controller.setLampCondition(head.parameter("node"), condition);
}

std::string ControlDesk::setFaults(const HttpHead& head) {
  if (head.parameters.contains("clear")) {
    service_.faults.clear();
  } else if (!head.parameters.contains("set")) {
    return "set or clear is needed";
  }
  if (!head.parameters.contains("set")) return "";
  Fault fault;
  const std::string wrong = parseFault(head.parameter("set"), fault);
  if (wrong.empty()) service_.faults.add(std::move(fault));
  return wrong;
}

std::string ControlDesk::state() const {
  const double speed = service_.clock.speed();
  const bool whole = speed == std::floor(speed);
  return textOf({{"date", service_.controller.date()},
                 {"faults", service_.faults.list()},
                 {"paused", service_.clock.paused()},
                 {"speed", whole ? json(static_cast<long>(speed)) : json(speed)}});
}

}  // namespace lamp::controller
