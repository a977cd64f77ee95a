#include "host/dialogs/fast_selection_dlg.h"

#include "host/dialogs/host_templates.h"

using Id = host::FastSelectionControl;
using host::TextId;
namespace layout = host::layout;

namespace {

const host::XmlName DayTypeName("name");
const host::XmlName DayTypeColour("color");

}  // namespace

CDlgFastSelection::CDlgFastSelection(CWnd* parent, const XmlDocument& dayTypes, int year,
                                     int firstMonth, int lastMonth, int chosen)
    : XCBaseDlg(host::FastSelectionTemplate, parent),
      dayTypes_(dayTypes),
      year_(year),
      firstMonth_(firstMonth),
      lastMonth_(lastMonth),
      dayType_(chosen) {}

bool CDlgFastSelection::OnInitDialog() {
  SetWindowText(XCLoadString(TextId::FastSelection) + u" - " + host::decimal(year_));
  for (int month = 1; month <= host::MonthCount; ++month)
    if (month < firstMonth_ || month > lastMonth_)
      GetDlgItem(Id::FirstMonth + month - 1)
          .setEnabled(false, XCLoadString(TextId::MonthWithoutDays));
  host::ComboControl& types = Combo(Id::DayType);
  if (dayTypes_.Root() != nullptr)
    for (const XmlDocument::XmlNode& type : dayTypes_.Root()->Children())
      types.addItem(type.Value(DayTypeName));
  if (dayType_ >= 0) types.select(static_cast<std::size_t>(dayType_));
  OnDayTypeChosen();
  return XCBaseDlg::OnInitDialog();
}

// Shows the colour of the day type beside its name.
void CDlgFastSelection::OnDayTypeChosen() {
  const auto selected = Combo(Id::DayType).selected();
  std::string swatch;
  if (selected && dayTypes_.Root() != nullptr) {
    std::size_t left = *selected;
    for (const XmlDocument::XmlNode& type : dayTypes_.Root()->Children())
      if (left-- == 0) swatch = "#" + type.Value(DayTypeColour).ToUtf8();
  }
  Get<host::ImageControl>(Id::Swatch).setImage(std::move(swatch));
}

unsigned CDlgFastSelection::checkedBits(int firstId, int count) const {
  unsigned bits = 0;
  for (int i = 0; i < count; ++i)
    if (Check(firstId + i).isOn()) bits |= 1U << i;
  return bits;
}

void CDlgFastSelection::DoDataExchange(CDataExchange* exchange) {
  if (!exchange->m_bSaveAndValidate) return;
  months_ = checkedBits(Id::FirstMonth, host::MonthCount);
  weekdays_ = checkedBits(Id::FirstWeekday, host::WeekdayCount);
  const auto selected = Combo(Id::DayType).selected();
  dayType_ = selected ? static_cast<int>(*selected) : -1;
}

void CDlgFastSelection::OnOK() {
  UpdateData(true);
  EndDialog(IDOK);
}

const host::MessageMap* CDlgFastSelection::GetMessageMap() const {
  static constexpr host::MessageEntry entries[] = {
      host::onChoose<&CDlgFastSelection::OnDayTypeChosen>(Id::DayType)};
  static constexpr host::MessageMap map{nullptr, entries};
  return &map;
}

void CDlgFastSelection::Layout() {
  const auto checks = [](int firstId, int count) {
    std::vector<host::LayoutItem> items;
    for (int i = 0; i < count; ++i) items.push_back(layout::control(firstId + i));
    return items;
  };
  SetLayout(XCVerticalLayout(
      {XCHoritzontalLayout(
           {layout::box(Id::MonthsGroup,
                        {layout::grid(2, checks(Id::FirstMonth, host::MonthCount))}, 1),
            layout::box(Id::WeekdaysGroup, checks(Id::FirstWeekday, host::WeekdayCount))}),
       layout::control(Id::DayTypeLabel),
       XCHoritzontalLayout({layout::control(Id::Swatch), layout::control(Id::DayType, 1)}),
       layout::stretch(), layout::okCancelRow()}));
}
