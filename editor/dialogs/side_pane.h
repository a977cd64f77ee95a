#pragma once

#include <QtWidgets/QWidget>

namespace editor {

/// What the editor shows beside controls of a dialog, of its own accord: the dialog knows nothing
/// of it and nothing in it changes the dialog.
class SidePane : public QWidget {
 public:
  using QWidget::QWidget;

  /// Something in the dialog changed, in the midst of a gesture: only to be remembered.
  virtual void note() = 0;
  /// Shows the dialog as it stands. Called when a gesture or several are over, often without a
  /// change that concerns the pane.
  virtual void follow() = 0;
};

}  // namespace editor
