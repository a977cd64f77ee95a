#pragma once

#include <QtCore/QString>

#include "editor/program_chart/night_steps.h"

namespace editor {

// A night in words, for those who can't see its chart and for its tooltips.

/// "hh:mm".
QString clockWords(int minutesAfterMidnight);
/// "70 %", or "40 to 60 %" where rows differ.
QString powerWords(const ValueRange& power);

/// One step, from 1: its time, its power, and what of them can't be used.
QString stepWords(const NightSteps& night, int number);
/// All steps, a line each.
QString nightWords(const NightSteps& night);
/// The first step with a value that can't be used, and which it is; empty when there is none.
QString unusableWords(const NightSteps& night);
/// What holds at a minute of the axis: the time and the power.
QString momentWords(const NightSteps& night, int minute);

}  // namespace editor
