#include "editor/renderers/year_renderer.h"

#include "editor/renderers/year_view.h"

namespace editor {

YearRenderer::YearRenderer(XCBaseDlg& dialog, XCCalendar& control, QWidget* parent)
    : ControlRenderer(dialog, control), calendar_(control), view_(new YearView(control, parent)) {
  view_->onPaint = [this](const XCDateTime& day) {
    perform([&](host::UserInput& input) { input.paint(calendar_, day); });
  };
  view_->onYear = [this](int year) {
    perform([&](host::UserInput& input) { input.showYear(calendar_, year); });
  };
}

QWidget& YearRenderer::widget() {
  return *view_;
}
QWidget* YearRenderer::focusWidget() {
  return view_;
}

void YearRenderer::show(unsigned) {
  view_->refresh();
}

}  // namespace editor
