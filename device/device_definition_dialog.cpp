#include "device/device_definition_dialog.h"

#include "device/communication_settings_dialog.h"
#include "device/device_check.h"
#include "device/device_element.h"
#include "exchange/exchange_frame.h"
#include "exchange/template_numbers.h"
#include "host/services/setup.h"
#include "host/text/utf.h"

using host::TextId;
using lamp::DeviceField;
namespace config = lamp::config;
namespace layout = host::layout;

namespace {

enum Id { FtpGroup = 6356, Advanced = 6328 };

constexpr std::size_t LongestTitle = 1024;

const host::XmlName AdvancedCfg("advancedCfg");

// Labels and edits of a run of the fields; @p behind stands beside the last edit.
host::LayoutItem fieldGrid(std::span<const DeviceField> fields, int behind = 0) {
  std::vector<host::LayoutItem> pieces;
  for (const DeviceField& field : fields) {
    pieces.push_back(layout::control(field.label));
    pieces.push_back(layout::control(field.edit, 1));
  }
  if (behind != 0) pieces.back() = XCHoritzontalLayout({pieces.back(), layout::control(behind)}, 1);
  return layout::grid(2, std::move(pieces));
}

}  // namespace

XCDlgNewModifyZelLampManager::XCDlgNewModifyZelLampManager(CWnd* parent,
                                                           XmlDocument::XmlNode* device,
                                                           XmlDocument::XmlNode* configuration)
    : XCBaseDlg(lamp::template_number::DeviceDefinition, parent),
      device_(device),
      configuration_(configuration),
      groups_(*device, configuration) {}

XCDlgNewModifyZelLampManager::~XCDlgNewModifyZelLampManager() = default;

host::DialogTemplate XCDlgNewModifyZelLampManager::Template() {
  host::DialogTemplate dialog{
      lamp::template_number::DeviceDefinition, "XCDlgNewModifyZelLampManager", "", {}};
  for (const DeviceField& field : lamp::deviceFields()) {
    if (field.edit == lamp::device_control::FtpAddress) {
      dialog.controls.push_back(
          host::button(Id::Advanced, "advanced", TextId::CommunicationSettings, "OPTIONS-16.png"));
      dialog.controls.push_back(host::group(Id::FtpGroup, "ftpGroup", TextId::Ftp));
    }
    dialog.controls.push_back(lamp::labelOf(field));
    dialog.controls.push_back(lamp::editOf(field));
  }
  dialog.controls.push_back(host::okButton());
  dialog.controls.push_back(host::cancelButton());
  return dialog;
}

const host::MessageMap* XCDlgNewModifyZelLampManager::GetMessageMap() const {
  static constexpr host::MessageEntry entries[] = {
      host::onClick<&XCDlgNewModifyZelLampManager::OnComAdvancedCfg>(Id::Advanced)};
  static constexpr host::MessageMap map{nullptr, entries};
  return &map;
}

bool XCDlgNewModifyZelLampManager::OnInitDialog() {
  isExisting_ = !device_->Value(config::Name).IsEmpty();
  const TextId title = isExisting_ ? TextId::ExistingDeviceTitle : TextId::NewDeviceTitle;
  SetWindowText(XCBasicString::Format(XCLoadString(title), XCVarnisSetup::Get().DriverName(
                                                               device_->Value(config::Driver)))
                    .Left(LongestTitle));
  values_ = lamp::shownValues(*device_);
  return XCBaseDlg::OnInitDialog();
}

void XCDlgNewModifyZelLampManager::DoDataExchange(CDataExchange* exchange) {
  for (const DeviceField& field : lamp::deviceFields())
    DDX_Text(*exchange, field.edit, values_.*field.value);
}

void XCDlgNewModifyZelLampManager::Layout() {
  const auto fields = lamp::deviceFields();
  SetLayout(
      XCVerticalLayout({fieldGrid(fields.first(lamp::FirstFtpField), Id::Advanced),
                        layout::box(Id::FtpGroup, {fieldGrid(fields.subspan(lamp::FirstFtpField))}),
                        layout::stretch(), layout::okCancelRow()}));
}

bool XCDlgNewModifyZelLampManager::IsValid(const XCBasicString& name, const XCBasicString& address,
                                           const XCBasicString& socket,
                                           const XCBasicString& ftpAddress, int ftpPort) {
  const XmlDocument::XmlNode* commSystem =
      configuration_ == nullptr ? nullptr : configuration_->Node(config::CommSystem.text());
  const auto fault =
      lamp::findFault({name, address, socket, ftpAddress, ftpPort}, *device_, commSystem);
  if (!fault) return true;
  MessageBox(fault->message);
  FocusAndSelectAll(fault->control);
  return false;
}

