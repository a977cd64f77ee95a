#include "controller/delivery/time_appointment.h"

namespace lamp::controller {
namespace {

constexpr std::chrono::minutes kBetweenQuestions{60};
constexpr std::chrono::seconds kAfterFailure{15};

}  // namespace

bool TimeAppointment::due(const DeliverySettings& settings, Moment now) const {
  if (settings.timeServer.empty()) return false;
  const bool changed = settings.timeServer != server_ || settings.deviation != deviation_;
  return changed || now >= next_;
}

void TimeAppointment::kept(const DeliverySettings& settings, bool answered, Moment now) {
  server_ = settings.timeServer;
  deviation_ = settings.deviation;
  next_ = now + (answered ? std::chrono::seconds{kBetweenQuestions} : kAfterFailure);
}

}  // namespace lamp::controller
