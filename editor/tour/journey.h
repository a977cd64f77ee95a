#pragma once

#include <vector>

#include "editor/tour/tour.h"

namespace editor {

/// The steps of the tour over the first device of the configuration. Lamps are put into groups
/// where it @p hasLamps, child devices to select; what was sent is looked at where the program
/// @p hasHistory.
std::vector<Tour::Step> journey(bool hasLamps, bool hasHistory);

}  // namespace editor
