#pragma once

#include "workbench/page_values.h"

namespace workbench {

/// The periodic tasks of a section as PageValues has them; empty for a section that isn't theirs.
std::string tasksIn(const XmlDocument::XmlNode& section);

/// The periodic tasks that a page lists, likewise; empty for a page that isn't theirs.
std::string tasksOn(const XCBaseDlg& page);

/// Makes the periodic tasks of a page those of @p section, by its user's gestures: tasks that the
/// section lacks are deleted, those that the page lacks are added, the others are changed with
/// their actions. The page numbers the tasks that are added itself; one that gets another number
/// than in the section is told. Counted are attributes, and a deleted task as one. A page without
/// a list of tasks stays as it is.
PutReport putTasks(XCBaseDlg& page, const XmlDocument::XmlNode& section);

}  // namespace workbench
