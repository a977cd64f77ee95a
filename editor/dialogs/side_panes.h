#pragma once

#include <vector>

#include "editor/dialogs/side_pane.h"
#include "host/dialogs/base_dlg.h"

namespace editor {

/// A pane and the controls that it stands beside. Empty for a dialog that gets none.
struct PlacedPane {
  SidePane* pane = nullptr;
  std::vector<int> beside;
};

/// The pane of a dialog, by its class. It becomes a child of @p parent.
PlacedPane makeSidePane(XCBaseDlg& dialog, QWidget* parent);

}  // namespace editor
