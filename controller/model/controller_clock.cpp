#include "controller/model/controller_clock.h"

#include <algorithm>

namespace lamp::controller {

using std::chrono::floor;
using std::chrono::milliseconds;
using std::chrono::seconds;

namespace {
constexpr double kFastest = 86400.0;
}

TimeSource::Point MachineTime::now() const {
  return floor<milliseconds>(std::chrono::system_clock::now());
}

ControllerClock::ControllerClock(const TimeSource& source)
    : source_(source), sourceAnchor_(source.now()), ownAnchor_(sourceAnchor_) {}

TimeSource::Point ControllerClock::shown() const {
  if (paused_) return ownAnchor_;
  const auto elapsed = source_.now() - sourceAnchor_;
  const double own = static_cast<double>(elapsed.count()) * speed_;
  return ownAnchor_ + milliseconds{static_cast<milliseconds::rep>(own)};
}

void ControllerClock::anchor(Point own) {
  sourceAnchor_ = source_.now();
  ownAnchor_ = own;
}

Moment ControllerClock::now() const {
  const std::lock_guard lock(mutex_);
  return floor<seconds>(shown());
}

TimeSource::Point ControllerClock::precise() const {
  const std::lock_guard lock(mutex_);
  return shown();
}

void ControllerClock::set(Moment moment) {
  const std::lock_guard lock(mutex_);
  anchor(moment);
}

void ControllerClock::adjust(milliseconds by) {
  const std::lock_guard lock(mutex_);
  anchor(shown() + by);
}

void ControllerClock::setSpeed(double speed) {
  const std::lock_guard lock(mutex_);
  anchor(shown());
  speed_ = std::clamp(speed, 0.0, kFastest);
}

double ControllerClock::speed() const {
  const std::lock_guard lock(mutex_);
  return speed_;
}

void ControllerClock::setPaused(bool paused) {
  const std::lock_guard lock(mutex_);
  anchor(shown());
  paused_ = paused;
}

bool ControllerClock::paused() const {
  const std::lock_guard lock(mutex_);
  return paused_;
}

seconds ControllerClock::offset() const {
  const std::lock_guard lock(mutex_);
  return std::chrono::round<seconds>(shown() - source_.now());
}

seconds ControllerClock::offsetAt(Moment moment) const {
  return std::chrono::round<seconds>(moment - source_.now());
}

void ControllerClock::setOffset(seconds offset) {
  const std::lock_guard lock(mutex_);
  anchor(source_.now() + offset);
}

}  // namespace lamp::controller
