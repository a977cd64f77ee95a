// What the device definition does with the controller's node list.

#include "device/child_devices.h"
#include "device/device_definition_dialog.h"
#include "device/device_element.h"
#include "exchange/exchange_frame.h"
#include "host/services/setup.h"

using host::TextId;

namespace {

// The application's notice to reload what it shows of the configuration.
constexpr unsigned ReloadMessage = 1025;

void tell(TextId text) {
  host::services().frontEnd().ask(
      {nullptr, XCLoadString(text), host::MessageButtons::ok, host::MessageIcon::none});
}

}  // namespace

bool XCDlgNewModifyZelLampManager::ReadNodesFile(XmlDocument& document) {
  return lamp::readWithMessage(*this, lamp::Command::readNodeFile, document,
                               TextId::NodeFileNotRead);
}

bool XCDlgNewModifyZelLampManager::NeedsChildDevices() const {
  return NeedCheckComm() && device_->Node(lamp::config::ChildDevices.text()) == nullptr;
}

// False when the list could not be read. A list that arrives and is refused counts as fetched: the
// message has told the user, and the device is saved.
bool XCDlgNewModifyZelLampManager::FetchChildDevices() {
  XmlDocument nodes;
  if (!ReadNodesFile(nodes)) return false;
  UpdateChildDevices(&nodes, device_, false, values_.name, groups_.get());
  return true;
}

bool XCDlgNewModifyZelLampManager::AskWithoutNodes() {
  return MessageBox(TextId::NodeFileNotReadQuestion, host::MessageButtons::yesNo) == IDYES;
}

bool XCDlgNewModifyZelLampManager::UpdateChildDevices(XmlDocument* nodes,
                                                      XmlDocument::XmlNode* device, bool notify,
                                                      XCBasicString groupName,
                                                      XmlDocument::XmlNode* configuration) {
  if (!lamp::rebuildChildDevices(*nodes, *device, groupName, configuration)) {
    tell(TextId::NodeListInvalid);
    return false;
  }
  if (notify) {
    tell(TextId::NodesUpdated);
    XCMainCfg::Get().NotifyChanged();
    host::services().frontEnd().postToMainWindow({ReloadMessage, 0, 0});
  }
  return true;
}
