#include "editor/renderers/model_line_edit.h"

#include <QtGui/QClipboard>
#include <QtGui/QContextMenuEvent>
#include <QtGui/QDropEvent>
#include <QtGui/QGuiApplication>
#include <QtGui/QInputMethodEvent>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QMenu>

#include "editor/qt_text.h"

namespace editor {

using host::TextId;

ModelLineEdit::ModelLineEdit(const host::EditControl& edit, QWidget* parent)
    : QLineEdit(parent), edit_(edit) {}

void ModelLineEdit::keyPressEvent(QKeyEvent* event) {
  if (isMasked() && !isReadOnly() && maskedKey(event))
    event->accept();
  else
    QLineEdit::keyPressEvent(event);
}

// True when the key changed the text or would have: Qt must then not see it.
bool ModelLineEdit::maskedKey(QKeyEvent* event) {
  if (event->matches(QKeySequence::Undo) || event->matches(QKeySequence::Redo)) return true;
  if (event->matches(QKeySequence::Paste)) {
    pasteText();
    return true;
  }
  if (event->matches(QKeySequence::Cut)) {
    cutSelection();
    return true;
  }
  if (event->key() == Qt::Key_Backspace || event->key() == Qt::Key_Delete) {
    onErase(event->key() == Qt::Key_Delete);
    return true;
  }
  const bool command = event->modifiers() & (Qt::ControlModifier | Qt::AltModifier);
  if (command || event->text().isEmpty() || !event->text().front().isPrint()) return false;
  onInsert(event->text());
  return true;
}

void ModelLineEdit::inputMethodEvent(QInputMethodEvent* event) {
  if (!isMasked()) return QLineEdit::inputMethodEvent(event);
  if (!isReadOnly() && !event->commitString().isEmpty()) onInsert(event->commitString());
  event->accept();
}

void ModelLineEdit::dropEvent(QDropEvent* event) {
  if (isMasked())
    event->ignore();
  else
    QLineEdit::dropEvent(event);
}

void ModelLineEdit::cutSelection() {
  if (!hasSelectedText()) return;
  copy();
  if (isMasked())
    onErase(true);
  else
    cut();
}

void ModelLineEdit::pasteText() {
  if (isMasked())
    onInsert(QGuiApplication::clipboard()->text());
  else
    paste();
}

// Qt's own menu speaks the language of Qt's translations and pastes past the mask.
void ModelLineEdit::contextMenuEvent(QContextMenuEvent* event) {
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  const bool canChange = isEnabled() && !isReadOnly();
  const bool canCopy = hasSelectedText() && echoMode() == QLineEdit::Normal;
  const auto add = [&](TextId text, bool enabled, auto action) {
    menu->addAction(caption(text), this, action)->setEnabled(enabled);
  };
  add(TextId::MenuCut, canChange && canCopy, [this] { cutSelection(); });
  add(TextId::MenuCopy, canCopy, [this] { copy(); });
  add(TextId::MenuPaste, canChange && !QGuiApplication::clipboard()->text().isEmpty(),
      [this] { pasteText(); });
  menu->addSeparator();
  add(TextId::MenuSelectAll, !text().isEmpty(), [this] { selectAll(); });
  menu->popup(event->globalPos());
}

}  // namespace editor
