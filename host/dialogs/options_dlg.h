#pragma once

#include "host/dialogs/base_dlg.h"
#include "host/services/drivers.h"

/// Colours that the desktop defines.
constexpr int COLOR_WINDOW = 5;
HOST_API host::Colour GetSysColor(int index);

/// The panel of numbered buttons of a device: modal, or a child of the editor's window. Button 0
/// runs SetupDriver, 1 SetupDevice, 5 to 7 the generic operations; 2 to 4 are the host's own and do
/// nothing yet. The buttons from 2 on are hidden until EnableButton shows them.
class HOST_API XCDlgOptions : public XCBaseDlg {
 public:
  XCDlgOptions(CWnd* parent, XCDriverDevice* device);

  XCDriverDevice* Driver() const { return driver_; }

  /// Marks the panel as a child window: it then has no Close button.
  void SetChild(bool child = true) { child_ = child; }
  bool IsChild() const { return child_; }
  void SetBackgroundColor(host::Colour colour) { background_ = colour; }
  host::Colour BackgroundColor() const { return background_; }

  /// Enables or disables a button, 0 to 7, and shows or hides it.
  void EnableButton(int number, bool enabled, bool visible);
  void SetButtonText(int number, std::u16string_view text);
  /// The name of a file in the image folder.
  void SetButtonImage(int number, std::string file);
  /// A bitmap of the plug-in, by its number: "4527.png" in the image folder.
  void SetButtonImage(int number, int bitmap);

  virtual bool SetupDriver(XmlDocument::XmlNode* node);
  virtual bool SetupDevice(XmlDocument::XmlNode* device);
  virtual bool SetupGeneric1();
  virtual bool SetupGeneric2();
  virtual bool SetupGeneric3();

  bool OnInitDialog() override;
  /// The panel has nothing to cancel: closing it counts as OK.
  void OnCancel() override;
  const host::MessageMap* GetMessageMap() const override;
  /// Arranges the buttons that are visible.
  virtual void ArrangeButtons();

  static constexpr int ButtonCount = 8;
  /// The control of a numbered button.
  static constexpr int ButtonId(int number) { return host::privateId(number); }

 private:
  void OnButton(int controlId);
  XmlDocument::XmlNode* DeviceElement() const;

  XCDriverDevice* driver_;
  bool child_ = false;
  host::Colour background_{0xF0, 0xF0, 0xF0};
};
