#include "editor/history/history_view.h"

#include <QtGui/QFontDatabase>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QTableView>
#include <QtWidgets/QVBoxLayout>

#include "editor/qt_text.h"
#include "editor/window/record_table.h"

namespace editor {
namespace {

using host::TextId;
using workbench::JournalEntry;

// Sample texts that give the columns their widths.
constexpr const char* Samples[] = {"00/00/0000 00:00:00__", "engineer_", "Main street___",
                                   "Section_", "Done, 00000 ms__"};

QPlainTextEdit* documentPane(QWidget* parent) {
  auto* pane = new QPlainTextEdit(parent);
  pane->setReadOnly(true);
  pane->setLineWrapMode(QPlainTextEdit::NoWrap);
  pane->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  return pane;
}

QWidget* column(QSplitter* parent, QWidget* head, QWidget* body) {
  auto* frame = new QWidget(parent);
  auto* layout = new QVBoxLayout(frame);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(2);
  layout->addWidget(head);
  layout->addWidget(body, 1);
  return frame;
}

}  // namespace

HistoryView::HistoryView(const workbench::SendJournal& journal, QWidget* parent)
    : QWidget(parent),
      journal_(journal),
      splitter_(new QSplitter(Qt::Horizontal, this)),
      listTitle_(new QLabel(this)),
      sections_(new QComboBox(this)),
      table_(new QTableView(this)),
      empty_(new QLabel(table_)),
      sentTitle_(new QLabel(this)),
      beforeTitle_(new QLabel(this)),
      sent_(documentPane(this)),
      before_(documentPane(this)) {
  makeTable();
  splitter_->setChildrenCollapsible(false);
  auto* head = new QWidget(this);
  auto* row = new QHBoxLayout(head);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(listTitle_);
  row->addWidget(sections_, 1);
  listTitle_->hide();
  column(splitter_, head, table_);
  column(splitter_, sentTitle_, sent_);
  column(splitter_, beforeTitle_, before_);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 2, 0, 0);
  layout->addWidget(splitter_);
  retranslate();
  connect(sections_, &QComboBox::currentIndexChanged, this, [this] { reload(); });
  connect(splitter_, &QSplitter::splitterMoved, this, [this] { dividedByHand_ = true; });
  connect(table_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          [this] { showChosen(); });
}

void HistoryView::makeTable() {
  table_->setModel(&model_);
  makeRecordTable(*table_, Samples);
  empty_->setWordWrap(true);
  empty_->setAlignment(Qt::AlignCenter);
  auto* over = new QVBoxLayout(table_);
  over->addWidget(empty_);
}

void HistoryView::showDevice(const std::string& id) {
  if (id == device_ && !stale_) return;
  device_ = id;
  noteSend();
}

void HistoryView::fixSection(const std::string& section) {
  sections_->clear();
  sections_->addItem(QString::fromStdString(section), QString::fromStdString(section));
  sections_->setEnabled(false);
  sections_->hide();
  listTitle_->show();
}

void HistoryView::noteSend() {
  stale_ = true;
  if (isVisible()) reload();
}

void HistoryView::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (stale_) reload();
  divide();
}

void HistoryView::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  divide();
}

// The list gets what its columns need, the documents share the rest.
void HistoryView::divide() {
  if (dividedByHand_) return;
  int list = table_->horizontalHeader()->length() - table_->columnWidth(HistoryModel::resultColumn);
  list += table_->fontMetrics().horizontalAdvance(Samples[HistoryModel::resultColumn]);
  list += 2 * table_->frameWidth() + table_->verticalScrollBar()->sizeHint().width();
  const int rest = std::max(splitter_->width() - list, list) / 2;
  splitter_->setSizes({list, rest, rest});
}

void HistoryView::retranslate() {
  listTitle_->setText(caption(TextId::TabHistory));
  beforeTitle_->setText(caption(TextId::HistoryReadBefore));
  empty_->setText(caption(TextId::HistoryEmpty));
  fillSections();
  model_.retranslate();
  if (model_.rowCount() > 0) choose(0);
  showChosen();
}

// The sections of the pages; what else is sent shows under all.
void HistoryView::fillSections() {
  if (!sections_->isEnabled()) return;
  const QVariant kept = sections_->currentData();
  const QSignalBlocker quiet(sections_);
  sections_->clear();
  sections_->addItem(caption(TextId::HistoryAllSections), QString());
  for (const char* section :
       {"E01", "E02", "E03", "E04", "E05", "E06", "E07", "E08", "E09", "E11", "E13", "E17", "C06"})
    sections_->addItem(section, section);
  sections_->setCurrentIndex(std::max(sections_->findData(kept), 0));
}

void HistoryView::reload() {
  stale_ = false;
  if (table_->isColumnHidden(HistoryModel::deviceColumn) == device_.empty()) {
    table_->setColumnHidden(HistoryModel::deviceColumn, !device_.empty());
    divide();
  }
  const std::string section = sections_->currentData().toString().toStdString();
  std::string problem;
  model_.show(journal_.entries(
      [&](const JournalEntry& entry) {
        return (device_.empty() || entry.deviceId == device_) &&
               (section.empty() || entry.section == section);
      },
      Most, &problem));
  const QString told = problem.empty()
                           ? QString()
                           : caption(TextId::HistoryNotRead, XCBasicString::FromUtf8(problem));
  empty_->setText(told.isEmpty() ? caption(TextId::HistoryEmpty) : told);
  empty_->setVisible(model_.rowCount() == 0);
  if (!told.isEmpty() && onProblem) onProblem(told);
  if (model_.rowCount() > 0) choose(0);
  showChosen();
}

const JournalEntry* HistoryView::chosen() const {
  const QModelIndex current = table_->currentIndex();
  return current.isValid() ? &model_.entryAt(current.row()) : nullptr;
}

void HistoryView::choose(int row) {
  table_->selectRow(row);
}

void HistoryView::showChosen() {
  const JournalEntry* entry = chosen();
  sentTitle_->setText(entry ? caption(TextId::HistorySentBy, entry->command)
                            : caption(TextId::ExchangeSent));
  sent_->setPlainText(entry ? HistoryModel::sentText(*entry) : QString());
  before_->setPlainText(entry ? HistoryModel::beforeText(*entry) : QString());
  if (onChosen) onChosen();
}

}  // namespace editor
