#include "controller/model/civil_time.h"

#include <array>
#include <cstdio>

namespace lamp::controller {
namespace {

using namespace std::chrono;

constexpr std::array<ZoneRule, 7> kZones = {{
    {60, true},     // Madrid, Paris, Berlin
    {0, true},      // London, Lisbon
    {120, true},    // Athens, Helsinki
    {-180, false},  // Buenos Aires
    {-180, false},  // Brazil
    {-300, false},  // Colombia
    {-360, false},  // Central America
}};

constexpr std::size_t kDigits = 14;

Moment lastSundayAtOneUtc(year y, month m) {
  return Moment{sys_days{y / m / Sunday[last]}.time_since_epoch() + hours{1}};
}

int number(std::string_view text, std::size_t from, std::size_t count) {
  int value = 0;
  for (std::size_t i = from; i < from + count; ++i) value = value * 10 + (text[i] - '0');
  return value;
}

struct Fields {
  int year, month, day, hour, minute, second;
};

Fields fieldsOf(CivilTime civil) {
  const auto day = floor<days>(civil);
  const year_month_day date{day};
  const hh_mm_ss time{civil - day};
  return Fields{int(date.year()),
                static_cast<int>(unsigned(date.month())),
                static_cast<int>(unsigned(date.day())),
                static_cast<int>(time.hours().count()),
                static_cast<int>(time.minutes().count()),
                static_cast<int>(time.seconds().count())};
}

std::string print(const char* format, CivilTime civil) {
  const Fields f = fieldsOf(civil);
  char text[64];
  const int length =
      std::snprintf(text, sizeof text, format, f.year, f.month, f.day, f.hour, f.minute, f.second);
  return std::string(text, static_cast<std::size_t>(length));
}

}  // namespace

ZoneRule zoneRuleOf(std::string_view timeZone) {
  if (timeZone.size() == 1 && timeZone[0] >= '0' && timeZone[0] <= '6') {
    return kZones[static_cast<std::size_t>(timeZone[0] - '0')];
  }
  return kZones[0];
}

bool isSummer(Moment moment, const ZoneRule& rule) {
  if (!rule.europeanSummer) return false;
  const year y = year_month_day{floor<days>(moment)}.year();
  return moment >= lastSundayAtOneUtc(y, March) && moment < lastSundayAtOneUtc(y, October);
}

CivilTime toCivil(Moment moment, const ZoneRule& rule) {
  const minutes east{rule.minutesEast + (isSummer(moment, rule) ? 60 : 0)};
  return CivilTime{moment.time_since_epoch() + east};
}

Moment toMoment(CivilTime civil, const ZoneRule& rule, bool summer) {
  const Moment winter{civil.time_since_epoch() - minutes{rule.minutesEast}};
  if (!rule.europeanSummer) return winter;
  const Moment inSummer = winter - hours{1};
  const bool summerFits = isSummer(inSummer, rule);
  const bool winterFits = !isSummer(winter, rule);
  if (summerFits && winterFits) return summer ? inSummer : winter;
  return summerFits ? inSummer : winter;
}

std::optional<CivilTime> parseDigits(std::string_view text) {
  if (text.size() != kDigits) return std::nullopt;
  for (const char c : text) {
    if (c < '0' || c > '9') return std::nullopt;
  }
  const year_month_day date{year{number(text, 0, 4)},
                            month{static_cast<unsigned>(number(text, 4, 2))},
                            day{static_cast<unsigned>(number(text, 6, 2))}};
  const int hour = number(text, 8, 2);
  const int minute = number(text, 10, 2);
  const int second = number(text, 12, 2);
  if (!date.ok() || hour > 23 || minute > 59 || second > 59) return std::nullopt;
  return CivilTime{local_days{date}.time_since_epoch() + hours{hour} + minutes{minute} +
                   seconds{second}};
}

std::optional<Stamp> parseStamp(std::string_view text) {
  if (text.size() != kDigits + 1) return std::nullopt;
  const char season = text.back();
  if (season != 'S' && season != 'W') return std::nullopt;
  const auto civil = parseDigits(text.substr(0, kDigits));
  if (!civil) return std::nullopt;
  return Stamp{*civil, season == 'S'};
}

std::string formatDigits(CivilTime civil) {
  return print("%04d%02d%02d%02d%02d%02d", civil);
}

std::string formatReadable(CivilTime civil) {
  return print("%04d-%02d-%02d %02d:%02d:%02d", civil);
}

}  // namespace lamp::controller
