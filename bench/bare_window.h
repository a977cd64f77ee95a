#pragma once

#include <string>

#include "bench/table_window.h"

namespace bench {

/// Reads a node table, shows it in a bare table view and hands it to @p then.
void openBareWindow(const std::string& xml, const AtWindow& then);

}  // namespace bench
