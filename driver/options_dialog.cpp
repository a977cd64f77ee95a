#include "driver/options_dialog.h"

#include "driver/configuration_menu.h"
#include "host/dialogs/driver_device_dlg.h"
#include "host/services/setup.h"

namespace {

constexpr int DeviceButton = 1;

}  // namespace

CDlgOptionsZelLampManager::CDlgOptionsZelLampManager(CWnd* parent, XCDriverDevice* device)
    : XCDlgOptions(parent, device) {
  SetClassName("CDlgOptionsZelLampManager");
}

CDlgOptionsZelLampManager::~CDlgOptionsZelLampManager() = default;

const host::MessageMap* CDlgOptionsZelLampManager::GetMessageMap() const {
  return XCDlgOptions::GetMessageMap();
}

void CDlgOptionsZelLampManager::DoDataExchange(CDataExchange* exchange) {
  XCDlgOptions::DoDataExchange(exchange);
}

bool CDlgOptionsZelLampManager::OnInitDialog() {
  XCDlgOptions::OnInitDialog();
  SetButtonImage(DeviceButton, "ZELLAMPMANAGER-50.png");
  for (const int unused : {3, 2, 4}) EnableButton(unused, false, false);
  ArrangeButtons();
  return true;
}

bool CDlgOptionsZelLampManager::SetupDevice(XmlDocument::XmlNode* device) {
  return XCDeviceCfgZelLampManager(this, Driver(), device).DoModal() == IDOK;
}

bool CDlgOptionsZelLampManager::SetupDriver(XmlDocument::XmlNode* node) {
  XmlDocument::XmlNode* viewSetup = XCMainCfg::Get().ViewSetup(Driver()->Identifier());
  XCDlgDriverDeviceCfg dialog(this, Driver(), node, viewSetup);
  dialog.DisablePeriod();
  dialog.EnableHistoric();
  return dialog.DoModal() == IDOK;
}
