#include "workbench/device_actions.h"

#include "host/dialogs/base_dlg.h"
#include "host/dialogs/extension_module.h"
#include "host/services/identity.h"
#include "host/services/setup.h"
#include "workbench/lamp_groups.h"

namespace workbench {
namespace {

using host::TextId;
using Node = XmlDocument::XmlNode;

constexpr const char* DefinitionDialog = "XCDlgNewModifyZelLampManager";
constexpr const char* UpdateDialog = "XCUpdateNodesZelLampManager";

const XCBasicString& lampManager() {
  return XCDriverDeviceZelLampManager::GetThisClass().type;
}

ActionResult findDialog(const char* name, const host::DeviceDialogClass*& found) {
  found = host::findDeviceDialog(name);
  if (found != nullptr) return {};
  return ActionResult::refused(TextId::DialogMissing, XCBasicString::FromUtf8(name));
}

Node& commSystem() {
  Node& root = *XCMainCfg::Get().Root();
  Node* system = root.Node("commSystem");
  return system != nullptr ? *system : root.NewChild("commSystem");
}

}  // namespace

ActionResult DeviceActions::canDefine(const Node* device) const {
  if (device != nullptr && !(device->Value("driver") == lampManager()))
    return ActionResult::refused(TextId::NoLampManager, device->Value("name"));
  return ActionResult::ifWritable(store_);
}

void DeviceActions::finish(CWnd* parent) {
  catalogue_.invalidate();
  saveOrTell(store_, parent);
}

ActionResult DeviceActions::newDevice(CWnd* parent) {
  const host::DeviceDialogClass* dialogClass = nullptr;
  if (ActionResult result = findDialog(DefinitionDialog, dialogClass); !result.done) return result;
  if (ActionResult result = canDefine(nullptr); !result.done) return result;
  XmlDocument scratch("device");
  Node& device = *scratch.Root();
  device.SetValue("id", guidtow(NewGUID()));
  device.SetValue("driver", lampManager());
  device.SetValue("type", lampManager());
  {
    const EditedDevice edited(&device);
    const auto dialog = dialogClass->create(parent, &device, XCMainCfg::Get().Root());
    // None was told of by the plug-in: there was no memory for it.
    if (dialog != nullptr && dialog->DoModal() == IDOK) commSystem().NewChild("device") = device;
  }
  finish(parent);
  return {};
}

ActionResult DeviceActions::modifyDevice(CWnd* parent, Node& device) {
  const host::DeviceDialogClass* dialogClass = nullptr;
  if (ActionResult result = findDialog(DefinitionDialog, dialogClass); !result.done) return result;
  if (ActionResult result = canDefine(&device); !result.done) return result;
  const host::XmlAnchor kept(&device);  // it may be removed while the dialog is open
  const XCBasicString before = device.Value("name");
  {
    const EditedDevice edited(&device);
    const auto dialog = dialogClass->create(parent, &device, XCMainCfg::Get().Root());
    if (dialog != nullptr) dialog->DoModal();
  }
  LampGroups(device).followRename(before);
  finish(parent);
  return {};
}

ActionResult DeviceActions::removeDevice(CWnd* parent, Node& device) {
  if (ActionResult result = ActionResult::ifWritable(store_); !result.done) return result;
  const XCBasicString name = device.Value("name");
  Node& root = *XCMainCfg::Get().Root();
  root.RemoveChild(&device);
  if (Node* groups = root.Node("deviceGroups/groups"))
    if (Node* group = groups->Node("group?id=%s?", name)) groups->RemoveChild(group);
  finish(parent);
  return {};
}

ActionResult DeviceActions::driverOf(const Node& device, XCDriver*& driver,
                                     const host::DriverRegistration*& registration) const {
  registration = host::findRegistration(device.Value("driver"));
  if (registration == nullptr)
    return ActionResult::refused(TextId::DriverNotServed, device.Value("driver"),
                                 device.Value("name"));
  driver = catalogue_.find(device.Value("id"));
  if (driver == nullptr)
    return ActionResult::refused(TextId::DeviceWithoutId, device.Value("name"));
  return {};
}

ActionResult DeviceActions::configure(CWnd* parent, Node& device) {
  XCDriver* driver = nullptr;
  const host::DriverRegistration* registration = nullptr;
  if (ActionResult result = driverOf(device, driver, registration); !result.done) return result;
  if (registration->configure == nullptr) return ActionResult::refused(TextId::NothingToConfigure);
  registration->configure(parent, driver);
  finish(parent);
  return {};
}

ActionResult DeviceActions::list(CWnd* parent, Node& device, ListCallback which,
                                 const XCListFlags& flags, XCNameList& names, bool& result) {
  XCDriver* driver = nullptr;
  const host::DriverRegistration* registration = nullptr;
  if (ActionResult found = driverOf(device, driver, registration); !found.done) return found;
  const auto callback = which == ListCallback::A ? registration->listA : registration->listB;
  if (callback == nullptr) return ActionResult::refused(TextId::NoListCallback);
  result = callback(parent, driver, names, flags, 0, {});
  return {};
}

ActionResult DeviceActions::updateNodes(CWnd* parent, Node& device) {
  const host::DeviceDialogClass* dialogClass = nullptr;
  if (ActionResult result = findDialog(UpdateDialog, dialogClass); !result.done) return result;
  if (ActionResult result = canDefine(&device); !result.done) return result;
  if (catalogue_.find(device.Value("id")) == nullptr)
    return ActionResult::refused(TextId::DeviceWithoutId, device.Value("name"));
  const auto dialog = dialogClass->create(parent, &device, XCMainCfg::Get().Root());
  const host::XmlAnchor kept(&device);
  if (dialog == nullptr)
    return ActionResult::refused(TextId::DeviceWithoutId, device.Value("name"));
  dialog->DoModal();
  finish(parent);
  return {};
}

}  // namespace workbench
