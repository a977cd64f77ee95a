#include "editor/program_chart/lamp_program.h"

namespace editor {
namespace {

constexpr std::size_t MostDigits = 3;
constexpr int LongestStep = 999;
constexpr int FullPower = 100;
constexpr int HighestHour = 23;
constexpr int HighestMinute = 59;
constexpr int HourMinutes = 60;

// A number of at most three digits and nothing else, up to the highest one allowed.
std::int16_t readNumber(std::u16string_view text, int highest) {
  if (text.empty() || text.size() > MostDigits) return ProgramStep::Unusable;
  int number = 0;
  for (const char16_t c : text) {
    if (c < u'0' || c > u'9') return ProgramStep::Unusable;
    number = number * 10 + (c - u'0');
  }
  return static_cast<std::int16_t>(number <= highest ? number : ProgramStep::Unusable);
}

}  // namespace

std::int16_t readClockTime(std::u16string_view text) {
  if (text.size() != 5 || text[2] != u':') return ProgramStep::Unusable;
  const std::int16_t hour = readNumber(text.substr(0, 2), HighestHour);
  const std::int16_t minute = readNumber(text.substr(3), HighestMinute);
  if (hour < 0 || minute < 0) return ProgramStep::Unusable;
  return static_cast<std::int16_t>(hour * HourMinutes + minute);
}

std::int16_t readDuration(std::u16string_view text) {
  return readNumber(text, LongestStep);
}

std::int16_t readPower(std::u16string_view text) {
  return readNumber(text, FullPower);
}

}  // namespace editor
