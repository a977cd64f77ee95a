#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace editor {

/// How a dimming program states the times of its steps: when they begin, of which the first begins
/// when the lamp switches on, or how long they last.
enum class ProgramTimes { clock, interval };

/// One step of a program as a chart sees it.
struct ProgramStep {
  /// Stands for what is missing, no number, or out of its range.
  static constexpr std::int16_t Unusable = -1;

  std::int16_t minutes = Unusable;  ///< after midnight, or how long the step lasts
  std::int16_t power = Unusable;    ///< in percent

  friend auto operator<=>(const ProgramStep&, const ProgramStep&) = default;
};

constexpr int ProgramSteps = 4;
/// The steps of one row, by their number less one.
using LampProgram = std::array<ProgramStep, ProgramSteps>;

// From the texts of cells and edits; Unusable for a text that is none of the kind.

/// "hh:mm", 00:00 to 23:59, as minutes after midnight.
std::int16_t readClockTime(std::u16string_view text);
/// 0 to 999 minutes.
std::int16_t readDuration(std::u16string_view text);
/// 0 to 100 percent.
std::int16_t readPower(std::u16string_view text);

inline std::int16_t readStepTime(ProgramTimes times, std::u16string_view text) {
  return times == ProgramTimes::clock ? readClockTime(text) : readDuration(text);
}

}  // namespace editor
