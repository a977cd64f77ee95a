#pragma once

#include "editor/renderers/control_renderer.h"

namespace editor {

class YearView;

/// The year view of a calendar.
class YearRenderer : public ControlRenderer {
 public:
  YearRenderer(XCBaseDlg& dialog, XCCalendar& control, QWidget* parent);
  QWidget& widget() override;
  QWidget* focusWidget() override;
  bool expandsVertically() const override { return true; }

  YearView& view() const { return *view_; }

 protected:
  void show(unsigned changes) override;

 private:
  XCCalendar& calendar_;
  YearView* view_;
};

}  // namespace editor
