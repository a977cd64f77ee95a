#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace lamp::controller {

/// A moment of the real time line, in whole seconds of UTC.
using Moment = std::chrono::sys_seconds;
/// A date and a time of day as a clock on the wall shows them.
using CivilTime = std::chrono::local_seconds;

/// The rule by which a wall clock follows the sun: minutes east of UTC, and whether summer time
/// holds from the last Sunday of March to the last Sunday of October, changing at 01:00 UTC.
struct ZoneRule {
  int minutesEast = 0;
  bool europeanSummer = false;
};

/// The rule for a value of the general section's "TimeZone" ("0" to "6"); central European time
/// for any other text.
ZoneRule zoneRuleOf(std::string_view timeZone);

/// True while summer time holds under `rule`.
bool isSummer(Moment moment, const ZoneRule& rule);

CivilTime toCivil(Moment moment, const ZoneRule& rule);

/// The moment at which the wall clock shows `civil`. `summer` decides the hour that happens twice
/// in October. A time that the clock skips in March is read as winter time.
Moment toMoment(CivilTime civil, const ZoneRule& rule, bool summer);

/// A date and time with its season letter: 14 digits and "S" (summer) or "W".
struct Stamp {
  CivilTime civil;
  bool summer = false;
};

/// Reads 14 digits (year, month, day, hour, minute, second) that name an existing moment of the
/// calendar; empty for any other text.
std::optional<CivilTime> parseDigits(std::string_view text);

/// Reads 14 digits and a season letter; empty for any other text.
std::optional<Stamp> parseStamp(std::string_view text);

/// 14 digits: year 4, month, day, hour, minute and second 2 each.
std::string formatDigits(CivilTime civil);

/// "2025-03-15 22:10:00", for people.
std::string formatReadable(CivilTime civil);

}  // namespace lamp::controller
