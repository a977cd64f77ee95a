#pragma once

#include "driver/exchange_frame.h"
#include "host/dialogs/device_cfg.h"

namespace lamp {

/// The cycle of every settings page: read its section, show it, and on OK check, write under the
/// wait cursor, and close only when the write succeeded.
class SettingsPage : public XCBaseDeviceCfg {
 public:
  SettingsPage(int templateNumber, host::XmlName readSection, XCDriver* driver, CWnd* parent)
      : XCBaseDeviceCfg(templateNumber, driver, parent), readSection_(readSection) {}

  int DoModal() override {
    prepareRead(Document(), readSection_);
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
  host::XmlName ReadSection() const { return readSection_; }
  /// The section of the reply, none when the reply lacks it.
  XmlDocument::XmlNode* Section() { return sectionOf(Document(), readSection_); }

  /// Checks the entries and shows what is wrong with them. False keeps the page open.
  virtual bool Validate() { return true; }
  /// Sends what changed. False keeps the page open.
  virtual bool Write() = 0;

 private:
  host::XmlName readSection_;
};

}  // namespace lamp
