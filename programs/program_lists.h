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

/// The list of a calendar's day types. Its rows are the elements with the programs, which carry no
/// identity: sorting by the first column leaves them as they are.
struct CNodesListCtrl2 {
  static std::vector<host::ListColumn> Columns(lamp::ProgramKind kind);
};

/// The list of the calendars in the store: a row for each, with the text that the dialog sets and
/// whether it can be used as its data.
struct CFilesListCtrl {
  static std::vector<host::ListColumn> Columns();
};
