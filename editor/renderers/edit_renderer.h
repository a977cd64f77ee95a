#pragma once

#include "editor/renderers/control_renderer.h"

namespace editor {

class ModelLineEdit;

/// A one-line edit: free text, digits only, masked, password or read-only. What Qt let the user do
/// is told to the model as the replacement of a range, so that undo, word keys and input methods
/// work as everywhere and the model's rules still decide.
class EditRenderer : public ControlRenderer {
 public:
  EditRenderer(XCBaseDlg& dialog, host::EditControl& control, QWidget* parent);
  QWidget& widget() override;
  QWidget* focusWidget() override;

 protected:
  void show(unsigned changes) override;
  unsigned gestureChanges() const override;

 private:
  void mirrorSelection();
  void takeTyped(const QString& text);
  void showSelection();
  int naturalWidth() const;

  host::EditControl& edit_;
  ModelLineEdit* line_;
};

}  // namespace editor
