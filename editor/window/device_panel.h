#pragma once

#include <QtWidgets/QWidget>
#include <memory>

#include "editor/front_end/widget_wnd.h"
#include "host/dialogs/options_dlg.h"

class QAction;
class QLabel;

namespace editor {

/// What the window shows of one device: its data and the panel of buttons that its driver's
/// plug-in makes.
class DevicePanel : public QWidget {
 public:
  explicit DevicePanel(QWidget* parent);
  ~DevicePanel() override;

  /// Shows a device with its driver; either may be none. The panel of buttons is made anew only
  /// when the driver is another one: a handler of the present one may be running.
  void showDevice(XmlDocument::XmlNode* device, XCDriver* driver);
  /// Shows a group, or nothing in particular: a name, lines about it, and what can be done with it.
  void showText(const QString& title, const QString& text, const QList<QAction*>& actions = {});
  /// Makes the panel of buttons anew, in the language in force.
  void rebuild();

  XCDlgOptions* options() const { return options_.get(); }

 private:
  void makeOptions();
  void showActions(const QList<QAction*>& actions);

  QLabel* title_;
  QLabel* details_;
  QWidget* container_;
  QWidget* actionRow_;
  WidgetWnd wnd_;
  std::unique_ptr<XCDlgOptions> options_;
  XCDriver* driver_ = nullptr;
};

}  // namespace editor
