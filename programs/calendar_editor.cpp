#include "programs/calendar_editor.h"

#include "exchange/template_numbers.h"
#include "host/dialogs/fast_selection_dlg.h"
#include "host/services/setup.h"
#include "pages/binding/row_page.h"
#include "programs/calendar_names.h"
#include "programs/calendar_selection.h"
#include "programs/calendar_store.h"
#include "programs/calendar_table.h"
#include "programs/day_type_buttons.h"
#include "programs/day_types.h"
#include "programs/day_types_dialog.h"

using host::TextId;
using lamp::ProgramKind;
using Editor = XCDeviceCalendarZelLAMPManager;
using Node = XmlDocument::XmlNode;
namespace layout = host::layout;

namespace {

enum Id {
  Year = host::privateId(0),
  DayTypesGroup,
  FirstDayType,
  LastDayType = FirstDayType + lamp::DayTypeCount - 1,
  FastSelection,
  DayTypes,
  Load,
  Save,
  NameLabel,
  Name,
};

host::PageDescription makeTable(ProgramKind kind) {
  return lamp::calendarTable(kind,
                             {.year = Id::Year, .name = Id::Name, .nameLabel = Id::NameLabel});
}

}  // namespace

const host::PageDescription& Editor::PageTable(ProgramKind kind) {
  static const host::PageDescription interval = makeTable(ProgramKind::interval);
  static const host::PageDescription clock = makeTable(ProgramKind::clock);
  return kind == ProgramKind::clock ? clock : interval;
}

Editor::XCDeviceCalendarZelLAMPManager(CWnd* parent, XCDriver* driver, Node* device,
                                       ProgramKind kind)
    : XCBaseDlg(lamp::template_number::CalendarEditor, parent),
      driver_(driver),
      kind_(kind),
      calendar_(PageTable(kind), kind, Get<XCCalendar>(Id::Year), device) {}

host::DialogTemplate Editor::Template() {
  return {lamp::template_number::CalendarEditor, "XCDeviceCalendarZelLAMPManager", "",
          lamp::joined(
              {{host::year(Id::Year, "year"),
                host::group(Id::DayTypesGroup, "dayTypesGroup", TextId::DayTypes)},
               lamp::dayTypeButtons(Id::FirstDayType),
               {host::button(Id::FastSelection, "fastSelection", TextId::FastSelection,
                             "OPTIONS-16.png"),
                host::button(Id::DayTypes, "dayTypes", TextId::EditDayTypes, "OPTIONS-16.png"),
                host::button(Id::Load, "load", TextId::OpenCalendar, "LOAD-16.png"),
                host::button(Id::Save, "save", TextId::SaveCalendarAs, "SAVE-16.png"),
                host::label(Id::NameLabel, "nameLabel", TextId::Name),
                host::readOnlyEdit(Id::Name, "name"), host::okButton(), host::cancelButton()}}),
          true};
}

const host::MessageMap* Editor::GetMessageMap() const {
  static constexpr host::MessageEntry entries[] = {
      host::onClick<&Editor::OnDayTypeChosen>(Id::FirstDayType, Id::LastDayType),
      host::onClick<&Editor::OnFastSelection>(Id::FastSelection),
      host::onClick<&Editor::OnDayTypes>(Id::DayTypes), host::onClick<&Editor::OnLoad>(Id::Load),
      host::onClick<&Editor::OnSave>(Id::Save)};
  static constexpr host::MessageMap map{nullptr, entries};
  return &map;
}

bool Editor::OnInitDialog() {
  SetWindowText(XCBasicString::Format(u"%s - %s", XCLoadString(TextId::Calendar), driver_->Name()));
  lamp::showDayTypes(*this, Id::FirstDayType);
  calendar_.initialise();
  openNamedCalendar();
  enableLoad(!lamp::storedCalendars().empty());
  calendar_.year().choosePaint(selectedDayType_);
  return XCBaseDlg::OnInitDialog();
}

