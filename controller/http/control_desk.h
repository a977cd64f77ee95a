#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "controller/http/http_message.h"

namespace lamp::controller {

struct Service;

/// The part of the web service that is not the controller but the simulation of it: its clock, its
/// inputs and the faults on order. Requests must carry the token in the header "X-Control-Token",
/// which a page of another origin can't.
///
/// POST /control/clock with one of "speed" (0 to 86400), "paused" (0 or 1), "jump" (seconds), "set"
/// (14 digits); POST /control/input with "number" and "active"; POST /control/lamp with "node" and
/// "condition" ("good", "ageing", "broken"); POST /control/fault with "set" or "clear". Parameters
/// stand in the address. GET /control/state answers where things stand, GET /control/faults which
/// faults there are.
class ControlDesk {
 public:
  /// The service must outlive the desk.
  explicit ControlDesk(const Service& service) : service_(service) {}

  /// Whether a request may change something, which takes its time.
  static bool changes(const HttpHead& head);
  /// Nothing where the desk has nothing at this address.
  std::optional<HttpReply> answer(const HttpHead& head);

  /// Carries out what a request with the token orders by its parameters: "clock", "input", "lamp"
  /// or "fault". Answers what is wrong, or an empty text.
  std::string carryOut(std::string_view order, const HttpHead& head);

 private:
  std::string setClock(const HttpHead& head);
  std::string setInput(const HttpHead& head);
  std::string setLamp(const HttpHead& head);
  std::string setFaults(const HttpHead& head);
  std::string state() const;

  const Service& service_;
};

}  // namespace lamp::controller
