#pragma once

#include <QtWidgets/QTableView>
#include <functional>

#include "host/ui/controls/list_control.h"
#include "host/ui/user_input.h"

namespace editor {

class ListTableModel;

/// The table of a list: whole lines, one fixed height, columns in the widths that the list wants
/// until the user drags one. Tells what the user did once per gesture: a drag over rows when the
/// button is let go.
class ListView : public QTableView {
 public:
  ListView(const host::ListControl& list, ListTableModel& model, QWidget* parent);

  std::function<void()> onSelected;
  std::function<void(std::size_t row)> onDoubleClicked;
  std::function<void(host::Key)> onKey;
  std::function<void(std::size_t column)> onHeader;

  /// Makes ranges the selection without telling onSelected.
  void showSelection(const QItemSelection& ranges);
  void fitColumns();
  void showSorting();
  /// The least width at which every caption of the header can be read.
  void holdCaptions();

  QSize sizeHint() const override;

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;

 private:
  void endGesture();
  void copyRows() const;

  const host::ListControl& list_;
  ListTableModel& model_;
  bool fitting_ = false;
  bool draggedColumns_ = false;
  bool showing_ = false;
  bool buttonDown_ = false;
  bool selectionPending_ = false;
};

}  // namespace editor
