#include "editor/window/record_table.h"

#include <QtWidgets/QHeaderView>

namespace editor {

void makeRecordTable(QTableView& table, std::span<const char* const> samples) {
  table.setSelectionBehavior(QAbstractItemView::SelectRows);
  table.setSelectionMode(QAbstractItemView::SingleSelection);
  table.setShowGrid(false);
  table.setWordWrap(false);
  table.setTabKeyNavigation(false);
  table.verticalHeader()->hide();
  table.verticalHeader()->setDefaultSectionSize(table.fontMetrics().height() + 6);
  table.horizontalHeader()->setHighlightSections(false);
  table.horizontalHeader()->setStretchLastSection(true);
  table.horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  int column = 0;
  for (const char* sample : samples)
    table.setColumnWidth(column++, table.fontMetrics().horizontalAdvance(sample));
}

}  // namespace editor
