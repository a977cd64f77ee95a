#include "host/dialogs/identification_dlg.h"

#include "host/dialogs/host_templates.h"
#include "host/services/identity.h"

using Id = host::IdentificationControl;
namespace layout = host::layout;

CDlgIntroduceIdentification::CDlgIntroduceIdentification(CWnd* parent, std::u16string_view title,
                                                         std::u16string_view label,
                                                         std::u16string_view proposed)
    : XCBaseDlg(host::IdentificationTemplate, parent),
      title_(title),
      label_(label),
      identification_(proposed) {}

bool CDlgIntroduceIdentification::OnInitDialog() {
  SetWindowText(title_);
  SetDlgItemText(Id::Label, label_);
  XCBaseDlg::OnInitDialog();
  FocusAndSelectAll(Id::Entry);
  return false;
}

void CDlgIntroduceIdentification::DoDataExchange(CDataExchange* exchange) {
  DDX_Text(*exchange, Id::Entry, identification_);
}

void CDlgIntroduceIdentification::OnOK() {
  UpdateData(true);
  if (IsValidId(identification_, true) && !host::isDeviceName(identification_))
    return EndDialog(IDOK);
  MessageBox(host::TextId::NameInvalid);
  FocusAndSelectAll(Id::Entry);
}

void CDlgIntroduceIdentification::Layout() {
  SetLayout(XCVerticalLayout(
      {layout::labelled(Id::Label, Id::Entry), layout::stretch(), layout::okCancelRow()}));
}
