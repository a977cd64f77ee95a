#pragma once

#include <QtWidgets/QSplitter>

#include "editor/window/exchange_model.h"

class QPlainTextEdit;
class QTableView;

namespace editor {

/// The exchanges with controllers on the left, the documents of the one selected on the right.
/// Documents are written when they can be seen.
class ExchangeView : public QSplitter {
 public:
  ExchangeView(const workbench::ExchangeRecord& record, QWidget* parent);

  /// Shows the exchanges that joined the record.
  void catchUp();
  /// Says something about an exchange: a line in place of its result, and more in front of its
  /// documents.
  void remark(std::size_t exchange, const QString& line, const QString& details);
  void retranslate() { model_.retranslate(); }

 private:
  void showEvent(QShowEvent* event) override;
  void showDocuments();

  ExchangeModel model_;
  QTableView* table_;
  QPlainTextEdit* documents_;
  bool isStale_ = false;  // another exchange was chosen while nobody saw it
};

}  // namespace editor
