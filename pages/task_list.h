#pragma once

#include <vector>

#include "host/ui/controls/list_control.h"

namespace lamp {

/// The columns of the list of tasks: number, start, period, priority, requests.
std::vector<host::ListColumn> taskColumns();

/// The columns of the list of a task's actions: request, sent, stored.
std::vector<host::ListColumn> actionColumns();

}  // namespace lamp
