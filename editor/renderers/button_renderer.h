#pragma once

#include "editor/renderers/control_renderer.h"
#include "host/ui/controls/image_controls.h"

class QPushButton;

namespace editor {

/// A push button with a caption, an image or both.
class ButtonRenderer : public ControlRenderer {
 public:
  ButtonRenderer(XCBaseDlg& dialog, CImageButton& control, QWidget* parent);
  QWidget& widget() override;
  QWidget* focusWidget() override;

 protected:
  void show(unsigned changes) override;

 private:
  CImageButton& model_;
  QPushButton* button_;
};

}  // namespace editor
