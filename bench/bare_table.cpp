#include "bench/bare_table.h"

#include <algorithm>

#include "editor/qt_text.h"

namespace bench {

namespace {
constexpr const char* Attributes[] = {"nodeId", "Reference", "latitude", "longitude"};
}

BareTable::BareTable(const XmlDocument& reply) {
  for (const XmlDocument::XmlNode& node : reply.Root()->Node("ZelLamp/L04")->Children()) {
    QStringList row;
    for (const char* attribute : Attributes) row << editor::qtText(node.getAttribute(attribute));
    rows_.push_back(std::move(row));
  }
}

int BareTable::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int BareTable::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(std::size(Attributes));
}

QVariant BareTable::data(const QModelIndex& index, int role) const {
  if (role != Qt::DisplayRole) return {};
  return rows_[static_cast<std::size_t>(index.row())][index.column()];
}

QVariant BareTable::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole || orientation != Qt::Horizontal) return {};
  return QString::fromLatin1(Attributes[section]);
}

void BareTable::sort(int column, Qt::SortOrder order) {
  emit layoutAboutToBeChanged();
  std::stable_sort(rows_.begin(), rows_.end(), [&](const QStringList& a, const QStringList& b) {
    return order == Qt::AscendingOrder ? a[column] < b[column] : b[column] < a[column];
  });
  emit layoutChanged();
}

void BareTable::setAll(int column, const QString& text) {
  for (QStringList& row : rows_) row[column] = text;
  emit dataChanged(index(0, column), index(rowCount() - 1, column));
}

}  // namespace bench
