#include "host/dialogs/options_dlg.h"

#include "host/dialogs/host_templates.h"
#include "host/services/setup.h"
#include "host/text/utf.h"

using host::layout::control;
using host::layout::stretch;

host::Colour GetSysColor(int index) {
  // The only colour that plug-ins ask for; the front end draws it in the desktop's own.
  return index == COLOR_WINDOW ? host::Colour{0xFF, 0xFF, 0xFF} : host::Colour{0xF0, 0xF0, 0xF0};
}

XCDlgOptions::XCDlgOptions(CWnd* parent, XCDriverDevice* device)
    : XCBaseDlg(host::OptionsTemplate, parent), driver_(device) {}

void XCDlgOptions::EnableButton(int number, bool enabled, bool visible) {
  host::Control& item = GetDlgItem(ButtonId(number));
  item.setEnabled(enabled);
  item.setVisible(visible);
}

void XCDlgOptions::SetButtonText(int number, std::u16string_view text) {
  GetDlgItem(ButtonId(number)).setText(text);
}

void XCDlgOptions::SetButtonImage(int number, std::string file) {
  Get<CImageButton>(ButtonId(number)).setImage(std::move(file));
}

void XCDlgOptions::SetButtonImage(int number, int bitmap) {
  SetButtonImage(number, std::to_string(bitmap) + ".png");
}

bool XCDlgOptions::SetupDriver(XmlDocument::XmlNode*) {
  return false;
}
bool XCDlgOptions::SetupDevice(XmlDocument::XmlNode*) {
  return false;
}
bool XCDlgOptions::SetupGeneric1() {
  return false;
}
bool XCDlgOptions::SetupGeneric2() {
  return false;
}
bool XCDlgOptions::SetupGeneric3() {
  return false;
}

bool XCDlgOptions::OnInitDialog() {
  SetWindowText(driver_ != nullptr ? driver_->Name() : XCBasicString());
  GetDlgItem(IDOK).setVisible(!child_);
  return XCBaseDlg::OnInitDialog();
}

void XCDlgOptions::OnCancel() {
  EndDialog(IDOK);
}

const host::MessageMap* XCDlgOptions::GetMessageMap() const {
  static constexpr host::MessageEntry entries[] = {
      host::onClick<&XCDlgOptions::OnButton>(ButtonId(0), ButtonId(ButtonCount - 1))};
  static constexpr host::MessageMap map{nullptr, entries};
  return &map;
}

XmlDocument::XmlNode* XCDlgOptions::DeviceElement() const {
  return driver_ == nullptr ? nullptr : XCMainCfg::Get().DeviceNode(driver_->Identifier());
}

void XCDlgOptions::OnButton(int controlId) {
  switch (controlId) {
    case ButtonId(0):
      SetupDriver(DeviceElement());
      break;
    case ButtonId(1):
      SetupDevice(DeviceElement());
      break;
    case ButtonId(5):
      SetupGeneric1();
      break;
    case ButtonId(6):
      SetupGeneric2();
      break;
    case ButtonId(7):
      SetupGeneric3();
      break;
    default:
      break;
  }
}

void XCDlgOptions::ArrangeButtons() {
  host::LayoutItem column = XCVerticalLayout({});
  for (int number = 0; number < ButtonCount; ++number)
    column.items.push_back(control(ButtonId(number)));
  column.items.push_back(stretch());
  column.items.push_back(XCHoritzontalLayout({stretch(), control(IDOK)}));
  SetLayout(std::move(column));
}
