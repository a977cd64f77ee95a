#pragma once

#include <QtCore/QString>
#include <QtWidgets/QTableView>
#include <functional>

namespace bench {

/// A node table on the screen, and what a user does at it beyond selecting.
class TableWindow {
 public:
  virtual ~TableWindow() = default;
  virtual QTableView& view() = 0;
  /// Gives all selected rows another reference.
  virtual void type(const QString& text) = 0;
  /// By the reference, the other way round each time.
  virtual void sort() = 0;
  /// Shows the rows with the text in one of their cells; an empty one shows all.
  virtual void filter(const QString& text) = 0;
};

using AtWindow = std::function<void(TableWindow&)>;

}  // namespace bench
