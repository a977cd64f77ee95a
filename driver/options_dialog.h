#pragma once

#include "exchange/export.h"
#include "host/dialogs/options_dlg.h"

/// The options panel of a lamp manager: the driver's settings, the controller's configuration, and
/// the update of its nodes.
class ZEL_EXPORT CDlgOptionsZelLampManager : public XCDlgOptions {
 public:
  CDlgOptionsZelLampManager(CWnd* parent, XCDriverDevice* device);
  ~CDlgOptionsZelLampManager() override;

  const host::MessageMap* GetMessageMap() const override;
  void DoDataExchange(CDataExchange* exchange) override;
  bool OnInitDialog() override;

  /// Opens the driver dialog with the driver's view setup. True when it ended with OK.
  bool SetupDriver(XmlDocument::XmlNode* node) override;
  /// Opens the controller's configuration. True when it ended with OK.
  bool SetupDevice(XmlDocument::XmlNode* device) override;
  /// Updates the child devices from the controller's node list, as the synchronous button of the
  /// node update does. False, and nothing is contacted, for a driver without a device element.
  bool SetupGeneric1() override;
};
