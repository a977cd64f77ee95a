#include "editor/renderers/button_renderer.h"

#include <QtWidgets/QPushButton>

#include "editor/images.h"
#include "editor/renderers/mnemonics.h"

namespace editor {

ButtonRenderer::ButtonRenderer(XCBaseDlg& dialog, CImageButton& control, QWidget* parent)
    : ControlRenderer(dialog, control), model_(control), button_(new QPushButton(parent)) {
  // Only OK answers the Enter key of other controls.
  button_->setAutoDefault(false);
  button_->setDefault(control.id() == host::IdOk);
  connect(button_, &QPushButton::clicked, this,
          [this] { perform([this](host::UserInput& input) { input.click(this->control()); }); });
}

QWidget& ButtonRenderer::widget() {
  return *button_;
}
QWidget* ButtonRenderer::focusWidget() {
  return button_;
}

void ButtonRenderer::show(unsigned changes) {
  if (has(changes, host::Change::text)) button_->setText(plainCaption(control().text()));
  if (!has(changes, host::Change::state)) return;
  const QIcon icon = imageIcon(model_.image());
  button_->setIcon(icon);
  if (!icon.isNull()) button_->setIconSize(imageSize(icon));
}

}  // namespace editor
