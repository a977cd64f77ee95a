#pragma once

#include <QtCore/QAbstractTableModel>
#include <QtCore/QHash>
#include <vector>

#include "workbench/wire/exchange_record.h"

namespace editor {

/// The exchanges since the start, the latest one first.
class ExchangeModel : public QAbstractTableModel {
 public:
  explicit ExchangeModel(const workbench::ExchangeRecord& record) : record_(record) {}

  /// Shows every exchange that has joined the record since the last call. One that could not be
  /// shown for want of memory comes with the next.
  void catchUp();
  /// Says something about the exchange with a number.
  void remark(std::size_t exchange, const QString& line, const QString& details);
  /// The captions are to be read again.
  void retranslate();

  const workbench::ExchangeEntry& entryAt(int row) const;
  /// What was sent and received, as documents with one element a line.
  static QString documentsOf(const workbench::ExchangeEntry& entry);
  /// The same for a row, with what was said about the exchange in front.
  QString shownTextOf(int row) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  void append();
  std::size_t placeOf(int row) const { return times_.size() - 1 - static_cast<std::size_t>(row); }

  const workbench::ExchangeRecord& record_;
  struct Remark {
    QString line;
    QString details;
  };
  QHash<std::size_t, Remark> remarks_;  // by the number of the exchange
  std::vector<QString> times_;          // by exchange
};

}  // namespace editor
