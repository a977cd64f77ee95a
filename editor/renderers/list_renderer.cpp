#include "editor/renderers/list_renderer.h"

#include <QtGui/QKeyEvent>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <algorithm>

#include "editor/qt_text.h"
#include "editor/renderers/list_table_model.h"
#include "editor/renderers/list_view.h"

namespace editor {

using host::Change;
using host::TextId;

ListRenderer::ListRenderer(XCBaseDlg& dialog, host::ListControl& control, QWidget* parent)
    : ControlRenderer(dialog, control),
      list_(control),
      box_(new QWidget(parent)),
      model_(std::make_unique<ListTableModel>(control)),
      view_(new ListView(control, *model_, box_)) {
  auto* column = new QVBoxLayout(box_);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(4);
  if (list_.isMultiSelect()) addFilterRow();
  column->addWidget(view_, 1);

  view_->onSelected = [this] { takeSelection(); };
  view_->onDoubleClicked = [this](std::size_t row) {
    perform([&](host::UserInput& input) { input.doubleClick(list_, row); });
  };
  view_->onKey = [this](host::Key key) {
    perform([&](host::UserInput& input) { input.press(list_, key); });
  };
  view_->onHeader = [this](std::size_t column_) {
    perform([&](host::UserInput& input) { input.sort(list_, column_); });
  };
}

// The view must not ask a model that is gone.
ListRenderer::~ListRenderer() {
  view_->onSelected = {};
  view_->setModel(nullptr);
}

void ListRenderer::addFilterRow() {
  auto* row = new QHBoxLayout;
  filter_ = new QLineEdit(box_);
  filter_->setPlaceholderText(caption(TextId::ListFilter));
  filter_->setAccessibleName(caption(TextId::ListFilter));
  filter_->setClearButtonEnabled(true);
  filter_->installEventFilter(this);
  count_ = new QLabel(box_);
  count_->setForegroundRole(QPalette::PlaceholderText);
  row->addWidget(filter_, 1);
  row->addWidget(count_);
  static_cast<QVBoxLayout*>(box_->layout())->addLayout(row);
  connect(filter_, &QLineEdit::textChanged, this,
          [this](const QString& text) { filterRows(text); });
}

QWidget& ListRenderer::widget() {
  return *box_;
}
QWidget* ListRenderer::focusWidget() {
  return view_;
}

QList<QWidget*> ListRenderer::tabStops() {
  return filter_ ? QList<QWidget*>{filter_, view_} : QList<QWidget*>{view_};
}

unsigned ListRenderer::gestureChanges() const {
  return static_cast<unsigned>(Change::selection);
}

// Enter in the filter goes to the rows found; it must not send the dialog. Escape empties it first.
bool ListRenderer::eventFilter(QObject* watched, QEvent* event) {
  if (watched == filter_ && event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Down) {
      view_->setFocus(Qt::OtherFocusReason);
      return true;
    }
    if (key == Qt::Key_Escape && !filter_->text().isEmpty()) {
      filter_->clear();
      return true;
    }
  }
  return ControlRenderer::eventFilter(watched, event);
}

void ListRenderer::filterRows(const QString& text) {
  model_->setFilter(text.trimmed());
  view_->fitColumns();
  if (hidesSelection()) {
    std::vector<std::size_t> seen;
    for (const std::size_t row : list_.selection())
      if (model_->placeOf(row)) seen.push_back(row);
    perform([&](host::UserInput& input) { input.select(list_, std::move(seen)); });
    filter_->setFocus();
  }
  sync(static_cast<unsigned>(Change::selection));
}

bool ListRenderer::hidesSelection() const {
  if (model_->filter().isEmpty()) return false;
  return std::any_of(list_.selection().begin(), list_.selection().end(),
                     [this](std::size_t row) { return !model_->placeOf(row); });
}

void ListRenderer::takeSelection() {
  perform([this](host::UserInput& input) {
    input.select(list_, model_->rowsIn(view_->selectionModel()->selection()));
  });
}

void ListRenderer::show(unsigned changes) {
  const bool columns = has(changes, Change::items);
  if (columns) model_->columnsChanged();
  if (has(changes, Change::rows)) {
    if (!columns) model_->rowsChanged();
    view_->showSorting();
  } else if (has(changes, Change::cells)) {
    model_->cellsChanged();
  }
  if (columns) view_->holdCaptions();
  if (columns || has(changes, Change::rows)) view_->fitColumns();
  if (columns || has(changes, Change::rows) || has(changes, Change::selection)) showSelection();
}

void ListRenderer::showSelection() {
  // A row that the program selects, to mark a fault in it, must be seen.
  if (hidesSelection()) {
    const QSignalBlocker quiet(filter_);
    filter_->clear();
    model_->setFilter({});
  }
  if (model_->rowsIn(view_->selectionModel()->selection()) != list_.selection())
    view_->showSelection(model_->rangesOf(list_.selection()));
  showCount();
}

void ListRenderer::showCount() {
  if (count_ == nullptr) return;
  count_->setText(caption(TextId::ListSelected, list_.selection().size(), list_.rowCount()));
}

}  // namespace editor
