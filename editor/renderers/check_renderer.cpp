#include "editor/renderers/check_renderer.h"

#include <QtWidgets/QCheckBox>

#include "editor/renderers/mnemonics.h"

namespace editor {

CheckRenderer::CheckRenderer(XCBaseDlg& dialog, host::CheckControl& control, QWidget* parent)
    : ControlRenderer(dialog, control), check_(control), box_(new QCheckBox(parent)) {
  connect(box_, &QCheckBox::clicked, this, [this](bool on) {
    perform([this, on](host::UserInput& input) { input.check(check_, on); });
  });
}

QWidget& CheckRenderer::widget() {
  return *box_;
}
QWidget* CheckRenderer::focusWidget() {
  return box_;
}

void CheckRenderer::show(unsigned changes) {
  if (has(changes, host::Change::text)) box_->setText(plainCaption(control().text()));
  if (has(changes, host::Change::state)) box_->setChecked(check_.isOn());
}

}  // namespace editor
