#pragma once

#include "host/dialogs/base_dlg.h"
#include "host/services/drivers.h"
#include "host/xml/xml_holder.h"

/// The host's dialog for a driver: its description, and how its values are shown and recorded (the
/// view setup).
class HOST_API XCDlgDriverDeviceCfg : public XCBaseDlg {
 public:
  /// @p device is the device's element, @p viewSetup the driver's view setup or none: one is then
  /// added to the main configuration on OK. Neither is owned.
  XCDlgDriverDeviceCfg(CWnd* parent, XCDriver* driver, XmlDocument::XmlNode* device,
                       XmlDocument::XmlNode* viewSetup);

  /// Leaves the recording period out.
  void DisablePeriod() { periodOffered_ = false; }
  /// Offers the recording of history.
  void EnableHistoric() { historicOffered_ = true; }

  bool OnInitDialog() override;
  void OnOK() override;
  void DoDataExchange(CDataExchange* exchange) override;
  void Layout() override;

 private:
  XCDriver* driver_;
  host::XmlAnchor device_;
  host::XmlAnchor viewSetup_;
  bool periodOffered_ = true;
  bool historicOffered_ = false;
  bool historic_ = false;
  XCBasicString period_;
};
