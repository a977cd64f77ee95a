#include "tests/automation/test_plugin/small_dialogs.h"

#include "host/services/identity.h"
#include "host/services/setup.h"
#include "tests/automation/test_plugin/kinds_dialog.h"

namespace test_plugin {
namespace {

constexpr int Deeper = host::privateId(0);

enum Definition : int { Name = 6307, Address = 6308, Identifier = 6340 };

}  // namespace

host::DialogTemplate InnerDialog::Template() {
  return {Number,
          "InnerDialog",
          "Inner",
          {host::button(Deeper, "deeper"), host::okButton(), host::cancelButton()}};
}

const host::MessageMap* InnerDialog::GetMessageMap() const {
  static constexpr host::MessageEntry entries[] = {host::onClick<&InnerDialog::OnDeeper>(Deeper)};
  static constexpr host::MessageMap map{nullptr, entries};
  return &map;
}

void InnerDialog::OnDeeper() {
  InnerDialog(this).DoModal();
}

host::DialogTemplate StubbornDialog::Template() {
  return {Number, "StubbornDialog", "Stubborn", {host::okButton(), host::cancelButton()}};
}

void StubbornDialog::OnCancel() {
  if (MessageBox(u"Leave?", host::MessageButtons::yesNo, host::MessageIcon::question) == IDYES)
    EndDialog(IDCANCEL);
}

host::DialogTemplate DefinitionDialog::Template() {
  return {Number,
          "DefinitionDialog",
          "Definition",
          {host::edit(Name, "name", 64), host::edit(Address, "address", 64),
           host::edit(Identifier, "identifier", 64), host::okButton(), host::cancelButton()}};
}

bool DefinitionDialog::OnInitDialog() {
  SetDlgItemText(Name, device_->Value("name"));
  SetDlgItemText(Address, device_->Value("address"));
  SetDlgItemText(Identifier, device_->Value("id"));
  return XCBaseDlg::OnInitDialog();
}

void DefinitionDialog::OnOK() {
  if (!IsNameAllowed(GetDlgItemText(Name), configuration_->Node("commSystem"))) {
    MessageBox(u"The name is taken");
    return;
  }
  device_->SetValue("name", GetDlgItemText(Name));
  device_->SetValue("address", GetDlgItemText(Address));
  device_->SetValue("verified", needVerifyConnection(false) ? u"new" : u"");
  EndDialog(IDOK);
}

bool OptionsDialog::OnInitDialog() {
  XCDlgOptions::OnInitDialog();
  EnableButton(5, true, true);
  ArrangeButtons();
  return true;
}

bool OptionsDialog::SetupDriver(XmlDocument::XmlNode*) {
  return KindsDialog(this).DoModal() == IDOK;
}

bool OptionsDialog::SetupDevice(XmlDocument::XmlNode*) {
  return StubbornDialog(this).DoModal() == IDOK;
}

bool OptionsDialog::SetupGeneric1() {
  if (XmlDocument::XmlNode* device = XCMainCfg::Get().DeviceNode(Driver()->Identifier()))
    device->SetValue("description", u"touched");
  XCMainCfg::Get().NotifyChanged();
  host::services().frontEnd().postToMainWindow({1025, 0, 0});
  return true;
}

}  // namespace test_plugin
