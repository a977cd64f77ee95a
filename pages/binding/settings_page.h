#pragma once

#include <optional>

#include "exchange/exchange_frame.h"
#include "host/dialogs/device_cfg.h"

namespace lamp {

/// The cycle of every settings page: read its section, show it, and on OK check, write under the
/// wait cursor, and close only when the write succeeded.
class SettingsPage : public XCBaseDeviceCfg {
 public:
  /// Without a section to read the page opens straight away.
  SettingsPage(int templateNumber, std::optional<host::XmlName> readSection, XCDriver* driver,
               CWnd* parent)
      : XCBaseDeviceCfg(templateNumber, driver, parent), readSection_(readSection) {}

  int DoModal() override {
    if (!readSection_) return ShowModal();
    prepareRead(Document(), *readSection_);
    return XCBaseDeviceCfg::DoModal();
  }

  void OnOK() override {
    UpdateData(true);
    if (!Validate()) return;
    const bool written = [this] {
      const host::WaitCursor wait;
      return Write();
    }();
    if (written) EndDialog(IDOK);
  }

 protected:
  /// The section that the page reads; of a page that reads one.
  host::XmlName ReadSection() const { return *readSection_; }
  /// The section of the reply, none when the reply lacks it.
  XmlDocument::XmlNode* Section() { return sectionOf(Document(), *readSection_); }

  /// The window's title: a text, and the name of the device that the page belongs to.
  void SetPageTitle(host::TextId text) {
    SetWindowText(XCLoadString(text) + u" - " + Driver().Name());
  }
  /// Enables a control, or disables it and says why in its tooltip.
  void EnableIf(bool enabled, int id, host::TextId whyNot) {
    GetDlgItem(id).setEnabled(enabled, enabled ? XCBasicString() : XCLoadString(whyNot));
  }

  /// Checks the entries and shows what is wrong with them. False keeps the page open.
  virtual bool Validate() { return true; }
  /// Sends what changed. False keeps the page open.
  virtual bool Write() = 0;

 private:
  std::optional<host::XmlName> readSection_;
};

}  // namespace lamp
