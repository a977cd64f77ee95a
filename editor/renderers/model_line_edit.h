#pragma once

#include <QtWidgets/QLineEdit>
#include <functional>

#include "host/ui/controls/edit_control.h"

namespace editor {

/// The line edit of an edit control. A plain edit types as Qt does; with a mask every key goes to
/// the model, which types over the places and steps over the separators.
class ModelLineEdit : public QLineEdit {
 public:
  ModelLineEdit(const host::EditControl& edit, QWidget* parent);

  /// What a masked edit does instead of changing its own text.
  std::function<void(const QString& typed)> onInsert;
  std::function<void(bool forward)> onErase;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  bool isMasked() const { return edit_.mask().isActive(); }
  bool maskedKey(QKeyEvent* event);
  void cutSelection();
  void pasteText();

  const host::EditControl& edit_;
};

}  // namespace editor
