#pragma once

#include "host/dialogs/base_dlg.h"
#include "workbench/json_writer.h"

namespace automation {

using workbench::JsonWriter;

/// Writes the members "controls" and "focus": everything that a dialog shows.
void describeDialog(JsonWriter& out, const XCBaseDlg& dialog);

/// What a command names a control by: its number, or its name where it has none.
void writeControlId(JsonWriter& out, const host::Control& control);

}  // namespace automation
