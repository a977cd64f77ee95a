#pragma once

#include <array>
#include <optional>
#include <vector>

#include "editor/program_chart/selected_programs.h"

namespace editor {

/// From the least to the most of what several rows have; one value when they agree.
struct ValueRange {
  int least = 0;
  int most = 0;

  bool isOne() const { return least == most; }
  void include(int value);
  friend bool operator==(const ValueRange&, const ValueRange&) = default;
};

/// A part of the night in which the rows' power does not change.
struct NightSpan {
  int from = 0;  ///< minutes from the beginning of the axis
  int to = 0;
  /// In percent; none where no row's program can tell it.
  std::optional<ValueRange> power;

  friend bool operator==(const NightSpan&, const NightSpan&) = default;
};

/// One step as all rows have it. A range is missing when no row has a usable value.
struct StepSummary {
  /// As typed: minutes after midnight or how long it lasts. In the order of the night, which
  /// begins at noon. The first step of a clock program has none.
  std::optional<ValueRange> time;
  /// Minutes from the beginning of the axis.
  std::optional<ValueRange> start;
  std::optional<ValueRange> power;
  bool someTimeUnusable = false;
  bool somePowerUnusable = false;

  friend bool operator==(const StepSummary&, const StepSummary&) = default;
};

/// The night that programs make. By the clock it lasts from noon to noon, whatever midnight lies
/// between, and a step holds from its start until one with a later start, as the controller does
/// it: of equal starts the step with the higher number holds. By intervals it begins when the lamp
/// switches on, and the last step holds until it switches off.
class NightSteps {
 public:
  NightSteps() = default;
  explicit NightSteps(const SelectedPrograms& programs);

  ProgramTimes times() const { return times_; }
  /// Without programs there is nothing to draw.
  bool empty() const { return spans_.empty(); }
  /// Minutes from the beginning of the axis to its end, whole hours.
  int length() const { return length_; }
  /// Side by side from 0 to length().
  const std::vector<NightSpan>& spans() const { return spans_; }
  const NightSpan* spanAt(int minute) const;
  /// @p number from 1.
  const StepSummary& step(int number) const { return steps_[static_cast<std::size_t>(number - 1)]; }
  /// Whether a value differs among the rows.
  bool differs() const;
  bool hasUnusable() const;

  /// The time of day at a minute of a clock axis, in minutes after midnight.
  static int clockAt(int minute);

  friend bool operator==(const NightSteps&, const NightSteps&) = default;

 private:
  void summarise(const LampProgram& program);

  ProgramTimes times_ = ProgramTimes::clock;
  int length_ = 0;
  std::vector<NightSpan> spans_;
  std::array<StepSummary, ProgramSteps> steps_;
};

}  // namespace editor
