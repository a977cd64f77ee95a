#pragma once

#include <QtWidgets/QSplitter>

#include "editor/window/exchange_model.h"

class QPlainTextEdit;
class QTableView;

namespace editor {

/// The exchanges with controllers on the left, the documents of the one selected on the right.
class ExchangeView : public QSplitter {
 public:
  ExchangeView(const workbench::ExchangeRecord& record, QWidget* parent);

  void catchUp();
  /// Says something about an exchange: a line in place of its result, and more in front of its
  /// documents.
  void remark(std::size_t exchange, const QString& line, const QString& details);
  void retranslate() { model_.retranslate(); }

 private:
  void showDocuments();

  ExchangeModel model_;
  QTableView* table_;
  QPlainTextEdit* documents_;
};

}  // namespace editor
