#pragma once

#include <QtWidgets/QWidget>
#include <functional>
#include <string>

#include "editor/history/history_model.h"
#include "workbench/send_journal.h"

class QComboBox;
class QLabel;
class QPlainTextEdit;
class QSplitter;
class QTableView;

namespace editor {

/// What was sent to a device or to all of them, by section, with the document sent beside what was
/// read of the section before.
class HistoryView : public QWidget {
 public:
  /// As many entries as a person goes through.
  static constexpr std::size_t Most = 500;

  HistoryView(const workbench::SendJournal& journal, QWidget* parent);

  /// Shows the sends to a device; an empty id for all. It is read when it is in sight.
  void showDevice(const std::string& id);
  /// Only this section, without the choice of others.
  void fixSection(const std::string& section);
  /// Something was sent.
  void noteSend();
  void retranslate();

  const HistoryModel& model() const { return model_; }
  /// The entry chosen in the list, null for none.
  const workbench::JournalEntry* chosen() const;
  void choose(int row);
  std::function<void()> onChosen;
  /// Called with a text when a part of the journal can't be read.
  std::function<void(const QString& problem)> onProblem;

 protected:
  void showEvent(QShowEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void makeTable();
  void fillSections();
  void reload();
  void showChosen();
  void divide();

  const workbench::SendJournal& journal_;
  HistoryModel model_;
  QSplitter* splitter_;
  QLabel* listTitle_;
  QComboBox* sections_;
  QTableView* table_;
  QLabel* empty_;
  QLabel* sentTitle_;
  QLabel* beforeTitle_;
  QPlainTextEdit* sent_;
  QPlainTextEdit* before_;
  std::string device_;
  bool stale_ = true;
  bool dividedByHand_ = false;
};

}  // namespace editor
