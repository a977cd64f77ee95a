#include "controller/model/lamp_street.h"

#include <algorithm>
#include <cmath>

#include "controller/model/names.h"

namespace lamp::controller {
namespace {

using std::chrono::minutes;
using std::chrono::seconds;

// Where no node has a position yet.
constexpr Place kDefaultPlace{41.5472, 2.1074};
constexpr int kDefaultWatts = 100;

bool isOld(pugi::xml_node row) {
  return row.attribute("brokenActive") != nullptr;
}

void readThresholds(pugi::xml_node row, Lamp& lamp) {
  if (isOld(row)) {
    lamp.alarmBelowWatts = row.attribute("brokenActive").as_int();
    lamp.alarmAfter = row.attribute("brokenTime").as_int();
    lamp.watts = row.attribute("blinkActive").as_int() * 2;
  } else {
    lamp.watts = row.attribute("powerLamp").as_int();
    lamp.alarmDeviation = row.attribute("percentageAlarm").as_int();
    lamp.alarmAfter = row.attribute("timeAlarm").as_int();
  }
  if (lamp.watts <= 0) lamp.watts = kDefaultWatts;
}

Lamp readLamp(const SectionStore& store, const NodeRows& rows, const LampHealth& touched) {
  Lamp lamp;
  lamp.interval = IntervalProgram::read(rows.row(Family::Interval));
  lamp.clock = ClockProgram::read(rows.row(Family::Clock));
  lamp.ignored = store.isBlacklisted(rows);
  lamp.touched = touched;
  lamp.health = healthOf(presentCondition(touched.condition, rows.id));
  lamp.placed = rows.row(Family::Table).attribute(names::kLatitude) != nullptr;
  lamp.latitude = rows.row(Family::Table).attribute(names::kLatitude).as_float();
  lamp.longitude = rows.row(Family::Table).attribute(names::kLongitude).as_float();
  lamp.overridePower = static_cast<std::uint8_t>(
      std::clamp(rows.row(Family::Power).attribute(names::kPower).as_int(), 0, 100));
  if (const long long since = SectionStore::powerSince(rows); since > 0) {
    lamp.overrideBegin = Moment{seconds{since}};
    lamp.overrideEnd =
        lamp.overrideBegin + minutes{rows.row(Family::Power).attribute(names::kTime).as_int()};
  }
  readThresholds(rows.row(Family::Alarm), lamp);
  return lamp;
}

}  // namespace

void LampStreet::rebuild(const SectionStore& store) {
  if (lamps_.size() != store.nodes().size()) lamps_.assign(store.nodes().size(), Lamp());
  for (std::size_t node = 0; node < lamps_.size(); ++node) readLampAt(store, node);
  readStreet(store);
}

void LampStreet::refresh(const SectionStore& store, std::span<const std::size_t> nodes) {
  for (const std::size_t node : nodes) readLampAt(store, node);
  readStreet(store);
}

// How the lamp burns and what it used goes on.
void LampStreet::readLampAt(const SectionStore& store, std::size_t node) {
  const NodeRows& rows = store.nodes()[node];
  Lamp lamp = readLamp(store, rows, touchedHealth(rows.id));
  Lamp& present = lamps_[node];
  lamp.power = present.power;
  lamp.litSince = present.litSince;
  lamp.litSeconds = present.litSeconds;
  lamp.wattSeconds = present.wattSeconds;
  present = lamp;
}

void LampStreet::readStreet(const SectionStore& store) {
  const pugi::xml_node general = store.section(names::kGeneral);
  zone_ = zoneRuleOf(general.attribute(names::kTimeZone).value());
  byClock_ = std::string_view(general.attribute(names::kInputsDetected).value()) == "Y";
  const pugi::xml_node outputs = store.section(names::kInputsOutputs);
  nightClock_.minutesAfterSunset = outputs.attribute(names::kSunsetOffset).as_int();
  nightClock_.minutesAfterSunrise = outputs.attribute(names::kSunriseOffset).as_int();
  findPlace();
}

void LampStreet::touch(const std::string& nodeId, const LampHealth& health) {
  touched_[nodeId] = health;
}

LampHealth LampStreet::touchedHealth(const std::string& nodeId) const {
  const auto found = touched_.find(nodeId);
  return found == touched_.end() ? LampHealth() : found->second;
}

// The controller stands in the middle of its lamps.
void LampStreet::findPlace() {
  double latitude = 0;
  double longitude = 0;
  std::size_t count = 0;
  for (const Lamp& lamp : lamps_) {
    if (!lamp.placed) continue;
    latitude += static_cast<double>(lamp.latitude);
    longitude += static_cast<double>(lamp.longitude);
    ++count;
  }
  const double number = static_cast<double>(count);
  nightClock_.place = count == 0 ? kDefaultPlace : Place{latitude / number, longitude / number};
}

const DayProgram* LampStreet::dayProgram(const Night& night) const {
  return calendar_.programFor(eveningOf(night, zone_), byClock_);
}

LampStreet::NightTime LampStreet::timeIn(const Night& night, Moment now) const {
  return NightTime{std::chrono::floor<minutes>(now - night.begin).count(),
                   minutesAfterNoon(night, now, zone_), dayProgram(night)};
}

int LampStreet::programPower(const Lamp& lamp, const NightTime& time) const {
  const ClockProgram& clock = time.day != nullptr ? time.day->clock : lamp.clock;
  const IntervalProgram& interval = time.day != nullptr ? time.day->interval : lamp.interval;
  return byClock_ ? clock.powerAt(time.ofClock) : interval.powerAfter(time.ofNight);
}

int LampStreet::programPower(const Lamp& lamp, const Night& night, Moment now) const {
  return programPower(lamp, timeIn(night, now));
}

int LampStreet::powerOf(const Lamp& lamp, Moment now, const NightTime& time) const {
  if (lamp.ignored) return 0;
  if (lamp.overrideBegin <= now && now < lamp.overrideEnd) return lamp.overridePower;
  return night_ ? programPower(lamp, time) : 0;
}

void LampStreet::update(Moment now, seconds longestStep) {
  night_ = nightClock_.at(now);
  const NightTime time = night_ ? timeIn(*night_, now) : NightTime{};
  const seconds passed = last_ ? now - *last_ : seconds{0};
  const bool counts = passed > seconds{0} && passed <= longestStep;
  last_ = now;
  lit_ = 0;
  for (Lamp& lamp : lamps_) {
    if (counts && lamp.power > 0) {
      const double span = static_cast<double>(passed.count());
      lamp.litSeconds += span;
      lamp.wattSeconds += span * lamp.watts * lamp.power / 100.0 * lamp.health;
    }
    const int power = powerOf(lamp, now, time);
    // A clock that was set back would otherwise hold alarms off until it has caught up.
    if (power > 0 && (lamp.power == 0 || lamp.litSince > now)) lamp.litSince = now;
    lamp.power = power;
    lit_ += power > 0 ? 1 : 0;
  }
}

std::vector<LampAlarm> LampStreet::alarms(Moment now) const {
  std::vector<LampAlarm> found;
  for (std::size_t i = 0; i < lamps_.size(); ++i) {
    const Lamp& lamp = lamps_[i];
    if (lamp.power == 0) continue;
    const double expected = lamp.watts * lamp.power / 100.0;
    const double measured = expected * lamp.health;
    const bool broken = lamp.alarmBelowWatts > 0 && expected >= lamp.alarmBelowWatts &&
                        measured < lamp.alarmBelowWatts;
    // What is missing is compared in whole percents of what is expected: 30 % of 30 % is not above.
    const bool deviates =
        lamp.alarmDeviation > 0 && std::lround((1 - lamp.health) * 100) > lamp.alarmDeviation;
    const bool touchedSince = lamp.touched.since > lamp.litSince && lamp.touched.since <= now;
    const Moment since =
        (touchedSince ? lamp.touched.since : lamp.litSince) + seconds{lamp.alarmAfter};
    if ((broken || deviates) && since <= now) {
      found.push_back(LampAlarm{i, broken ? "lamp" : "power", since});
    }
  }
  return found;
}

void LampStreet::restoreUsage(std::size_t node, double litSeconds, double wattSeconds) {
  if (node >= lamps_.size()) return;
  lamps_[node].litSeconds = litSeconds;
  lamps_[node].wattSeconds = wattSeconds;
}

}  // namespace lamp::controller
