#pragma once

#include <QtCore/QAbstractTableModel>
#include <QtCore/QStringList>
#include <vector>

#include "host/xml/xml_document.h"

namespace bench {

/// A node table as the least that a program needs to show it: one text a cell.
class BareTable : public QAbstractTableModel {
 public:
  explicit BareTable(const XmlDocument& reply);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  void sort(int column, Qt::SortOrder order) override;
  /// Puts one text into all rows of a column.
  void setAll(int column, const QString& text);

 private:
  std::vector<QStringList> rows_;
};

}  // namespace bench
