#pragma once

#include <vector>

#include "host/dialogs/page_description.h"
#include "programs/dimming_program.h"

namespace lamp {

/// The values of a dimming program in the order of its columns, step by step time and power, with
/// their rules; without controls. The start of a clock program's first step is the controller's.
std::vector<host::Binding> programValues(ProgramKind kind);

}  // namespace lamp
