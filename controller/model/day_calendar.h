#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "controller/model/dimming.h"

namespace lamp::controller {

/// The program of one day type, in both forms; a calendar fills the one of its kind.
struct DayProgram {
  IntervalProgram interval;
  ClockProgram clock;
};

/// A yearly calendar: for each of 366 days (February always has 29) one of ten day types, each with
/// a program of its own. A day type whose values are all 0 has no program: lamps burn by their own.
class DayCalendar {
 public:
  /// Reads a calendar file: root "calendar" with "hasIOmodule", "days" and "year". Characters of
  /// "year" other than digits, and those that are missing, are day type 0. Returns what is wrong
  /// with it, or an empty text.
  std::string load(std::string_view text);

  /// The day type of a date, 0 to 9.
  int typeOf(std::chrono::local_days date) const;
  /// The program for the night that begins on that date; null where lamps burn by their own. A
  /// calendar for clock programs says nothing to lamps that burn by interval programs, and the
  /// other way round.
  const DayProgram* programFor(std::chrono::local_days date, bool byClock) const;

 private:
  static constexpr std::size_t kTypes = 10;
  static constexpr std::size_t kSlots = 366;

  bool byClock_ = false;
  std::array<std::optional<DayProgram>, kTypes> programs_;
  std::string year_;
};

}  // namespace lamp::controller
