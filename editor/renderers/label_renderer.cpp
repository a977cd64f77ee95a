#include "editor/renderers/label_renderer.h"

#include <QtWidgets/QLabel>

#include "editor/qt_text.h"

namespace editor {
namespace {

// Longer texts are sentences: they are broken into lines rather than widen the dialog.
constexpr int LongestLine = 70;

}  // namespace

LabelRenderer::LabelRenderer(XCBaseDlg& dialog, host::Control& control, QWidget* parent)
    : ControlRenderer(dialog, control), label_(new QLabel(parent)) {
  label_->setTextFormat(Qt::PlainText);
}

QWidget& LabelRenderer::widget() {
  return *label_;
}

void LabelRenderer::show(unsigned changes) {
  if (!has(changes, host::Change::text)) return;
  const QString text = qtText(control().text());
  label_->setWordWrap(text.size() > LongestLine);
  label_->setText(text);
}

}  // namespace editor
