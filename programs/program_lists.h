#pragma once

#include <vector>

#include "host/ui/controls/list_control.h"
#include "programs/dimming_program.h"

/// The list of a controller's lamp nodes with their programs.
struct CNodesListCtrl {
  static std::vector<host::ListColumn> Columns(lamp::ProgramKind kind);
};

/// The list of the groups that the configuration holds for a controller. It has the columns of the
/// nodes, whose texts the page sets; it is sorted by the first one alone.
struct CGroupsListCtrl {
  static std::vector<host::ListColumn> Columns();
};
