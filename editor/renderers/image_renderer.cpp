#include "editor/renderers/image_renderer.h"

#include <QtWidgets/QLabel>

#include "editor/images.h"

namespace editor {

ImageRenderer::ImageRenderer(XCBaseDlg& dialog, host::Control& control, QWidget* parent)
    : ControlRenderer(dialog, control), label_(new QLabel(parent)) {}

QWidget& ImageRenderer::widget() {
  return *label_;
}

void ImageRenderer::show(unsigned changes) {
  if (!has(changes, host::Change::state)) return;
  const QIcon icon = imageIcon(control().image());
  label_->setPixmap(icon.pixmap(imageSize(icon), label_->devicePixelRatioF()));
}

}  // namespace editor
