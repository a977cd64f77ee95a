#include "controller/model/dimming.h"

#include <algorithm>

#include "controller/model/names.h"

namespace lamp::controller {
namespace {

constexpr int kDay = 24 * 60;
constexpr int kNoon = 12 * 60;

template <class Number>
Number bounded(pugi::xml_node row, const std::string& name, int high) {
  return static_cast<Number>(std::clamp(row.attribute(name.c_str()).as_int(), 0, high));
}

std::string numbered(const char* name, std::size_t step) {
  return name + std::to_string(step + 1);
}

}  // namespace

IntervalProgram IntervalProgram::read(pugi::xml_node row) {
  IntervalProgram program;
  for (std::size_t step = 0; step < 4; ++step) {
    program.minutes[step] = bounded<std::uint16_t>(row, numbered(names::kTime, step), 999);
    program.power[step] = bounded<std::uint8_t>(row, numbered(names::kPower, step), 100);
  }
  return program;
}

int IntervalProgram::powerAfter(long minutesOfNight) const {
  long end = 0;
  for (std::size_t step = 0; step < 4; ++step) {
    end += minutes[step];
    if (minutesOfNight < end) return power[step];
  }
  return power[3];
}

ClockProgram ClockProgram::read(pugi::xml_node row) {
  ClockProgram program;
  for (std::size_t step = 0; step < 4; ++step) {
    program.power[step] = bounded<std::uint8_t>(row, numbered(names::kPower, step), 100);
    if (step == 0) continue;
    const int minute = bounded<int>(row, numbered(names::kHour, step), 23) * 60 +
                       bounded<int>(row, numbered(names::kMinute, step), 59);
    program.start[step - 1] = static_cast<std::uint16_t>((minute - kNoon + kDay) % kDay);
  }
  return program;
}

int ClockProgram::powerAt(long minutesAfterNoonNow) const {
  int found = power[0];
  long latest = -1;
  for (std::size_t step = 0; step < 3; ++step) {
    if (start[step] > minutesAfterNoonNow || start[step] < latest) continue;
    latest = start[step];
    found = power[step + 1];
  }
  return found;
}

std::chrono::local_days eveningOf(const Night& night, const ZoneRule& zone) {
  // A night begins between noon and midnight nearly everywhere; six hours less keeps one that
  // begins after midnight in a northern June with the day that it belongs to.
  return std::chrono::floor<std::chrono::days>(toCivil(night.begin, zone) - std::chrono::hours{6});
}

long minutesAfterNoon(const Night& night, Moment now, const ZoneRule& zone) {
  using namespace std::chrono;
  return floor<minutes>(toCivil(now, zone) - (eveningOf(night, zone) + hours{12})).count();
}

}  // namespace lamp::controller
