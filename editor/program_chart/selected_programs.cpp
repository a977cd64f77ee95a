#include "editor/program_chart/selected_programs.h"

#include <algorithm>

namespace editor {
namespace {

ProgramStep& stepOf(LampProgram& program, int step) {
  return program[static_cast<std::size_t>(step - 1)];
}

}  // namespace

void SelectedPrograms::clear(ProgramTimes times) {
  times_ = times;
  programs_.clear();
}

// Neighbours mostly have the same program: they are not even kept until seal().
void SelectedPrograms::add(const LampProgram& program) {
  if (programs_.empty() || programs_.back() != program) programs_.push_back(program);
}

void SelectedPrograms::seal() {
  std::sort(programs_.begin(), programs_.end());
  programs_.erase(std::unique(programs_.begin(), programs_.end()), programs_.end());
}

void SelectedPrograms::setTime(int step, std::u16string_view text) {
  const std::int16_t minutes = readStepTime(times_, text);
  for (LampProgram& program : programs_) stepOf(program, step).minutes = minutes;
  seal();
}

void SelectedPrograms::setPower(int step, std::u16string_view text) {
  const std::int16_t power = readPower(text);
  for (LampProgram& program : programs_) stepOf(program, step).power = power;
  seal();
}

}  // namespace editor
