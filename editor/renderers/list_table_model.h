#pragma once

#include <QtCore/QAbstractTableModel>
#include <QtCore/QItemSelection>
#include <optional>
#include <vector>

#include "host/ui/controls/list_control.h"

namespace editor {

/// The rows of a list control as a Qt model: it keeps no copy of them, only, while a filter is on,
/// which of them are shown. A "place" is a row of this model, a "row" one of the list control.
class ListTableModel : public QAbstractTableModel {
 public:
  explicit ListTableModel(const host::ListControl& list);

  /// Shows only rows that have a cell with this text in it, whatever the case; all for an empty
  /// text.
  void setFilter(const QString& text);
  const QString& filter() const { return filter_; }

  /// Rows came, went, or changed their order.
  void rowsChanged();
  void cellsChanged();
  void columnsChanged();

  std::size_t rowAt(int place) const;
  /// The place of a row; none when the filter hides it.
  std::optional<int> placeOf(std::size_t row) const;
  /// Rows of the list, ascending, as ranges of whole lines. Hidden rows are left out.
  QItemSelection rangesOf(const std::vector<std::size_t>& rows) const;
  /// The rows, ascending, that ranges of lines cover.
  std::vector<std::size_t> rowsIn(const QItemSelection& ranges) const;

  /// Rows as lines of cells separated by tabs.
  QString textOf(const std::vector<std::size_t>& rows) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  bool matches(std::size_t row) const;
  void applyFilter();

  const host::ListControl& list_;
  QString filter_;
  std::vector<std::uint32_t> shown_;  // the rows at the places, while there is a filter
};

}  // namespace editor
