#pragma once

#include "controller/http/command_server.h"
#include "controller/http/http_message.h"

namespace lamp::controller {

/// The folder in which the addresses of commands stand.
inline constexpr std::string_view CommandFolder = "/lampmanager/command/";

/// Takes commands (POST /lampmanager/command/{number}) and makes the controller misbehave where
/// faults are on order.
class CommandDesk {
 public:
  /// The service must outlive the desk.
  explicit CommandDesk(const Service& service) : service_(service) {}

  /// Whether a request to the folder may send its body, and how long that may be and take.
  static bool admits(const HttpHead& head, std::size_t& mostBytes, std::chrono::seconds& mostTime,
                     HttpReply& reply);
  HttpReply answer(HttpRequest& request);

 private:
  HttpReply perform(int command, HttpRequest& request, const std::vector<Fault>& faults);
  Reply carryOut(int command, std::string body, const std::vector<Fault>& faults);
  void record(int command, ShownText body, const std::string& query, const Reply& reply);

  const Service& service_;
};

}  // namespace lamp::controller
