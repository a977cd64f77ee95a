#include "editor/renderers/combo_renderer.h"

#include <QtCore/QEvent>
#include <QtWidgets/QComboBox>

#include "editor/qt_text.h"

namespace editor {

ComboRenderer::ComboRenderer(XCBaseDlg& dialog, host::ComboControl& control, QWidget* parent)
    : ControlRenderer(dialog, control), combo_(control), box_(new QComboBox(parent)) {
  box_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  box_->setFocusPolicy(Qt::StrongFocus);
  box_->installEventFilter(this);
  connect(box_, &QComboBox::activated, this, [this](int index) {
    perform([this, index](host::UserInput& input) {
      if (index >= 0) input.choose(combo_, static_cast<std::size_t>(index));
    });
  });
}

QWidget& ComboRenderer::widget() {
  return *box_;
}
QWidget* ComboRenderer::focusWidget() {
  return box_;
}

// The wheel scrolls the dialog; it changes a list only when the user is in it.
bool ComboRenderer::eventFilter(QObject* watched, QEvent* event) {
  if (watched == box_ && event->type() == QEvent::Wheel && !box_->hasFocus()) {
    event->ignore();
    return true;
  }
  return ControlRenderer::eventFilter(watched, event);
}

void ComboRenderer::show(unsigned changes) {
  if (has(changes, host::Change::items)) {
    box_->clear();
    for (const host::ComboControl::Item& item : combo_.items()) box_->addItem(qtText(item.text));
  }
  if (has(changes, host::Change::items) || has(changes, host::Change::state))
    box_->setCurrentIndex(combo_.selected() ? static_cast<int>(*combo_.selected()) : -1);
}

}  // namespace editor
