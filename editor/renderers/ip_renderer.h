#pragma once

#include "editor/renderers/control_renderer.h"

namespace editor {

class IpField;

/// An entry for an IPv4 address.
class IpRenderer : public ControlRenderer {
 public:
  IpRenderer(XCBaseDlg& dialog, host::IpControl& control, QWidget* parent);
  QWidget& widget() override;
  QWidget* focusWidget() override;
  QList<QWidget*> tabStops() override;

 protected:
  void show(unsigned changes) override;
  unsigned gestureChanges() const override;

 private:
  IpField* field_;
};

}  // namespace editor
