#include "editor/renderers/list_view.h"

#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QMenu>
#include <algorithm>

#include "editor/qt_text.h"
#include "editor/renderers/list_table_model.h"

namespace editor {
namespace {

constexpr int RowsShown = 12;
constexpr int LeastRowsShown = 4;
constexpr int NaturalWidth = 480;
constexpr int WidestByCaptions = 720;

}  // namespace

ListView::ListView(const host::ListControl& list, ListTableModel& model, QWidget* parent)
    : QTableView(parent), list_(list), model_(model) {
  setModel(&model);
  setSelectionBehavior(SelectRows);
  setSelectionMode(list.isMultiSelect() ? ExtendedSelection : SingleSelection);
  setEditTriggers(NoEditTriggers);
  setTabKeyNavigation(false);
  setShowGrid(false);
  setAlternatingRowColors(true);
  setWordWrap(false);
  setVerticalScrollMode(ScrollPerPixel);
  const int height = fontMetrics().height() + 6;
  verticalHeader()->hide();
  verticalHeader()->setMinimumSectionSize(height);
  verticalHeader()->setDefaultSectionSize(height);
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setSectionsClickable(true);
  horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  setMinimumHeight(horizontalHeader()->sizeHint().height() + LeastRowsShown * height);
  connect(horizontalHeader(), &QHeaderView::sectionClicked, this,
          [this](int column) { onHeader(static_cast<std::size_t>(column)); });
  connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this] {
    if (!fitting_) draggedColumns_ = true;
  });
}

void ListView::showSelection(const QItemSelection& ranges) {
  showing_ = true;
  selectionModel()->select(ranges, QItemSelectionModel::ClearAndSelect);
  if (!ranges.isEmpty()) {
    // Keys start from a selected row, and the program shows rows by selecting them.
    const QModelIndex first = ranges.first().topLeft();
    if (!ranges.contains(currentIndex()))
      selectionModel()->setCurrentIndex(first, QItemSelectionModel::NoUpdate);
    scrollTo(ranges.contains(currentIndex()) ? currentIndex() : first);
  }
  showing_ = false;
}

void ListView::fitColumns() {
  if (draggedColumns_ || list_.columns().empty()) return;
  fitting_ = true;
  const std::vector<int> widths = list_.columnWidths(viewport()->width());
  for (std::size_t column = 0; column < widths.size(); ++column)
    setColumnWidth(static_cast<int>(column), widths[column]);
  fitting_ = false;
}

void ListView::showSorting() {
  const auto sorted = list_.sorted();
  horizontalHeader()->setSortIndicatorShown(sorted.has_value());
  if (sorted)
    horizontalHeader()->setSortIndicator(
        static_cast<int>(sorted->column),
        sorted->descending ? Qt::DescendingOrder : Qt::AscendingOrder);
}

void ListView::holdCaptions() {
  int shares = 0;
  for (const host::ListColumn& column : list_.columns()) shares += column.share;
  int width = 0;
  for (int column = 0; column < model_.columnCount(); ++column) {
    const int needed = horizontalHeader()->sectionSizeHint(column);
    width = std::max(width, needed * shares / list_.columns()[std::size_t(column)].share);
  }
  const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent) + 2 * frameWidth();
  setMinimumWidth(std::min(width, WidestByCaptions) + bar);
}

QSize ListView::sizeHint() const {
  return {std::max(minimumWidth(), NaturalWidth),
          horizontalHeader()->sizeHint().height() + 2 * frameWidth() +
              RowsShown * verticalHeader()->defaultSectionSize()};
}

void ListView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
  QTableView::selectionChanged(selected, deselected);
  if (showing_) return;
  selectionPending_ = true;
  if (!buttonDown_) endGesture();
}

void ListView::endGesture() {
  buttonDown_ = false;
  if (!selectionPending_) return;
  selectionPending_ = false;
  if (onSelected) onSelected();
}

void ListView::mousePressEvent(QMouseEvent* event) {
  buttonDown_ = true;
  QTableView::mousePressEvent(event);
}

void ListView::mouseReleaseEvent(QMouseEvent* event) {
  QTableView::mouseReleaseEvent(event);
  endGesture();
}

void ListView::mouseDoubleClickEvent(QMouseEvent* event) {
  QTableView::mouseDoubleClickEvent(event);
  endGesture();
  const QModelIndex index = indexAt(event->position().toPoint());
  if (event->button() == Qt::LeftButton && index.isValid())
    onDoubleClicked(model_.rowAt(index.row()));
}

void ListView::focusOutEvent(QFocusEvent* event) {
  QTableView::focusOutEvent(event);
  endGesture();
}

void ListView::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Copy)) {
    copyRows();
    return;
  }
  switch (event->key()) {
    case Qt::Key_Delete:
      return onKey(host::Key::deleteKey);
    case Qt::Key_Insert:
      return onKey(host::Key::insert);
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Escape:
      event->ignore();  // the dialog's
      return;
    default:
      QTableView::keyPressEvent(event);
  }
}

void ListView::copyRows() const {
  QGuiApplication::clipboard()->setText(model_.textOf(list_.selection()));
}

// What the keys do, for those who don't know them. The button was let go outside of the list's
// sight: the gesture that selected the row under it ends here.
void ListView::contextMenuEvent(QContextMenuEvent* event) {
  endGesture();
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  const auto add = [&](host::TextId text, QKeySequence::StandardKey key, bool enabled,
                       auto action) {
    QAction* item = menu->addAction(caption(text), this, action);
    item->setShortcut(key);
    item->setEnabled(enabled);
  };
  add(host::TextId::MenuCopy, QKeySequence::Copy, !list_.selection().empty(),
      [this] { copyRows(); });
  if (list_.isMultiSelect())
    add(host::TextId::MenuSelectAll, QKeySequence::SelectAll, model_.rowCount() > 0,
        [this] { selectAll(); });
  menu->popup(event->globalPos());
}

void ListView::resizeEvent(QResizeEvent* event) {
  QTableView::resizeEvent(event);
  fitColumns();
}

}  // namespace editor
