#include "host/dialogs/driver_device_dlg.h"

#include "host/dialogs/host_templates.h"
#include "host/services/setup.h"

using host::TextId;
namespace layout = host::layout;

using Id = host::DriverDeviceControl;

namespace {

const host::XmlName Historic("historic");
const host::XmlName Period("period");

}  // namespace

XCDlgDriverDeviceCfg::XCDlgDriverDeviceCfg(CWnd* parent, XCDriver* driver,
                                           XmlDocument::XmlNode* device,
                                           XmlDocument::XmlNode* viewSetup)
    : XCBaseDlg(host::DriverDeviceTemplate, parent),
      driver_(driver),
      device_(device),
      viewSetup_(viewSetup) {}

bool XCDlgDriverDeviceCfg::OnInitDialog() {
  SetWindowText(XCVarnisSetup::Get().DriverName(driver_->Type()) + u" - " + driver_->Name());
  SetDlgItemText(Id::NameEdit, driver_->Name());
  SetDlgItemText(Id::DescriptionEdit,
                 device_ ? device_->Value("description") : driver_->Description());
  GetDlgItem(Id::HistoricCheck).setVisible(historicOffered_);
  GetDlgItem(Id::PeriodLabel).setVisible(periodOffered_);
  GetDlgItem(Id::PeriodEdit).setVisible(periodOffered_);
  if (viewSetup_ != nullptr) {
    historic_ = viewSetup_->Value(Historic) == u"T";
    period_ = viewSetup_->Value(Period);
  }
  return XCBaseDlg::OnInitDialog();
}

void XCDlgDriverDeviceCfg::DoDataExchange(CDataExchange* exchange) {
  DDX_Check(*exchange, Id::HistoricCheck, historic_);
  DDX_Text(*exchange, Id::PeriodEdit, period_);
}

void XCDlgDriverDeviceCfg::OnOK() {
  UpdateData(true);
  if (viewSetup_ == nullptr) {
    XmlDocument::XmlNode& root = *XCMainCfg::Get().Root();
    XmlDocument::XmlNode* setups = root.Node("viewSetups");
    if (setups == nullptr) setups = &root.NewChild("viewSetups");
    viewSetup_ = &setups->NewChild("viewSetup");
    viewSetup_->SetValue("driverId", driver_->Identifier());
  }
  if (historicOffered_) viewSetup_->SetValue(Historic, historic_ ? u"T" : u"F");
  if (periodOffered_) viewSetup_->SetValue(Period, period_);
  EndDialog(IDOK);
}

void XCDlgDriverDeviceCfg::Layout() {
  SetLayout(XCVerticalLayout(
      {layout::labelled(Id::NameLabel, Id::NameEdit),
       layout::labelled(Id::DescriptionLabel, Id::DescriptionEdit),
       layout::box(Id::ViewGroup, {layout::control(Id::HistoricCheck),
                                   layout::labelled(Id::PeriodLabel, Id::PeriodEdit)}),
       layout::stretch(), layout::okCancelRow()}));
}
