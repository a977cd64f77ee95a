#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "editor/program_chart/lamp_program.h"

namespace editor {

/// The programs of the rows that are selected, each different one once: a hundred thousand rows
/// have few, and what is typed for all of them changes those few.
class SelectedPrograms {
 public:
  /// Forgets all rows.
  void clear(ProgramTimes times);
  /// Takes one row's program. Call seal() behind the last one.
  void add(const LampProgram& program);
  /// Drops the programs that stand more than once.
  void seal();

  /// Gives a step, from 1, of every row the time or the power of a text.
  void setTime(int step, std::u16string_view text);
  void setPower(int step, std::u16string_view text);

  ProgramTimes times() const { return times_; }
  bool empty() const { return programs_.empty(); }
  /// In no particular order.
  const std::vector<LampProgram>& different() const { return programs_; }

 private:
  ProgramTimes times_ = ProgramTimes::clock;
  std::vector<LampProgram> programs_;
};

}  // namespace editor
