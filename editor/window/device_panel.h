#pragma once

#include <QtWidgets/QWidget>
#include <memory>

#include "editor/front_end/widget_wnd.h"
#include "host/dialogs/options_dlg.h"

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
  /// Shows a group or a child device: its name and a line about it.
  void showText(const QString& title, const QString& text);
  /// Makes the panel of buttons anew, in the language in force.
  void rebuild();

  XCDlgOptions* options() const { return options_.get(); }

 private:
  void makeOptions();

  QLabel* title_;
  QLabel* details_;
  QWidget* container_;
  WidgetWnd wnd_;
  std::unique_ptr<XCDlgOptions> options_;
  XCDriver* driver_ = nullptr;
};

}  // namespace editor
