#pragma once

#include "editor/renderers/control_renderer.h"

class QLabel;

namespace editor {

/// A text that is only read.
class LabelRenderer : public ControlRenderer {
 public:
  LabelRenderer(XCBaseDlg& dialog, host::Control& control, QWidget* parent);
  QWidget& widget() override;

 protected:
  void show(unsigned changes) override;

 private:
  QLabel* label_;
};

}  // namespace editor
