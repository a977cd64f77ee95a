#include "editor/renderers/ip_renderer.h"

#include <QtCore/QTimer>

#include "editor/qt_text.h"
#include "editor/renderers/ip_field.h"

namespace editor {

IpRenderer::IpRenderer(XCBaseDlg& dialog, host::IpControl& control, QWidget* parent)
    : ControlRenderer(dialog, control), field_(new IpField(parent)) {
  const auto type = [this](const QString& address) {
    perform([&](host::UserInput& input) { input.type(this->control(), hostText(address)); });
  };
  field_->onEdited = [this, type] { type(field_->address()); };
  field_->onPasted = type;
  // Once the keyboard is elsewhere the parts that were left empty show their 0.
  field_->onLeft = [this] {
    QTimer::singleShot(0, this, [this] { sync(static_cast<unsigned>(host::Change::text)); });
  };
}

QWidget& IpRenderer::widget() {
  return *field_;
}
QWidget* IpRenderer::focusWidget() {
  return field_->parts().front();
}
QList<QWidget*> IpRenderer::tabStops() {
  return field_->parts();
}

unsigned IpRenderer::gestureChanges() const {
  return static_cast<unsigned>(host::Change::text);
}

void IpRenderer::show(unsigned changes) {
  if (has(changes, host::Change::text)) field_->showAddress(qtText(control().text()));
}

}  // namespace editor
