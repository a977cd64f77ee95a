#pragma once

#include "editor/renderers/control_renderer.h"

class QGroupBox;

namespace editor {

/// The box around the controls that the arrangement puts into it.
class GroupRenderer : public ControlRenderer {
 public:
  GroupRenderer(XCBaseDlg& dialog, host::Control& control, QWidget* parent);
  QWidget& widget() override;

 protected:
  void show(unsigned changes) override;

 private:
  QGroupBox* box_;
};

}  // namespace editor