// The calendar that the device element names; a new one when it names none, or one that can't be
// loaded. The name stays the current one in either case.
void Editor::openNamedCalendar() {
  showName();
  const XCBasicString named = calendar_.name();
  if (named.IsEmpty() || !load(named, lamp::calendarFile(named))) calendar_.begin();
}

void Editor::Layout() {
  SetLayout(XCVerticalLayout(
      {XCHoritzontalLayout(
           {layout::control(Id::Year, 1),
            XCVerticalLayout({lamp::dayTypeBox(Id::DayTypesGroup, Id::FirstDayType),
                              layout::control(Id::FastSelection), layout::control(Id::DayTypes),
                              layout::gap(10), layout::labelled(Id::NameLabel, Id::Name),
                              layout::control(Id::Load), layout::control(Id::Save),
                              layout::stretch()})},
           1),
       layout::okCancelRow()}));
}

void Editor::DoDataExchange(CDataExchange* exchange) {
  DDX_Radio(*exchange, Id::FirstDayType, selectedDayType_);
}

void Editor::OnDayTypeChosen() {
  UpdateData(true);
  calendar_.year().choosePaint(selectedDayType_);
}

void Editor::OnFastSelection() {
  const XmlDocument dayTypes = lamp::dayTypesDocument();
  const lamp::CalendarSpan part = calendar_.year().shownPart();
  CDlgFastSelection dialog(this, dayTypes, part.first.Year(), part.first.Month(), part.last.Month(),
                           selectedDayType_);
  if (dialog.DoModal() != IDOK) return;
  const int chosen = dialog.DayTypeIndex();
  if (chosen >= 0 && chosen < lamp::DayTypeCount)
    calendar_.year().paint(dialog.MonthMask(), dialog.WeekdayMask(), chosen);
}

void Editor::OnDayTypes() {
  Node& root = calendar_.document().root();
  Node* days = root.Node(lamp::calendar::Days.text());
  const bool missing = days == nullptr;
  if (missing) days = &root.NewChild(lamp::calendar::Days);
  const int result = XCDeviceCalendarDayTypesZelLAMPManager(this, days, kind_).DoModal();
  // Removes the placeholder, so that Cancel leaves the calendar unchanged.
  if (missing && result != IDOK) root.RemoveChild(days);
}

void Editor::OnLoad() {
  XCDeviceCalendarSelectionZelLAMPManager selection(this, kind_);
  if (selection.DoModal() == IDOK) load(selection.CalendarName(), selection.CalendarFile());
}

bool Editor::load(const XCBasicString& name, const std::optional<std::filesystem::path>& file) {
  if (!calendar_.load(name, file)) {
    MessageBox(TextId::CalendarNotRead, host::MessageButtons::ok, host::MessageIcon::warning);
    return false;
  }
  showName();
  return true;
}

bool Editor::SaveAs() {
  const auto target = lamp::askForTarget(*this, calendar_.document(), calendar_.name());
  return target && write(*target);
}

bool Editor::write(const lamp::CalendarTarget& target) {
  const bool written = [&] {
    const host::WaitCursor wait;
    return calendar_.save(target);
  }();
  if (!written) {
    MessageBox(TextId::CalendarNotSaved, host::MessageButtons::ok, host::MessageIcon::warning);
    return false;
  }
  enableLoad(true);
  showName();
  savedWhileOpen_ = true;
  return true;
}

void Editor::enableLoad(bool enabled) {
  GetDlgItem(Id::Load).setEnabled(
      enabled, enabled ? XCBasicString() : XCLoadString(TextId::NoCalendarStored));
}

void Editor::showName() {
  SetDlgItemText(Id::Name, calendar_.name());
}

void Editor::OnOK() {
  UpdateData(true);
  const bool changed = calendar_.changed();
  if (!changed && !calendar_.isAnother() && !savedWhileOpen_) return EndDialog(IDCANCEL);
  if (changed && !SaveAs()) return;
  calendar_.assign();
  XCVarnisGuids::Get().Invalidate(XCVarnisGuids::DeviceConfiguration);
  EndDialog(IDOK);
}
