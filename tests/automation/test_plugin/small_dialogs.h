#pragma once

#include "host/dialogs/base_dlg.h"
#include "host/dialogs/options_dlg.h"

namespace test_plugin {

/// A dialog that another one opens. Its button "deeper" opens one more of its kind.
class InnerDialog : public XCBaseDlg {
 public:
  static constexpr int Number = 9002;
  static host::DialogTemplate Template();
  explicit InnerDialog(CWnd* parent) : XCBaseDlg(Number, parent) {}
  const host::MessageMap* GetMessageMap() const override;

 private:
  void OnDeeper();
};

/// A dialog that does not close by Cancel until a question is answered with Yes.
class StubbornDialog : public XCBaseDlg {
 public:
  static constexpr int Number = 9004;
  static host::DialogTemplate Template();
  explicit StubbornDialog(CWnd* parent) : XCBaseDlg(Number, parent) {}
  void OnCancel() override;
};

/// The device definition: the name and the address of a device.
class DefinitionDialog : public XCBaseDlg {
 public:
  static constexpr int Number = 9003;
  static host::DialogTemplate Template();
  DefinitionDialog(CWnd* parent, XmlDocument::XmlNode* device, XmlDocument::XmlNode* configuration)
      : XCBaseDlg(Number, parent), device_(device), configuration_(configuration) {}
  bool OnInitDialog() override;
  void OnOK() override;

 private:
  XmlDocument::XmlNode* device_;
  XmlDocument::XmlNode* configuration_;
};

/// The options panel: the driver's button opens the dialog of all kinds, the device's one the
/// stubborn one, and the generic one posts a notice to the main window.
class OptionsDialog : public XCDlgOptions {
 public:
  using XCDlgOptions::XCDlgOptions;
  bool OnInitDialog() override;
  bool SetupDriver(XmlDocument::XmlNode* node) override;
  bool SetupDevice(XmlDocument::XmlNode* device) override;
  bool SetupGeneric1() override;
};

}  // namespace test_plugin
