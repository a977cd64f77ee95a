#pragma once

#include <memory>

#include "editor/renderers/control_renderer.h"

namespace editor {

/// The renderer of a control, by its kind; its widget becomes a child of @p parent.
std::unique_ptr<ControlRenderer> makeRenderer(XCBaseDlg& dialog, host::Control& control,
                                              QWidget* parent);

/// Whether there is a renderer for a kind.
bool hasRenderer(host::ControlKind kind);

}  // namespace editor
