#include "editor/program_chart/night_steps.h"

#include <algorithm>

#include "editor/program_chart/power_coverage.h"

namespace editor {
namespace {

constexpr int Hour = 60;
constexpr int Day = 24 * Hour;
constexpr int Noon = 12 * Hour;
// An axis of intervals shows a long night also where the steps are over soon.
constexpr int LeastIntervalAxis = 12 * Hour;

/// Where the steps of one program begin, in minutes of the axis; Unusable where that can't be told.
using Starts = std::array<int, ProgramSteps>;

Starts startsOf(const LampProgram& program, ProgramTimes times) {
  Starts starts{};
  for (std::size_t step = 1; step < starts.size(); ++step) {
    if (times == ProgramTimes::clock) {
      const int minutes = program[step].minutes;
      starts[step] = minutes < 0 ? ProgramStep::Unusable : (minutes + Day - Noon) % Day;
    } else {
      const int length = program[step - 1].minutes;
      const bool told = length >= 0 && starts[step - 1] >= 0;
      starts[step] = told ? starts[step - 1] + length : ProgramStep::Unusable;
    }
  }
  return starts;
}

int lastEnd(const LampProgram& program) {
  int end = 0;
  for (const ProgramStep& step : program) end += std::max<int>(step.minutes, 0);
  return end;
}

// With an hour behind the longest program, where its last step holds on.
int axisLength(const SelectedPrograms& programs) {
  if (programs.times() == ProgramTimes::clock) return Day;
  int end = 0;
  for (const LampProgram& program : programs.different()) end = std::max(end, lastEnd(program));
  return std::max(LeastIntervalAxis, (end + Hour - 1) / Hour * Hour + Hour);
}

// Where a step ends: where the next one of the night begins; with an interval that can't be told
// the step itself can't be drawn, except for the last, which holds in any case.
std::optional<int> endOf(std::size_t step, const LampProgram& program, const Starts& starts,
                         ProgramTimes times, int length) {
  if (times == ProgramTimes::interval) {
    if (step + 1 == starts.size()) return length;
    if (program[step].minutes < 0) return std::nullopt;
    return starts[step + 1];
  }
  int end = length;
  for (std::size_t other = 0; other < starts.size(); ++other) {
    if (starts[other] == starts[step] && other > step) return starts[step];
    if (starts[other] > starts[step]) end = std::min(end, starts[other]);
  }
  return end;
}

void cover(PowerCoverage& coverage, const LampProgram& program, ProgramTimes times, int length) {
  const Starts starts = startsOf(program, times);
  for (std::size_t step = 0; step < starts.size(); ++step) {
    if (starts[step] < 0 || program[step].power < 0) continue;
    if (const auto end = endOf(step, program, starts, times, length))
      coverage.add(starts[step], *end, program[step].power);
  }
}

void include(std::optional<ValueRange>& range, int value) {
  if (range)
    range->include(value);
  else
    range = ValueRange{value, value};
}

}  // namespace

void ValueRange::include(int value) {
  least = std::min(least, value);
  most = std::max(most, value);
}

NightSteps::NightSteps(const SelectedPrograms& programs) : times_(programs.times()) {
  if (programs.empty()) return;
  length_ = axisLength(programs);
  PowerCoverage coverage(length_);
  for (const LampProgram& program : programs.different()) {
    cover(coverage, program, times_, length_);
    summarise(program);
  }
  spans_ = coverage.spans();
  if (times_ == ProgramTimes::interval) return;
  for (StepSummary& step : steps_)
    if (step.time) step.time = ValueRange{clockAt(step.start->least), clockAt(step.start->most)};
}

void NightSteps::summarise(const LampProgram& program) {
  const Starts starts = startsOf(program, times_);
  for (std::size_t i = 0; i < steps_.size(); ++i) {
    StepSummary& step = steps_[i];
    if (starts[i] >= 0) include(step.start, starts[i]);
    if (program[i].power >= 0)
      include(step.power, program[i].power);
    else
      step.somePowerUnusable = true;
    if (times_ == ProgramTimes::clock && i == 0) continue;
    if (program[i].minutes >= 0)
      include(step.time, program[i].minutes);
    else
      step.someTimeUnusable = true;
  }
}

const NightSpan* NightSteps::spanAt(int minute) const {
  const auto found = std::find_if(spans_.begin(), spans_.end(), [minute](const NightSpan& span) {
    return span.from <= minute && minute < span.to;
  });
  return found == spans_.end() ? nullptr : &*found;
}

bool NightSteps::differs() const {
  return std::any_of(steps_.begin(), steps_.end(), [](const StepSummary& step) {
    return (step.time && !step.time->isOne()) || (step.power && !step.power->isOne());
  });
}

bool NightSteps::hasUnusable() const {
  return std::any_of(steps_.begin(), steps_.end(), [](const StepSummary& step) {
    return step.someTimeUnusable || step.somePowerUnusable;
  });
}

int NightSteps::clockAt(int minute) {
  return (minute + Noon) % Day;
}

}  // namespace editor
