#pragma once

#include <vector>

#include "editor/tour/tour.h"

namespace editor {

/// The steps of the tour over the first device of the configuration.
std::vector<Tour::Step> journey();

}  // namespace editor
