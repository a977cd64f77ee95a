#pragma once

#include "editor/renderers/control_renderer.h"

class QRadioButton;

namespace editor {

/// A radio button. Which others it turns off is the model's business, not Qt's.
class RadioRenderer : public ControlRenderer {
 public:
  RadioRenderer(XCBaseDlg& dialog, host::CheckControl& control, QWidget* parent);
  QWidget& widget() override;
  QWidget* focusWidget() override;

 protected:
  void show(unsigned changes) override;

 private:
  host::CheckControl& radio_;
  QRadioButton* button_;
};

}  // namespace editor
