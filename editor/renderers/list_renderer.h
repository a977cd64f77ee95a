#pragma once

#include "editor/renderers/control_renderer.h"

class QLabel;
class QLineEdit;

namespace editor {

class ListTableModel;
class ListView;

/// A list: the table, and above one that takes several rows a filter and how many are selected.
/// Rows that the filter hides are not selected, whatever the user does: what is typed for the
/// selected rows never reaches one that can't be seen.
class ListRenderer : public ControlRenderer {
 public:
  ListRenderer(XCBaseDlg& dialog, host::ListControl& control, QWidget* parent);
  ~ListRenderer() override;
  QWidget& widget() override;
  QWidget* focusWidget() override;
  QList<QWidget*> tabStops() override;
  bool expandsVertically() const override { return true; }
  bool eventFilter(QObject* watched, QEvent* event) override;

  ListView& view() const { return *view_; }
  QLineEdit* filterLine() const { return filter_; }

 protected:
  void show(unsigned changes) override;
  unsigned gestureChanges() const override;

 private:
  void addFilterRow();
  void filterRows(const QString& text);
  void takeSelection();
  void showSelection();
  void showCount();
  bool hidesSelection() const;

  host::ListControl& list_;
  QWidget* box_;
  std::unique_ptr<ListTableModel> model_;
  ListView* view_;
  QLineEdit* filter_ = nullptr;
  QLabel* count_ = nullptr;
};

}  // namespace editor
