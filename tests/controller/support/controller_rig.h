#pragma once

#include <pugixml.hpp>
#include <string>
#include <vector>

#include "controller/model/controller.h"
#include "controller/model/street_generator.h"

namespace lamp::controller::test {

/// A time source that stands still until the test moves it.
class ManualTime final : public TimeSource {
 public:
  explicit ManualTime(Point start) : now_(start) {}
  Point now() const override { return now_; }
  void pass(std::chrono::milliseconds by) { now_ += by; }

 private:
  Point now_;
};

/// A controller with three nodes ("4100007" is the first) whose wall clock shows
/// 15 March 2025, 12:00:00 winter time of central Europe.
class ControllerRig {
 public:
  explicit ControllerRig(StreetPlan plan = StreetPlan{3, 7, true});

  /// The reply's document; the test fails when the command was refused.
  pugi::xml_document ask(int command, const std::string& body);
  /// The section of a read, a part of `lastReply`.
  pugi::xml_node read(const std::string& code);
  /// Attribute of the first node's row in a section.
  std::string ofFirstNode(const std::string& code, const char* attribute);
  /// Status of a command; its text is in `refusal`.
  int send(int command, const std::string& body);
  /// Writes `section` (markup of one element) with command 2.
  int write(const std::string& section) {
    return send(2, "<deviceCfg>" + section + "</deviceCfg>");
  }
  /// The state as text, without the clock.
  std::string state();
  /// Node identities, in the order of the table.
  std::vector<std::string> nodeIds();

  ManualTime time;
  ControllerClock clock;
  Controller controller;
  std::string refusal;
  pugi::xml_document lastReply;
};

}  // namespace lamp::controller::test
