#pragma once

#include <cstdint>
#include <string>

#include "controller/http/command_server.h"
#include "controller/model/live_view.h"

namespace lamp::controller {

/// What one viewer of the live page has been sent already.
struct ViewerState {
  std::uint64_t logged = 0;
  std::string powers;
  std::string rest;
};

/// The street's plan as JSON: nodes in parallel lists, programs, version.
std::string planJson(const StreetPlanView& plan);

/// One lamp as JSON.
std::string lampJson(const LampView& lamp);

/// What is new for this viewer since the last call, as JSON; empty when nothing is. Powers travel
/// as one letter per lamp, 0 to 63 in the alphabet of base64, and only when one has changed.
std::string newsJson(const Service& service, ViewerState& viewer);

}  // namespace lamp::controller
