#pragma once

#include <QtCore/QAbstractTableModel>
#include <vector>

#include "workbench/journal_entry.h"

namespace editor {

/// Entries of the journal, the latest first.
class HistoryModel : public QAbstractTableModel {
 public:
  enum Column { timeColumn, userColumn, deviceColumn, sectionColumn, resultColumn };

  void show(std::vector<workbench::JournalEntry> entries);
  /// The captions are to be read again.
  void retranslate();

  const workbench::JournalEntry& entryAt(int row) const {
    return entries_[static_cast<std::size_t>(row)];
  }
  /// A moment of the journal in the local time, as the host's dialogs write dates.
  static QString momentOf(const std::string& when);
  /// What was sent, with a file's name and digest in place of its content. The error stands in
  /// front of it, and what it changed of what was read before.
  static QString sentText(const workbench::JournalEntry& entry);
  /// What was read of the section before, or that nothing was.
  static QString beforeText(const workbench::JournalEntry& entry);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  std::vector<workbench::JournalEntry> entries_;
};

}  // namespace editor