bool XCDlgNewModifyZelLampManager::HasChanged(
    const XCBasicString& name, const XCBasicString& description, const XCBasicString& identifier,
    const XCBasicString& address, const XCBasicString& socket, const XCBasicString& ftpAddress,
    const XCBasicString& ftpPort, const XCBasicString& ftpUser, const XCBasicString& ftpPassword) {
  commChanged_ = lamp::communicationDiffers(
      *device_,
      {name, description, identifier, address, socket, ftpAddress, ftpPort, ftpUser, ftpPassword});
  return commChanged_ || name != device_->Value(config::Name) ||
         description != device_->Value(config::Description);
}

bool XCDlgNewModifyZelLampManager::NeedCheckComm() const {
  return needVerifyConnection(isExisting_);
}

void XCDlgNewModifyZelLampManager::OnOK() {
  UpdateData(true);
  const lamp::DeviceValues& typed = values_;
  if (!IsValid(typed.name, typed.address, typed.socket, typed.ftpAddress, typed.ftpPort.ToInt()))
    return;
  if (!HasChanged(typed.name, typed.description, typed.identifier, typed.address, typed.socket,
                  typed.ftpAddress, typed.ftpPort, typed.ftpUser, typed.ftpPassword))
    return CloseUnchanged();
  bool reached = true;
  if (commChanged_ && NeedCheckComm() && !VerifyConnection(reached)) return;
  if (reached && NeedsChildDevices() && !FetchChildDevices() && !AskWithoutNodes()) return;
  lamp::writeValues(*device_, values_);
  EndDialog(IDOK);
}

// False when the dialog stays open. @p reached tells whether the controller answered: the user may
// save a device without.
bool XCDlgNewModifyZelLampManager::VerifyConnection(bool& reached) {
  reached = SearchDevice(values_.address, values_.socket, values_.identifier);
  if (reached) return true;
  if (silentFailure()) return false;
  if (!getErrorMsg().IsEmpty()) MessageBox(getErrorMsg());
  return MessageBox(isExisting_ ? TextId::ExistingDeviceNotReachedQuestion
                                : TextId::NewDeviceNotReachedQuestion,
                    host::MessageButtons::yesNo, host::MessageIcon::question) == IDYES;
}

void XCDlgNewModifyZelLampManager::CloseUnchanged() {
  if (!NeedsChildDevices()) return EndDialog(IDCANCEL);
  if (FetchChildDevices()) return EndDialog(IDOK);
  if (AskWithoutNodes()) EndDialog(IDCANCEL);
}

void XCDlgNewModifyZelLampManager::OnCancel() {
  const bool save = advancedApplied_ && !device_->Value(config::Name).IsEmpty();
  EndDialog(save ? IDOK : IDCANCEL);
}

void XCDlgNewModifyZelLampManager::OnComAdvancedCfg() {
  if (!SearchIdDevice()) return;
  XmlDocument document(AdvancedCfg);
  document.Root()->NewChild(lamp::section::GeneralRead);
  if (!ReadCfg(document)) return;
  XCBasicString uriParameters;
  addUriParams(uriParameters, true);
  if (XCDlgAdvancedCfgZelLampManager(this, &document, uriParameters).DoModal() != IDOK) return;
  advancedApplied_ = true;
  const XmlDocument::XmlNode* root = document.Root();
  const auto* written = root ? root->Node(lamp::section::GeneralWrite.text()) : nullptr;
  if (written == nullptr) return;
  TakeOver(*written, lamp::attribute::ControllerAddress, lamp::device_control::Address,
           config::Address);
  TakeOver(*written, lamp::attribute::WebServicePort, lamp::device_control::Socket, config::Socket);
}

// The controller is reached by the new value from now on, so the element takes it at once.
void XCDlgNewModifyZelLampManager::TakeOver(const XmlDocument::XmlNode& written,
                                            host::XmlName attribute, int editId,
                                            host::XmlName child) {
  const XCBasicString value = written.getAttribute(attribute);
  if (value.IsEmpty()) return;
  SetDlgItemText(editId, lamp::cutAt(value, Edit(editId).limit()));
  device_->SetValue(child, value);
}

bool XCDlgNewModifyZelLampManager::ReadCfg(XmlDocument& document) {
  return lamp::readWithMessage(*this, lamp::Command::readSection, document);
}

bool XCDlgNewModifyZelLampManager::addUriParams(XCBasicString& uri, bool first) {
  for (const host::XmlName own : {config::Driver, config::Type})
    if (addUriParam(uri, host::toUtf16(own.text()), device_->Value(own), first)) first = false;
  for (const DeviceField& field : lamp::communicationFields())
    if (addUriParam(uri, host::toUtf16(field.child.text()), GetDlgItemText(field.edit), first))
      first = false;
  return true;
}
