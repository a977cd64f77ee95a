#include "device/node_update_dialog.h"

#include "device/device_definition_dialog.h"
#include "device/device_element.h"
#include "exchange/exchange_frame.h"
#include "exchange/template_numbers.h"
#include "host/services/setup.h"

using host::TextId;
namespace layout = host::layout;

namespace {

enum Id { UpdateGroup = 6590, SyncLabel, AsyncLabel };

constexpr int ButtonGap = 10;

const host::XmlName UpdateType("type");

}  // namespace

XCUpdateNodesZelLampManager::XCUpdateNodesZelLampManager(CWnd* parent, XCDriver* driver,
                                                         XmlDocument::XmlNode* device)
    : XCBaseDeviceCfg(lamp::template_number::NodeUpdate, driver, parent, device),
      groups_(*device, XCMainCfg::Get().Root()) {}

host::DialogTemplate XCUpdateNodesZelLampManager::Template() {
  return {lamp::template_number::NodeUpdate,
          "XCUpdateNodesZelLampManager",
          "",
          {host::group(Id::UpdateGroup, "updateGroup", TextId::Update),
           host::label(Id::SyncLabel, "syncLabel", TextId::SynchronousUpdate),
           host::button(SyncButton, "sync", TextId::UpdateNodes),
           host::label(Id::AsyncLabel, "asyncLabel", TextId::AsynchronousUpdate),
           host::button(AsyncButton, "async", TextId::UpdateNodes), host::okButton(),
           host::cancelButton()}};
}

const host::MessageMap* XCUpdateNodesZelLampManager::GetMessageMap() const {
  static constexpr host::MessageEntry entries[] = {
      host::onClick<&XCUpdateNodesZelLampManager::updateNodes>(SyncButton, AsyncButton)};
  static constexpr host::MessageMap map{nullptr, entries};
  return &map;
}

int XCUpdateNodesZelLampManager::DoModal() {
  return ShowModal();
}

bool XCUpdateNodesZelLampManager::OnInitDialog() {
  SetWindowText(XCLoadString(TextId::NodeUpdate) + u" - " + Driver().Name());
  return XCBaseDeviceCfg::OnInitDialog();
}

void XCUpdateNodesZelLampManager::Layout() {
  SetLayout(XCVerticalLayout(
      {layout::box(Id::UpdateGroup,
                   {XCHoritzontalLayout(
                       {layout::control(Id::SyncLabel), layout::control(SyncButton, 1),
                        layout::control(Id::AsyncLabel), layout::control(AsyncButton, 1)})}),
       XCHoritzontalLayout({layout::stretch(), layout::gap(ButtonGap), layout::control(IDOK),
                            layout::control(IDCANCEL), layout::gap(ButtonGap),
                            layout::stretch()})}));
}

void XCUpdateNodesZelLampManager::updateNodes(int buttonId) {
  XmlDocument nodes;
  XmlDocument::XmlNode& request = lamp::prepareRead(nodes, lamp::section::NodeListRead);
  if (buttonId == SyncButton) request.setAttribute(UpdateType, u"Sync");
  if (buttonId == AsyncButton) request.setAttribute(UpdateType, u"Async");
  if (getCommand(static_cast<int>(lamp::Command::readSection), &nodes, true)) {
    XCDlgNewModifyZelLampManager::UpdateChildDevices(
        &nodes, Device(), true, Device()->Value(lamp::config::Name), groups_.get());
    XCMainCfg::Get().Document().ReleaseRemoved();
  } else if (!silentFailure()) {
    MessageBox(lamp::failureText(*this));
  }
}
