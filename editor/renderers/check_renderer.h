#pragma once

#include "editor/renderers/control_renderer.h"

class QCheckBox;

namespace editor {

/// A check box.
class CheckRenderer : public ControlRenderer {
 public:
  CheckRenderer(XCBaseDlg& dialog, host::CheckControl& control, QWidget* parent);
  QWidget& widget() override;
  QWidget* focusWidget() override;

 protected:
  void show(unsigned changes) override;

 private:
  host::CheckControl& check_;
  QCheckBox* box_;
};

}  // namespace editor
