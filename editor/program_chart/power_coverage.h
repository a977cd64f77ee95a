#pragma once

#include <array>
#include <vector>

#include "editor/program_chart/night_steps.h"

namespace editor {

/// Which powers occur at each minute of a night. Adding a program's step costs the same however
/// long it is, so that a hundred thousand different programs are no matter.
class PowerCoverage {
 public:
  explicit PowerCoverage(int minutes) : minutes_(minutes) {}

  /// A row burns at @p power percent from one minute up to, but not at, another. What lies beyond
  /// the night is left out.
  void add(int from, int to, int power);

  /// The whole night in parts with the same least and most power.
  std::vector<NightSpan> spans() const;

 private:
  static constexpr std::size_t Powers = 101;

  int minutes_;
  /// By power: how many rows more or fewer have it from a minute on. Empty while none has it.
  std::array<std::vector<int>, Powers> changes_;
};

}  // namespace editor
