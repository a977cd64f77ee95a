#pragma once

#include "host/dialogs/page_description.h"
#include "host/ui/control_spec.h"

// What the scheduled tasks page edits: tasks, and in each of them its actions.

class XCBaseDlg;

namespace lamp {

namespace task_control {
enum Id {
  TasksGroup = host::privateId(0),
  Tasks,
  NewTask,
  DeleteTask,
  ParametersGroup,
  NumberLabel,
  Number,
  StartLabel,
  Start,
  PriorityLabel,
  Priority,
  FillHolesLabel,
  FillHoles,
  PeriodGroup,
  MonthsLabel,
  DaysLabel,
  HoursLabel,
  MinutesLabel,
  Months,
  Days,
  Hours,
  Minutes,
  ActionsGroup,
  Actions,
  NewAction,
  DeleteAction,
  RequestLabel,
  Request,
  SendLabel,
  Send,
  StoreLabel,
  Store,
};
}  // namespace task_control

/// Section L02 as E02. Its rows are the tasks that are not to be deleted.
const host::PageDescription& taskTable();

/// Fills the drop-down lists of tasks and of actions.
void fillTaskChoices(const XCBaseDlg& page);

}  // namespace lamp
