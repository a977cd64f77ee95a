#include "editor/renderers/radio_renderer.h"

#include <QtWidgets/QRadioButton>

#include "editor/images.h"
#include "editor/renderers/mnemonics.h"

namespace editor {

RadioRenderer::RadioRenderer(XCBaseDlg& dialog, host::CheckControl& control, QWidget* parent)
    : ControlRenderer(dialog, control), radio_(control), button_(new QRadioButton(parent)) {
  button_->setAutoExclusive(false);
  connect(button_, &QRadioButton::clicked, this,
          [this] { perform([this](host::UserInput& input) { input.click(radio_); }); });
}

QWidget& RadioRenderer::widget() {
  return *button_;
}
QWidget* RadioRenderer::focusWidget() {
  return button_;
}

void RadioRenderer::show(unsigned changes) {
  if (has(changes, host::Change::text)) button_->setText(plainCaption(control().text()));
  if (!has(changes, host::Change::state)) return;
  button_->setChecked(radio_.isOn());
  const QIcon icon = radio_.swatch() ? swatchIcon(qtColour(*radio_.swatch())) : QIcon();
  button_->setIcon(icon);
  if (!icon.isNull()) button_->setIconSize(imageSize(icon));
}

}  // namespace editor
