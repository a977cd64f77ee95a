#include "editor/renderers/group_renderer.h"

#include <QtWidgets/QGroupBox>

#include "editor/renderers/mnemonics.h"

namespace editor {

GroupRenderer::GroupRenderer(XCBaseDlg& dialog, host::Control& control, QWidget* parent)
    : ControlRenderer(dialog, control), box_(new QGroupBox(parent)) {}

QWidget& GroupRenderer::widget() {
  return *box_;
}

void GroupRenderer::show(unsigned changes) {
  if (has(changes, host::Change::text)) box_->setTitle(plainCaption(control().text()));
}

}  // namespace editor
