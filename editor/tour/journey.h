#pragma once

#include <vector>

#include "editor/tour/tour.h"

namespace editor {

/// Whether the tour can put lamps of @p device into its groups: there are some, and no tour before
/// made the groups.
bool canGroupLamps(const XmlDocument::XmlNode& device);

/// The steps of the tour over the first device of the configuration. Lamps are put into groups
/// where it @p groupsLamps; what was sent is looked at where the program
/// @p hasHistory.
std::vector<Tour::Step> journey(bool groupsLamps, bool hasHistory);

}  // namespace editor
