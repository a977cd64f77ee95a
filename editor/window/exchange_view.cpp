#include "editor/window/exchange_view.h"

#include <QtGui/QFontDatabase>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QTableView>

#include "editor/window/record_table.h"

namespace editor {
namespace {

// Sample texts that give the columns their widths: a time, a section, a command's number.
constexpr const char* Samples[] = {"00:00:00_", "Section_", "Command_"};

}  // namespace

ExchangeView::ExchangeView(const workbench::ExchangeRecord& record, QWidget* parent)
    : QSplitter(parent),
      model_(record),
      table_(new QTableView(this)),
      documents_(new QPlainTextEdit(this)) {
  setChildrenCollapsible(false);
  table_->setModel(&model_);
  makeRecordTable(*table_, Samples);
  documents_->setReadOnly(true);
  documents_->setLineWrapMode(QPlainTextEdit::NoWrap);
  documents_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  setStretchFactor(0, 1);
  setStretchFactor(1, 1);
  setSizes({1000, 1000});
  connect(table_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          [this] { showDocuments(); });
}

void ExchangeView::catchUp() {
  model_.catchUp();
  table_->selectRow(0);
  table_->scrollToTop();
}

void ExchangeView::remark(std::size_t exchange, const QString& line, const QString& details) {
  model_.remark(exchange, line, details);
  showDocuments();
}

void ExchangeView::showEvent(QShowEvent* event) {
  QSplitter::showEvent(event);
  if (isStale_) showDocuments();
}

void ExchangeView::showDocuments() {
  isStale_ = !isVisible();
  if (isStale_) return;
  const QModelIndex current = table_->currentIndex();
  documents_->setPlainText(current.isValid() ? model_.shownTextOf(current.row()) : QString());
}

}  // namespace editor
