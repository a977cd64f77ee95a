#include "controller/delivery/postman.h"

#include <cstdio>
#include <iostream>

#include "controller/delivery/time_appointment.h"

namespace lamp::controller {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using std::chrono::steady_clock;

constexpr seconds kPace{1};
constexpr milliseconds kTimeServerWait{3000};
constexpr milliseconds kWorthTelling{1000};

std::string inSeconds(milliseconds time) {
  char text[32];
  std::snprintf(text, sizeof text, "%.3f s", std::chrono::duration<double>(time).count());
  return text;
}

}  // namespace

milliseconds correctionFor(milliseconds offset, seconds tolerated) {
  return abs(offset) > tolerated ? offset : milliseconds{0};
}

Postman::Postman(Controller& controller, ControllerClock& clock, std::filesystem::path outbox,
                 std::string authorities)
    : controller_(controller),
      clock_(clock),
      courier_(std::move(authorities)),
      outbox_(std::move(outbox), courier_),
      thread_([this](const std::stop_token& stop) { work(stop); }) {}

Postman::~Postman() {
  thread_.request_stop();
  waking_.notify_all();
}

void Postman::work(const std::stop_token& stop) {
  const auto inForce = [this] { return controller_.deliverySettings(); };
  TimeAppointment appointment;
  while (!stop.stop_requested()) {
    const DeliverySettings settings = inForce();
    if (appointment.due(settings, steady_clock::now())) {
      appointment.kept(settings, keepTime(settings), steady_clock::now());
    }
    for (const std::string& fault : outbox_.work(inForce, clock_.now())) {
      std::cerr << "lamp-controller: not delivered: " << fault << '\n';
    }
    std::unique_lock lock(mutex_);
    waking_.wait_for(lock, stop, kPace, [] { return false; });
  }
}

bool Postman::keepTime(const DeliverySettings& settings) {
  const TimeAnswer answer = askTimeServer(settings.timeServer, kTimeServerWait,
                                          [this] { return clock_.precise().time_since_epoch(); });
  if (!answer.fault.empty()) {
    std::cerr << "lamp-controller: time server: " << answer.fault << '\n';
    return false;
  }
  const milliseconds correction = correctionFor(answer.offset, settings.deviation);
  clock_.adjust(correction);
  if (correction != milliseconds{0}) {
    std::cerr << "lamp-controller: clock corrected by " << inSeconds(correction) << " as "
              << settings.timeServer << " tells\n";
  } else if (abs(answer.offset) >= kWorthTelling) {
    std::cerr << "lamp-controller: clock left alone though " << settings.timeServer
              << " tells a difference of " << inSeconds(answer.offset) << ": up to "
              << inSeconds(settings.deviation) << " are tolerated\n";
  }
  return true;
}

}  // namespace lamp::controller
