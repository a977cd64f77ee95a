#pragma once

#include <QtCore/QString>

#include "editor/front_end/qt_front_end.h"
#include "workbench/workspace.h"

namespace editor {

/// Opens the workspace. A configuration that can't be read is told in a dialog, which offers the
/// version before where there is one; any other failure is told too. False when the program can't
/// go on; @p cause then says why.
bool openAsking(workbench::Workspace& workspace, QtFrontEnd& frontEnd, std::string& cause);

/// When the version before was saved, as the host's dialogs write dates.
QString momentOfKeptCopy(const workbench::ConfigurationStore& store);

}  // namespace editor
