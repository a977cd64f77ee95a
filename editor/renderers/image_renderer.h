#pragma once

#include "editor/renderers/control_renderer.h"
#include "host/ui/controls/image_controls.h"

class QLabel;

namespace editor {

/// A picture.
class ImageRenderer : public ControlRenderer {
 public:
  ImageRenderer(XCBaseDlg& dialog, host::ImageControl& control, QWidget* parent);
  QWidget& widget() override;

 protected:
  void show(unsigned changes) override;

 private:
  host::ImageControl& model_;
  QLabel* label_;
};

}  // namespace editor
