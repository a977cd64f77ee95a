#include "controller/delivery/postman.h"

#include <iostream>

namespace lamp::controller {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using std::chrono::steady_clock;

constexpr seconds kPace{1};
constexpr milliseconds kTimeServerWait{3000};
constexpr std::chrono::minutes kBetweenQuestions{60};

}  // namespace

milliseconds correctionFor(milliseconds offset, seconds tolerated) {
  return abs(offset) > tolerated ? offset : milliseconds{0};
}

Postman::Postman(Controller& controller, ControllerClock& clock, std::filesystem::path outbox)
    : controller_(controller),
      clock_(clock),
      outbox_(std::move(outbox), courier_),
      thread_([this](const std::stop_token& stop) { work(stop); }) {}

Postman::~Postman() {
  thread_.request_stop();
  waking_.notify_all();
}

void Postman::work(const std::stop_token& stop) {
  steady_clock::time_point nextQuestion = steady_clock::now();
  while (!stop.stop_requested()) {
    const DeliverySettings settings = controller_.deliverySettings();
    if (steady_clock::now() >= nextQuestion && !settings.timeServer.empty()) {
      keepTime(settings);
      nextQuestion = steady_clock::now() + kBetweenQuestions;
    }
    for (const std::string& fault : outbox_.work(settings, clock_.now())) {
      std::cerr << "lamp-controller: not delivered: " << fault << '\n';
    }
    std::unique_lock lock(mutex_);
    waking_.wait_for(lock, stop, kPace, [] { return false; });
  }
}

void Postman::keepTime(const DeliverySettings& settings) {
  const TimeAnswer answer = askTimeServer(settings.timeServer, kTimeServerWait,
                                          [this] { return clock_.precise().time_since_epoch(); });
  if (!answer.fault.empty()) {
    std::cerr << "lamp-controller: time server: " << answer.fault << '\n';
    return;
  }
  clock_.adjust(correctionFor(answer.offset, settings.deviation));
}

}  // namespace lamp::controller
