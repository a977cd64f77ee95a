#include "editor/renderers/list_table_model.h"

#include <algorithm>
#include <utility>

#include "editor/images.h"
#include "editor/qt_text.h"

namespace editor {

ListTableModel::ListTableModel(const host::ListControl& list) : list_(list) {}

void ListTableModel::setFilter(const QString& text) {
  if (text == filter_) return;
  beginResetModel();
  filter_ = text;
  applyFilter();
  endResetModel();
}

void ListTableModel::rowsChanged() {
  beginResetModel();
  applyFilter();
  endResetModel();
}

void ListTableModel::cellsChanged() {
  if (rowCount() == 0 || columnCount() == 0) return;
  emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

void ListTableModel::columnsChanged() {
  rowsChanged();
}

bool ListTableModel::matches(std::size_t row) const {
  for (std::size_t column = 0; column < list_.columns().size(); ++column) {
    const XCBasicString cell = list_.cell(row, column);
    const QStringView text(cell.c_str(), static_cast<qsizetype>(cell.Length()));
    if (text.contains(filter_, Qt::CaseInsensitive)) return true;
  }
  return false;
}

void ListTableModel::applyFilter() {
  shown_.clear();
  if (filter_.isEmpty()) return;
  for (std::size_t row = 0; row < list_.rowCount(); ++row)
    if (matches(row)) shown_.push_back(static_cast<std::uint32_t>(row));
}

std::size_t ListTableModel::rowAt(int place) const {
  const auto at = static_cast<std::size_t>(place);
  return filter_.isEmpty() ? at : shown_[at];
}

std::optional<int> ListTableModel::placeOf(std::size_t row) const {
  if (filter_.isEmpty())
    return row < list_.rowCount() ? std::optional(static_cast<int>(row)) : std::nullopt;
  const auto found = std::lower_bound(shown_.begin(), shown_.end(), row);
  if (found == shown_.end() || *found != row) return std::nullopt;
  return static_cast<int>(found - shown_.begin());
}

QItemSelection ListTableModel::rangesOf(const std::vector<std::size_t>& rows) const {
  QItemSelection ranges;
  if (columnCount() == 0) return ranges;
  const int lastColumn = columnCount() - 1;
  std::optional<std::pair<int, int>> run;
  const auto close = [&] {
    if (run)
      ranges.append(QItemSelectionRange(index(run->first, 0), index(run->second, lastColumn)));
  };
  for (const std::size_t row : rows) {
    const std::optional<int> place = placeOf(row);
    if (!place) continue;
    if (run && run->second + 1 == *place) {
      run->second = *place;
      continue;
    }
    close();
    run = {*place, *place};
  }
  close();
  return ranges;
}

std::vector<std::size_t> ListTableModel::rowsIn(const QItemSelection& ranges) const {
  std::vector<std::pair<int, int>> runs;
  for (const QItemSelectionRange& range : ranges) runs.emplace_back(range.top(), range.bottom());
  std::sort(runs.begin(), runs.end());
  std::vector<std::size_t> rows;
  int next = 0;
  for (const auto& [top, bottom] : runs)
    for (next = std::max(next, top); next <= bottom; ++next) rows.push_back(rowAt(next));
  return rows;
}

QString ListTableModel::textOf(const std::vector<std::size_t>& rows) const {
  QString text;
  for (const std::size_t row : rows) {
    for (std::size_t column = 0; column < list_.columns().size(); ++column) {
      if (column > 0) text += QLatin1Char('\t');
      text += qtText(list_.cell(row, column)).simplified();
    }
    text += QLatin1Char('\n');
  }
  return text;
}

int ListTableModel::rowCount(const QModelIndex& parent) const {
  if (parent.isValid()) return 0;
  return static_cast<int>(filter_.isEmpty() ? list_.rowCount() : shown_.size());
}

int ListTableModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(list_.columns().size());
}

QVariant ListTableModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rowCount()) return {};
  const std::size_t row = rowAt(index.row());
  if (row >= list_.rowCount()) return {};
  const auto column = static_cast<std::size_t>(index.column());
  switch (role) {
    case Qt::DisplayRole:
      return qtText(list_.cell(row, column));
    case Qt::ForegroundRole:
      if (const auto colour = list_.colour(row)) return qtColour(*colour);
      return {};
    case Qt::DecorationRole:
      if (const auto swatch = column == 0 ? list_.swatch(row) : std::nullopt)
        return swatchIcon(qtColour(*swatch));
      return {};
    default:
      return {};
  }
}

QVariant ListTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal) return {};
  if (role == Qt::TextAlignmentRole) return int(Qt::AlignLeft | Qt::AlignVCenter);
  if (role != Qt::DisplayRole || section >= columnCount()) return {};
  return qtText(list_.columns()[static_cast<std::size_t>(section)].caption);
}

}  // namespace editor
