#include "editor/window/banner.h"

#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStyle>

namespace editor {
namespace {

// Readable on light and on dark desktops, whose own colours know no warning.
constexpr QColor Ground(255, 236, 179);
constexpr QColor Ink(60, 45, 0);

}  // namespace

Banner::Banner(QWidget* parent)
    : QFrame(parent),
      icon_(new QLabel(this)),
      text_(new QLabel(this)),
      button_(new QPushButton(this)) {
  QPalette colours = palette();
  colours.setColor(QPalette::Window, Ground);
  colours.setColor(QPalette::WindowText, Ink);
  setPalette(colours);
  button_->setPalette(parent->palette());
  setAutoFillBackground(true);
  const int size = style()->pixelMetric(QStyle::PM_SmallIconSize);
  icon_->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(size));
  text_->setTextFormat(Qt::PlainText);
  text_->setWordWrap(true);
  text_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(10, 6, 10, 6);
  row->setSpacing(10);
  row->addWidget(icon_);
  row->addWidget(text_, 1);
  row->addWidget(button_);
  hide();
}

void Banner::showText(const QString& text, const QString& button) {
  text_->setText(text);
  button_->setText(button);
  button_->setVisible(!button.isEmpty());
  setVisible(!text.isEmpty());
}

QString Banner::text() const {
  return text_->text();
}

}  // namespace editor
