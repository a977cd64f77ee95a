#include "editor/renderers/image_renderer.h"

#include <QtWidgets/QLabel>

#include "editor/images.h"

namespace editor {

ImageRenderer::ImageRenderer(XCBaseDlg& dialog, host::ImageControl& control, QWidget* parent)
    : ControlRenderer(dialog, control), model_(control), label_(new QLabel(parent)) {}

QWidget& ImageRenderer::widget() {
  return *label_;
}

void ImageRenderer::show(unsigned changes) {
  if (!has(changes, host::Change::state)) return;
  const QIcon icon = imageIcon(model_.image());
  label_->setPixmap(icon.pixmap(imageSize(icon), label_->devicePixelRatioF()));
}

}  // namespace editor
