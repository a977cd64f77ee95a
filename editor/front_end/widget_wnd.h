#pragma once

#include <QtCore/QPointer>
#include <QtWidgets/QWidget>

#include "host/dialogs/wnd.h"

namespace editor {

/// A Qt widget as a window of the host: what dialogs are shown in front of or embedded in.
class WidgetWnd : public CWnd {
 public:
  explicit WidgetWnd(QWidget& widget) : widget_(&widget) {}
  /// Null once the widget is gone.
  QWidget* widget() const { return widget_; }

 private:
  QPointer<QWidget> widget_;
};

}  // namespace editor
