#pragma once

#include <cstdint>
#include <string>

#include "controller/http/command_server.h"
#include "controller/http/event_feed.h"
#include "controller/model/live_view.h"

namespace lamp::controller {

/// The street's plan as JSON: nodes in parallel lists, programs, version.
std::string planJson(const StreetPlanView& plan);

/// One lamp as JSON.
std::string lampJson(const LampView& lamp);

/// What can be seen of the street, from one look to the next, as JSON. Powers travel as one letter
/// for each lamp, 0 to 63 in the alphabet of base64, and with what has changed only when one of
/// them has; commands likewise.
class LiveNews {
 public:
  /// The service must outlive it.
  explicit LiveNews(const Service& service) : service_(service) {}

  /// What is new since the last call; everything where `restart` says so.
  News next(bool restart);

 private:
  const Service& service_;
  std::uint64_t logged_ = 0;
  std::string powers_;
  std::string rest_;
};

}  // namespace lamp::controller
