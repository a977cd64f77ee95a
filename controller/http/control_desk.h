#pragma once

#include <string>
#include <string_view>

namespace httplib {
class Server;
struct Request;
struct Response;
}  // namespace httplib

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

  void install(httplib::Server& server);

  /// Carries out what a request with the token orders by its parameters: "clock", "input", "lamp"
  /// or "fault". Answers what is wrong, or an empty text.
  std::string carryOut(std::string_view order, const httplib::Request& request);

 private:
  void handle(const httplib::Request& request, httplib::Response& response, std::string_view order);

  std::string setClock(const httplib::Request& request);
  std::string setInput(const httplib::Request& request);
  std::string setLamp(const httplib::Request& request);
  std::string setFaults(const httplib::Request& request);
  std::string state() const;

  const Service& service_;
};

}  // namespace lamp::controller
