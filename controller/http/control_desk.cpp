#include "controller/http/control_desk.h"

#include <httplib.h>

#include <charconv>

#include "controller/http/command_server.h"
#include "controller/http/json_text.h"

namespace lamp::controller {
namespace {

constexpr const char* kTokenHeader = "X-Control-Token";
constexpr const char* kPlainText = "text/plain; charset=utf-8";

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

std::string faultList() {
  JsonText list('[');
  for (const FaultDescription& fault : describeFaults()) {
    list.addRaw("", JsonText('{')
                        .add("name", fault.name)
                        .add("argument", fault.argument)
                        .add("usual", static_cast<std::size_t>(fault.usual))
                        .add("effect", fault.effect)
                        .done());
  }
  return list.done() + "\n";
}

}  // namespace

void ControlDesk::install(httplib::Server& server) {
  for (const char* order : {"clock", "input", "lamp", "fault"}) {
    server.Post(std::string("/control/") + order,
                [this, order](const httplib::Request& request, httplib::Response& response) {
                  handle(request, response, order);
                });
  }
  server.Get("/control/faults", [](const httplib::Request&, httplib::Response& response) {
    response.set_content(faultList(), "application/json");
  });
  server.Get("/control/state", [this](const httplib::Request&, httplib::Response& response) {
    response.set_content(state(), "application/json");
  });
}

std::string ControlDesk::carryOut(std::string_view order, const httplib::Request& request) {
  if (order == "clock") return setClock(request);
  if (order == "input") return setInput(request);
  if (order == "lamp") return setLamp(request);
  return setFaults(request);
}

void ControlDesk::handle(const httplib::Request& request, httplib::Response& response,
                         std::string_view order) {
  if (!sameToken(request.get_header_value(kTokenHeader), service_.token)) {
    response.status = 403;
    response.set_content(
        "The header X-Control-Token must carry the token that the program printed.\n", kPlainText);
    return;
  }
  const std::string fault = carryOut(order, request);
  response.status = fault.empty() ? 200 : 400;
  if (fault.empty()) {
    response.set_content(state(), "application/json");
  } else {
    response.set_content(fault + "\n", kPlainText);
  }
}

std::string ControlDesk::setClock(const httplib::Request& request) {
  constexpr long kLongestJump = 100L * 366 * 86400;
  bool understood = false;
  if (request.has_param("speed")) {
    double speed = 0;
    if (!readNumber(request.get_param_value("speed"), 0.0, 86400.0, speed)) {
      return "speed must be a number from 0 to 86400";
    }
    service_.clock.setSpeed(speed);
    understood = true;
  }
  if (request.has_param("paused")) {
    int paused = 0;
    if (!readNumber(request.get_param_value("paused"), 0, 1, paused)) {
      return "paused must be 0 or 1";
    }
    service_.clock.setPaused(paused == 1);
    understood = true;
  }
  if (request.has_param("jump")) {
    long seconds = 0;
    if (!readNumber(request.get_param_value("jump"), -kLongestJump, kLongestJump, seconds)) {
      return "jump must be a number of seconds, at most a hundred years";
    }
    service_.clock.jump(std::chrono::seconds{seconds});
    understood = true;
  }
  if (request.has_param("set")) {
    const auto civil = parseDigits(request.get_param_value("set"));
    if (!civil) return "set must be 14 digits of an existing date and time";
    if (std::string fault = service_.controller.setDate(*civil); !fault.empty()) return fault;
    understood = true;
  }
  return understood ? "" : "one of speed, paused, jump and set is needed";
}

std::string ControlDesk::setInput(const httplib::Request& request) {
  int number = 0;
  int active = 0;
  if (!readNumber(request.get_param_value("number"), 1, kPorts, number) ||
      !readNumber(request.get_param_value("active"), 0, 1, active)) {
    return "number must be 1 to 8 and active 0 or 1";
  }
  return service_.controller.setInputState(number, active == 1);
}

std::string ControlDesk::setLamp(const httplib::Request& request) {
  LampCondition condition = LampCondition::AsBuilt;
  if (!readCondition(request.get_param_value("condition"), condition) ||
      condition == LampCondition::AsBuilt) {
    return "condition must be good, ageing or broken";
  }
  return service_.controller.setLampCondition(request.get_param_value("node"), condition);
}

std::string ControlDesk::setFaults(const httplib::Request& request) {
  if (request.has_param("clear")) {
    service_.faults.clear();
  } else if (!request.has_param("set")) {
    return "set or clear is needed";
  }
  if (!request.has_param("set")) return "";
  Fault fault;
  const std::string wrong = parseFault(request.get_param_value("set"), fault);
  if (wrong.empty()) service_.faults.add(std::move(fault));
  return wrong;
}

std::string ControlDesk::state() const {
  return JsonText('{')
             .add("date", service_.controller.date())
             .add("faults", service_.faults.list())
             .add("paused", service_.clock.paused())
             .add("speed", service_.clock.speed())
             .done() +
         "\n";
}

}  // namespace lamp::controller
