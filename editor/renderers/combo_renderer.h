#pragma once

#include "editor/renderers/control_renderer.h"

class QComboBox;

namespace editor {

/// A drop-down list that can't be typed into.
class ComboRenderer : public ControlRenderer {
 public:
  ComboRenderer(XCBaseDlg& dialog, host::ComboControl& control, QWidget* parent);
  QWidget& widget() override;
  QWidget* focusWidget() override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 protected:
  void show(unsigned changes) override;

 private:
  host::ComboControl& combo_;
  QComboBox* box_;
};

}  // namespace editor
