#pragma once

#include <vector>

#include "editor/tour/tour.h"

namespace editor {

/// The steps of the tour over the first device of the configuration. Lamps are put into groups
/// where it @p hasLamps, child devices to select.
std::vector<Tour::Step> journey(bool hasLamps);

}  // namespace editor
