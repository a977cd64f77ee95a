#include "editor/renderers/ip_field.h"

#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtGui/QRegularExpressionValidator>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <algorithm>
#include <utility>

namespace editor {
namespace {

constexpr int MostDigits = 3;

}  // namespace

IpField::IpField(QWidget* parent) : QFrame(parent), parts_() {
  setFrameShape(QFrame::StyledPanel);
  setFrameShadow(QFrame::Sunken);
  setAutoFillBackground(true);
  setBackgroundRole(QPalette::Base);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(4, 1, 4, 1);
  row->setSpacing(0);
  const auto* digits = new QRegularExpressionValidator(QRegularExpression("[0-9]{0,3}"), this);
  for (std::size_t part = 0; part < Parts; ++part) {
    if (part > 0) row->addWidget(new QLabel(".", this));
    auto* edit = new QLineEdit(this);
    edit->setFrame(false);
    edit->setAlignment(Qt::AlignHCenter);
    edit->setValidator(digits);
    edit->setFixedWidth(edit->fontMetrics().horizontalAdvance("00000"));
    edit->setContextMenuPolicy(Qt::NoContextMenu);
    edit->installEventFilter(this);
    connect(edit, &QLineEdit::textEdited, this, [this, part] { edited(part); });
    row->addWidget(edit);
    parts_[part] = edit;
  }
  row->addStretch();
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QString IpField::address() const {
  const bool any = std::any_of(parts_.begin(), parts_.end(),
                               [](const QLineEdit* part) { return !part->text().isEmpty(); });
  if (!any) return {};
  QStringList texts;
  for (const QLineEdit* part : parts_) texts << part->text();
  return texts.join('.');
}

void IpField::showAddress(const QString& address) {
  const QStringList texts = address.split('.');
  for (std::size_t part = 0; part < Parts; ++part) {
    const QString text = texts.value(static_cast<qsizetype>(part));
    const bool beingTyped = hasKeyboard() && parts_[part]->text().isEmpty() && text == "0";
    if (!beingTyped && parts_[part]->text() != text) parts_[part]->setText(text);
  }
}

QList<QWidget*> IpField::parts() const {
  return {parts_.begin(), parts_.end()};
}

bool IpField::hasKeyboard() const {
  return std::any_of(parts_.begin(), parts_.end(),
                     [](const QLineEdit* part) { return part->hasFocus(); });
}

void IpField::goTo(std::size_t part, bool atEnd) {
  parts_[part]->setFocus(Qt::OtherFocusReason);
  if (atEnd)
    parts_[part]->end(false);
  else
    parts_[part]->selectAll();
}

void IpField::edited(std::size_t part) {
  const bool full =
      parts_[part]->text().size() == MostDigits && parts_[part]->cursorPosition() == MostDigits;
  onEdited();
  if (!full || part + 1 == Parts) return;
  goTo(part + 1, false);
  advanced_ = true;
}

bool IpField::key(std::size_t part, QKeyEvent& event) {
  QLineEdit& edit = *parts_[part];
  if (event.matches(QKeySequence::Paste)) {
    const QString text = QGuiApplication::clipboard()->text().trimmed();
    if (!text.contains('.')) return false;
    onPasted(text);
    return true;
  }
  if (event.matches(QKeySequence::Copy) && !edit.hasSelectedText()) {
    QGuiApplication::clipboard()->setText(address());
    return true;
  }
  // The dot that a person types behind a full part, which has led to the next one already.
  const bool dotIsDone = std::exchange(advanced_, false);
  const bool atStart = edit.cursorPosition() == 0 && !edit.hasSelectedText();
  const bool atEnd = edit.cursorPosition() == edit.text().size();
  switch (event.key()) {
    case Qt::Key_Period:
    case Qt::Key_Comma:
    case Qt::Key_Space:
      if (!dotIsDone && part + 1 < Parts && !edit.text().isEmpty()) goTo(part + 1, false);
      return true;
    case Qt::Key_Right:
      if (!atEnd || part + 1 == Parts) return false;
      goTo(part + 1, false);
      return true;
    case Qt::Key_Left:
    case Qt::Key_Backspace:
      if (!atStart || part == 0) return false;
      goTo(part - 1, true);
      return true;
    default:
      return false;
  }
}

bool IpField::eventFilter(QObject* watched, QEvent* event) {
  const auto part = std::find(parts_.begin(), parts_.end(), watched);
  if (part != parts_.end()) {
    const auto index = static_cast<std::size_t>(part - parts_.begin());
    if (event->type() == QEvent::KeyPress && key(index, static_cast<QKeyEvent&>(*event)))
      return true;
    if (event->type() == QEvent::FocusOut && onLeft) onLeft();
  }
  return QFrame::eventFilter(watched, event);
}

}  // namespace editor
