#include "editor/renderers/control_renderer.h"

#include <QtWidgets/QWidget>

#include "editor/qt_text.h"

namespace editor {

ControlRenderer::ControlRenderer(XCBaseDlg& dialog, host::Control& control)
    : dialog_(dialog), control_(control) {}

QList<QWidget*> ControlRenderer::tabStops() {
  return focusWidget() ? QList<QWidget*>{focusWidget()} : QList<QWidget*>{};
}

void ControlRenderer::sync(unsigned changes) {
  if (syncing_) return;
  syncing_ = true;
  if (has(changes, host::Change::state)) {
    const bool enabled = control_.isEnabled();
    widget().setVisible(arranged_ && control_.isVisible());
    // A disabled group box would take its controls along, which have a state of their own.
    if (control_.kind() != host::ControlKind::group) widget().setEnabled(enabled);
    widget().setToolTip(enabled ? QString() : qtText(control_.disabledReason()));
  }
  show(changes);
  syncing_ = false;
}

void ControlRenderer::setArranged(bool arranged) {
  arranged_ = arranged;
  sync(static_cast<unsigned>(host::Change::state));
}

}  // namespace editor
