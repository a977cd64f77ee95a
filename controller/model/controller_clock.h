#pragma once

#include <chrono>
#include <mutex>

#include "controller/model/civil_time.h"

namespace lamp::controller {

/// Where a clock takes the passing of time from; tests put their own in its place.
class TimeSource {
 public:
  using Point = std::chrono::sys_time<std::chrono::milliseconds>;

  virtual ~TimeSource() = default;
  virtual Point now() const = 0;
};

/// The machine's clock.
class MachineTime final : public TimeSource {
 public:
  Point now() const override;
};

/// The controller's own clock: it runs from a time source, may be set, run faster or be paused.
/// Safe to use from several threads.
class ControllerClock {
 public:
  /// Shows the source's time until it is set. The source must outlive the clock.
  explicit ControllerClock(const TimeSource& source);

  Moment now() const;
  /// The same in milliseconds.
  TimeSource::Point precise() const;

  /// Sets the clock; it runs on from there at its present speed.
  void set(Moment moment);
  /// Moves the clock by so many seconds, forwards or backwards.
  void jump(std::chrono::seconds by) { adjust(by); }
  /// The same in milliseconds.
  void adjust(std::chrono::milliseconds by);

  /// Own seconds per second of the source, 0 to 86,400; a speed outside is clipped.
  void setSpeed(double speed);
  double speed() const;
  /// A paused clock stands still and keeps its speed for later.
  void setPaused(bool paused);
  bool paused() const;

  /// How far the clock is ahead of its source (negative: behind).
  std::chrono::seconds offset() const;
  void setOffset(std::chrono::seconds offset);
  /// How far it would be ahead if it were set to `moment` now.
  std::chrono::seconds offsetAt(Moment moment) const;

 private:
  using Point = TimeSource::Point;
  Point shown() const;
  void anchor(Point own);

  const TimeSource& source_;
  mutable std::mutex mutex_;
  Point sourceAnchor_;
  Point ownAnchor_;
  double speed_ = 1.0;
  bool paused_ = false;
};

}  // namespace lamp::controller
