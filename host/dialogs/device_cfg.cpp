#include "host/dialogs/device_cfg.h"

#include "host/services/setup.h"

namespace {

constexpr int ReadConfiguration = 1;
constexpr int WriteConfiguration = 2;

struct Parameter {
  std::u16string_view name;
  host::XmlName child;
  std::u16string_view whenEmpty;
};

}  // namespace

XCBaseDeviceCfg::XCBaseDeviceCfg(int templateNumber, XCDriver* driver, CWnd* parent,
                                 XmlDocument::XmlNode* device)
    : XCBaseDlg(templateNumber, parent), driver_(driver), device_(device) {
  if (device_ != nullptr) return;
  if (const auto* page = dynamic_cast<XCBaseDeviceCfg*>(parent); page && page->driver_ == driver)
    device_ = page->device_;
  else if (driver_ != nullptr)
    device_ = XCMainCfg::Get().DeviceNode(driver_->Identifier());
}

int XCBaseDeviceCfg::DoModal() {
  if (!getCommand(ReadConfiguration, &document_, true)) {
    if (!silentFailure())
      MessageBox(getErrorMsg().IsEmpty() ? XCLoadString(host::TextId::ReadFailed) : getErrorMsg());
    return IDCANCEL;
  }
  return ShowModal();
}

bool XCBaseDeviceCfg::writeCfg(bool wait) {
  while (!putCommand(WriteConfiguration, &document_, wait)) {
    if (silentFailure()) return false;
    XCBasicString text = getErrorMsg();
    if (!text.IsEmpty()) text += u"\r\n\r\n";
    text += XCLoadString(host::TextId::CommandNotAccepted);
    if (MessageBox(text, host::MessageButtons::retryCancel) != IDRETRY) return false;
  }
  return true;
}

bool XCBaseDeviceCfg::addUriParams(XCBasicString& uri, bool first) {
  static const Parameter parameters[] = {
      {u"driver", "driver", u""},          {u"type", "type", u""},
      {u"identifier", "identifier", u""},  {u"address", "address", u""},
      {u"socket", "socket", u"8080"},      {u"ftpAddress", "ftpAddress", u""},
      {u"ftpPort", "ftpPort", u"21"},      {u"ftpUser", "ftpUser", u""},
      {u"ftpPassword", "ftpPassword", u""}};
  for (const Parameter& parameter : parameters) {
    XCBasicString value = device_ ? device_->Value(parameter.child) : XCBasicString();
    if (value.IsEmpty()) value = parameter.whenEmpty;
    if (addUriParam(uri, parameter.name, value, first)) first = false;
  }
  return true;
}
