#include "driver/options_dialog.h"

#include "device/node_update_dialog.h"
#include "driver/configuration_menu.h"
#include "host/dialogs/driver_device_dlg.h"
#include "host/services/setup.h"

namespace {

constexpr int DriverButton = 0;
constexpr int DeviceButton = 1;
constexpr int NodeUpdateButton = 5;
constexpr int NodeUpdateBitmap = 4527;

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
  SetButtonText(NodeUpdateButton, XCLoadString(host::TextId::NodeUpdate));
  SetButtonImage(NodeUpdateButton, NodeUpdateBitmap);
  // Of a driver that is no device's there is nothing to set up.
  for (const int own : {DriverButton, DeviceButton, NodeUpdateButton})
    EnableButton(own, Driver() != nullptr, true);
  ArrangeButtons();
  return true;
}

bool CDlgOptionsZelLampManager::SetupDevice(XmlDocument::XmlNode* device) {
  return Driver() != nullptr && XCDeviceCfgZelLampManager(this, Driver(), device).DoModal() == IDOK;
}

bool CDlgOptionsZelLampManager::SetupDriver(XmlDocument::XmlNode* node) {
  if (Driver() == nullptr) return false;
  XmlDocument::XmlNode* viewSetup = XCMainCfg::Get().ViewSetup(Driver()->Identifier());
  XCDlgDriverDeviceCfg dialog(this, Driver(), node, viewSetup);
  dialog.DisablePeriod();
  dialog.EnableHistoric();
  return dialog.DoModal() == IDOK;
}

bool CDlgOptionsZelLampManager::SetupGeneric1() {
  XmlDocument::XmlNode* device =
      Driver() == nullptr ? nullptr : XCMainCfg::Get().DeviceNode(Driver()->Identifier());
  if (device == nullptr) return false;
  XCUpdateNodesZelLampManager update(this, Driver(), device);
  update.updateNodes(XCUpdateNodesZelLampManager::SyncButton);
  return true;
}
