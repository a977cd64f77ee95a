#include "tests/editor/support/shown_texts.h"

#include <QtGui/QAction>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>

namespace support {
namespace {

void collectRows(const QAbstractItemModel& model, const QModelIndex& parent, QStringList& texts) {
  for (int row = 0; row < model.rowCount(parent); ++row)
    for (int column = 0; column < model.columnCount(parent); ++column) {
      const QModelIndex index = model.index(row, column, parent);
      for (const int role : {Qt::DisplayRole, Qt::ToolTipRole})
        texts << index.data(role).toString();
      if (column == 0) collectRows(model, index, texts);
    }
}

void collectOwn(const QWidget& widget, QStringList& texts) {
  texts << widget.windowTitle() << widget.toolTip() << widget.accessibleName();
  for (const QAction* action : widget.actions()) texts << action->text() << action->toolTip();
  if (const auto* label = qobject_cast<const QLabel*>(&widget)) texts << label->text();
  if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) texts << button->text();
  if (const auto* edit = qobject_cast<const QLineEdit*>(&widget)) texts << edit->displayText();
  if (const auto* combo = qobject_cast<const QComboBox*>(&widget)) texts << combo->currentText();
  if (const auto* text = qobject_cast<const QPlainTextEdit*>(&widget)) texts << text->toPlainText();
  if (const auto* view = qobject_cast<const QAbstractItemView*>(&widget))
    if (view->model() != nullptr) collectRows(*view->model(), {}, texts);
}

}  // namespace

QStringList shownTexts(const QWidget& widget) {
  QStringList texts;
  collectOwn(widget, texts);
  for (const QWidget* child : widget.findChildren<QWidget*>()) collectOwn(*child, texts);
  return texts;
}

}  // namespace support
