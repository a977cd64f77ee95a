#include "device/communication_settings_dialog.h"

#include <iterator>

#include "exchange/exchange_frame.h"
#include "exchange/template_numbers.h"

using host::TextId;
namespace layout = host::layout;

namespace {

enum class Kind { text, digits, mask, noYes };

// Who may change a field, and whether it may be empty.
enum class Rule { required, optional, setByController };

struct Field {
  host::XmlName attribute;  // also the control's name
  int label;
  int control;
  TextId caption;
  Kind kind;
  Rule rule;
};

// In the order in which changes are sent.
const Field Fields[] = {
    {lamp::attribute::ControllerAddress, 6366, 6367, TextId::Address, Kind::text, Rule::required},
    {"ipMask", 6368, 6369, TextId::SubnetMask, Kind::mask, Rule::optional},
    {"ipGtw", 6370, 6371, TextId::Gateway, Kind::text, Rule::required},
    {"ipDhcp", 6372, 6373, TextId::Dhcp, Kind::noYes, Rule::optional},
    {"PrimaryDns", 6374, 6375, TextId::PrimaryDns, Kind::text, Rule::required},
    {"SecondaryDns", 6376, 6377, TextId::SecondaryDns, Kind::text, Rule::required},
    {"ipLoc", 6378, 6379, TextId::LocalAddress, Kind::text, Rule::setByController},
    {"ipMaskLoc", 6380, 6381, TextId::LocalSubnetMask, Kind::text, Rule::setByController},
    {lamp::attribute::WebServicePort, 6382, 6383, TextId::WebServicePort, Kind::digits,
     Rule::required},
    {"Pse", 6384, 6385, TextId::ServicePort, Kind::digits, Rule::setByController},
};

constexpr std::size_t FieldCount = std::size(Fields);
constexpr int SettingsGroup = 6459;

host::ControlSpec controlOf(const Field& field) {
  const std::string name(field.attribute.text());
  switch (field.kind) {
    case Kind::digits:
      return host::digitsEdit(field.control, name);
    case Kind::mask:
      return host::ipAddress(field.control, name);
    case Kind::noYes:
      return host::combo(field.control, name);
    case Kind::text:
      break;
  }
  return host::edit(field.control, name);
}

// Between a list's chosen entry and the one character that is sent for it. A text that is no
// entry's chooses none; without a chosen entry the text stays.
void exchangeChoice(const CDataExchange& exchange, int control, XCBasicString& value) {
  host::ComboControl& list = exchange.m_pDlgWnd.Combo(control);
  if (!exchange.m_bSaveAndValidate)
    list.selectData(value.Length() == 1 ? value[0] : 0);
  else if (const auto chosen = list.selectedData())
    value = std::u16string(1, static_cast<char16_t>(*chosen));
}

}  // namespace

XCDlgAdvancedCfgZelLampManager::XCDlgAdvancedCfgZelLampManager(CWnd* parent, XmlDocument* doc,
                                                               XCBasicString uriParams)
    : XCBaseDlg(lamp::template_number::CommunicationSettings, parent),
      document_(doc),
      uriParams_(std::move(uriParams)),
      loaded_(FieldCount),
      current_(FieldCount) {}

XCDlgAdvancedCfgZelLampManager::~XCDlgAdvancedCfgZelLampManager() = default;

host::DialogTemplate XCDlgAdvancedCfgZelLampManager::Template() {
  host::DialogTemplate dialog{lamp::template_number::CommunicationSettings,
                              "XCDlgAdvancedCfgZelLampManager",
                              "",
                              {host::group(SettingsGroup, "settingsGroup", TextId::Communication)}};
  for (const Field& field : Fields) {
    dialog.controls.push_back(
        host::label(field.label, std::string(field.attribute.text()) + "Label", field.caption));
    dialog.controls.push_back(controlOf(field));
  }
  dialog.controls.push_back(host::okButton());
  dialog.controls.push_back(host::cancelButton());
  return dialog;
}

const host::MessageMap* XCDlgAdvancedCfgZelLampManager::GetMessageMap() const {
  return XCBaseDlg::GetMessageMap();
}

bool XCDlgAdvancedCfgZelLampManager::OnInitDialog() {
  SetWindowText(XCLoadString(TextId::CommunicationSettings));
  Initialize();
  return XCBaseDlg::OnInitDialog();
}

void XCDlgAdvancedCfgZelLampManager::Initialize() {
  const XmlDocument::XmlNode* section = lamp::sectionOf(*document_, lamp::section::GeneralRead);
  for (std::size_t i = 0; i < FieldCount; ++i) {
    const Field& field = Fields[i];
    if (section != nullptr) loaded_[i] = section->getAttribute(field.attribute);
    if (field.kind == Kind::noYes) {
      host::ComboControl& list = Combo(field.control);
      list.clearItems();
      list.addItem(XCLoadString(TextId::SettingNo), u'N');
      list.addItem(XCLoadString(TextId::SettingYes), u'Y');
    }
    if (field.rule == Rule::setByController)
      GetDlgItem(field.control).setEnabled(false, XCLoadString(TextId::SetByController));
  }
  current_ = loaded_;
  UpdateData(false);
}

void XCDlgAdvancedCfgZelLampManager::DoDataExchange(CDataExchange* exchange) {
  for (std::size_t i = 0; i < FieldCount; ++i) {
    if (Fields[i].kind == Kind::noYes)
      exchangeChoice(*exchange, Fields[i].control, current_[i]);
    else
      DDX_Text(*exchange, Fields[i].control, current_[i]);
  }
}

void XCDlgAdvancedCfgZelLampManager::Layout() {
  std::vector<host::LayoutItem> pieces;
  for (const Field& field : Fields) {
    pieces.push_back(layout::control(field.label));
    pieces.push_back(layout::control(field.control, 1));
  }
  SetLayout(XCVerticalLayout({layout::box(SettingsGroup, {layout::grid(2, std::move(pieces))}),
                              layout::stretch(), layout::okCancelRow()}));
}

void XCDlgAdvancedCfgZelLampManager::OnOK() {
  UpdateData(true);
  if (!IsValidCfg()) return;
  const bool sent = [this] {
    const host::WaitCursor wait;
    return Send();
  }();
  if (sent) EndDialog(IDOK);
}

bool XCDlgAdvancedCfgZelLampManager::IsValidCfg() {
  for (const Field& field : Fields) {
    if (field.rule != Rule::required || !GetDlgItemText(field.control).IsEmpty()) continue;
    MessageBox(TextId::FieldInvalid);
    FocusAndSelectAll(field.control);
    return false;
  }
  return true;
}

bool XCDlgAdvancedCfgZelLampManager::Send() {
  XmlDocument::XmlNode& written = lamp::beginWrite(*document_, lamp::section::GeneralWrite);
  for (std::size_t i = 0; i < FieldCount; ++i)
    if (Fields[i].rule != Rule::setByController)
      lamp::putIfChanged(written, Fields[i].attribute, current_[i], loaded_[i]);
  return written.attributeCount() == 0 || WriteCfg();
}

bool XCDlgAdvancedCfgZelLampManager::WriteCfg() {
  return lamp::sendWithRetry(*this, lamp::Command::writeSection, *document_);
}

bool XCDlgAdvancedCfgZelLampManager::addUriParams(XCBasicString& uri, bool) {
  uri += uriParams_;
  return true;
}
