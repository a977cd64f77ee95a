#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "controller/model/day_calendar.h"
#include "controller/model/dimming.h"
#include "controller/model/lamp_condition.h"
#include "controller/model/night.h"
#include "controller/model/section_store.h"

namespace lamp::controller {

/// One lamp as it burns.
struct Lamp {
  IntervalProgram interval;
  ClockProgram clock;
  Moment overrideBegin;
  Moment overrideEnd;
  std::uint8_t overridePower = 0;
  bool ignored = false;  ///< blacklisted
  bool placed = false;   ///< the node has a position
  float latitude = 0;
  float longitude = 0;

  int watts = 0;            ///< at full power
  LampHealth touched;       ///< what was done to it by hand
  double health = 1;        ///< measured power by expected power
  int alarmBelowWatts = 0;  ///< alarm while less is measured; 0: not watched
  int alarmDeviation = 0;   ///< alarm while so many percent are missing; 0: not watched
  int alarmAfter = 0;       ///< seconds

  int power = 0;          ///< percent, now
  Moment litSince;        ///< meaningful while `power` is above 0
  double litSeconds = 0;  ///< in all
  double wattSeconds = 0;
};

/// What is wrong with a lamp.
struct LampAlarm {
  std::size_t node;  ///< position in the store's nodes
  const char* kind;  ///< "lamp" or "power"
  Moment since;
};

/// The lamps of the street: what they burn at now, what they used, and which of them are faulty.
class LampStreet {
 public:
  /// Takes programs, overrides, thresholds and positions from the sections in force. What the lamps
  /// used so far is kept as long as the nodes are the same.
  void rebuild(const SectionStore& store);
  /// The same for a few nodes (positions in the store) and for what concerns the whole street: a
  /// write costs what it changes. `rebuild` must have been called on the same nodes.
  void refresh(const SectionStore& store, std::span<const std::size_t> nodes);

  /// Makes a lamp faulty or good; it takes effect when the lamp is read again.
  void touch(const std::string& nodeId, const LampHealth& health);
  /// What `touch` made of a lamp, at once; as built where nobody touched it.
  LampHealth touchedHealth(const std::string& nodeId) const;

  /// Lets a calendar's day types go before the programs of the lamps.
  void follow(DayCalendar calendar) { calendar_ = std::move(calendar); }

  /// The power that a lamp's program asks for at that moment of a night, without override.
  int programPower(const Lamp& lamp, const Night& night, Moment now) const;
  /// The calendar's program for a night; null where lamps burn by their own.
  const DayProgram* dayProgram(const Night& night) const;

  /// Lets the lamps burn as they must at `now` and counts what they used since the last time. A
  /// longer step than `longestStep`, or one backwards, is a clock that was set and not time in
  /// which lamps burned.
  void update(Moment now, std::chrono::seconds longestStep);

  const std::vector<Lamp>& lamps() const { return lamps_; }
  const NightClock& nightClock() const { return nightClock_; }
  const ZoneRule& zone() const { return zone_; }
  /// The lamps burn by the clock program, not by the interval program.
  bool byClock() const { return byClock_; }
  bool isNight() const { return night_.has_value(); }
  bool anyLit() const { return lit_ > 0; }
  std::size_t litCount() const { return lit_; }

  std::vector<LampAlarm> alarms(Moment now) const;

  /// Takes over what a lamp had used when the state was saved.
  void restoreUsage(std::size_t node, double litSeconds, double wattSeconds);

 private:
  void readLampAt(const SectionStore& store, std::size_t node);
  void readStreet(const SectionStore& store);
  void findPlace();

  // A moment of the night as programs count it.
  struct NightTime {
    long ofNight = 0;
    long ofClock = 0;
    const DayProgram* day = nullptr;
  };
  NightTime timeIn(const Night& night, Moment now) const;
  int programPower(const Lamp& lamp, const NightTime& time) const;
  int powerOf(const Lamp& lamp, Moment now, const NightTime& time) const;

  std::vector<Lamp> lamps_;
  NightClock nightClock_;
  ZoneRule zone_;
  bool byClock_ = false;
  DayCalendar calendar_;
  std::map<std::string, LampHealth> touched_;
  std::optional<Night> night_;
  std::optional<Moment> last_;
  std::size_t lit_ = 0;
};

}  // namespace lamp::controller
