#include "programs/calendar_editor.h"

#include "exchange/template_numbers.h"
#include "host/dialogs/fast_selection_dlg.h"
#include "host/dialogs/identification_dlg.h"
#include "host/services/files.h"
#include "host/services/setup.h"
#include "programs/calendar_names.h"
#include "programs/calendar_selection.h"
#include "programs/calendar_store.h"
#include "programs/day_types.h"
#include "programs/day_types_dialog.h"

using host::TextId;
using lamp::ProgramKind;
using Editor = XCDeviceCalendarZelLAMPManager;
using Node = XmlDocument::XmlNode;
namespace calendar = lamp::calendar;
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

// The day types as the fast selection takes them.
XmlDocument dayTypesDocument() {
  XmlDocument document("dayTypes");
  for (int number = 0; number < lamp::DayTypeCount; ++number) {
    const XCCalendar::DayType type = lamp::dayType(number);
    Node& day = document.Root()->NewChild(calendar::Day);
    day.SetValue(calendar::Name, type.name);
    day.SetValue("color", XCBasicString::FromUtf8(lamp::hexColour(type.colour)));
  }
  return document;
}

}  // namespace

Editor::XCDeviceCalendarZelLAMPManager(CWnd* parent, XCDriver* driver, Node* device,
                                       ProgramKind kind)
    : XCBaseDlg(lamp::template_number::CalendarEditor, parent),
      driver_(driver),
      device_(device),
      kind_(kind),
      calendar_(kind),
      year_(Get<XCCalendar>(Id::Year), lamp::calendarSpan(XCDateTime::LTC())) {}

host::DialogTemplate Editor::Template() {
  host::DialogTemplate dialog{lamp::template_number::CalendarEditor,
                              "XCDeviceCalendarZelLAMPManager",
                              "",
                              {host::year(Id::Year, "year"),
                               host::group(Id::DayTypesGroup, "dayTypesGroup", TextId::DayTypes)}};
  for (int number = 0; number < lamp::DayTypeCount; ++number)
    dialog.controls.push_back(
        host::radio(Id::FirstDayType + number, "dayType" + std::to_string(number)));
  dialog.controls.push_back(
      host::button(Id::FastSelection, "fastSelection", TextId::FastSelection, "OPTIONS-16.png"));
  dialog.controls.push_back(
      host::button(Id::DayTypes, "dayTypes", TextId::EditDayTypes, "OPTIONS-16.png"));
  dialog.controls.push_back(host::button(Id::Load, "load", TextId::OpenCalendar, "LOAD-16.png"));
  dialog.controls.push_back(host::button(Id::Save, "save", TextId::SaveCalendarAs, "SAVE-16.png"));
  dialog.controls.push_back(host::label(Id::NameLabel, "nameLabel", TextId::Name));
  dialog.controls.push_back(host::readOnlyEdit(Id::Name, "name"));
  dialog.controls.push_back(host::okButton());
  dialog.controls.push_back(host::cancelButton());
  dialog.openingSizeIsLeast = true;
  return dialog;
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
  for (int number = 0; number < lamp::DayTypeCount; ++number) {
    const XCCalendar::DayType type = lamp::dayType(number);
    SetDlgItemText(Id::FirstDayType + number, type.name);
    Check(Id::FirstDayType + number).setSwatch(type.colour);
  }
  year_.initialise();
  year_.apply({});
  openNamedCalendar();
  enableLoad(!lamp::storedCalendars().empty());
  year_.choosePaint(selectedDayType_);
  return XCBaseDlg::OnInitDialog();
}

// The calendar that the device element names; a new one when it names none, or one that can't be
// loaded. The name stays the current one in either case.
void Editor::openNamedCalendar() {
  if (device_ != nullptr) openingName_ = device_->Value(calendar::Calendar);
  setCurrentName(openingName_);
  if (!openingName_.IsEmpty() && load(openingName_)) return;
  lamp::completeDays(calendar_.root().NewChild(calendar::Days), kind_);
  settle();
}

void Editor::Layout() {
  std::vector<host::LayoutItem> dayTypes;
  for (int number = 0; number < lamp::DayTypeCount; ++number)
    dayTypes.push_back(layout::control(Id::FirstDayType + number));
  SetLayout(XCVerticalLayout(
      {XCHoritzontalLayout(
           {layout::control(Id::Year, 1),
            XCVerticalLayout({layout::box(Id::DayTypesGroup, std::move(dayTypes)),
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
  year_.choosePaint(selectedDayType_);
}

void Editor::OnFastSelection() {
  const XmlDocument dayTypes = dayTypesDocument();
  const lamp::CalendarSpan part = year_.shownPart();
  CDlgFastSelection dialog(this, dayTypes, part.first.Year(), part.first.Month(), part.last.Month(),
                           selectedDayType_);
  if (dialog.DoModal() != IDOK) return;
  const int chosen = dialog.DayTypeIndex();
  if (chosen >= 0 && chosen < lamp::DayTypeCount)
    year_.paint(dialog.MonthMask(), dialog.WeekdayMask(), chosen);
}

void Editor::OnDayTypes() {
  Node* days = calendar_.root().Node(calendar::Days.text());
  const bool missing = days == nullptr;
  if (missing) days = &calendar_.root().NewChild(calendar::Days);
  const int result = XCDeviceCalendarDayTypesZelLAMPManager(this, days, kind_).DoModal();
  // What was only made for the dialog is no change of the calendar.
  if (missing && result != IDOK) calendar_.root().RemoveChild(days);
}

void Editor::OnLoad() {
  XCDeviceCalendarSelectionZelLAMPManager selection(this, kind_);
  if (selection.DoModal() == IDOK) load(selection.CalendarName());
}

// Only what is painted or edited from here on is a change.
void Editor::settle() {
  calendar_.setYear(year_.year());
  calendar_.settle();
}

bool Editor::load(const XCBasicString& name) {
  if (!calendar_.load(lamp::calendarFile(name))) {
    MessageBox(TextId::CalendarNotRead, host::MessageButtons::ok, host::MessageIcon::warning);
    return false;
  }
  year_.apply(calendar_.year());
  settle();
  setCurrentName(name);
  return true;
}

bool Editor::SaveAs() {
  for (XCBasicString proposed = currentName_;; proposed.Empty()) {
    CDlgIntroduceIdentification entry(this, XCLoadString(TextId::SaveCalendarAs),
                                      XCLoadString(TextId::Name), proposed);
    if (entry.DoModal() != IDOK) return false;
    const auto file = lamp::calendarFile(entry.Identification());
    if (file && mayWrite(*file)) return write(*file, entry.Identification());
  }
}

// A calendar for the other kind of controller is never overwritten; others only when the user
// agrees.
bool Editor::mayWrite(const std::filesystem::path& file) {
  if (!host::fileSystem().exists(file)) return true;
  XmlDocument present;
  const XCBasicString ownMark = calendar_.root().Value(calendar::HasModule);
  if (lamp::readCalendar(file, present) && !lamp::isOfKind(present, ownMark)) {
    MessageBox(TextId::CalendarOfOtherKind);
    return false;
  }
  return MessageBox(TextId::OverwriteCalendarQuestion, host::MessageButtons::yesNo,
                    host::MessageIcon::question) == IDYES;
}

bool Editor::write(const std::filesystem::path& file, const XCBasicString& name) {
  calendar_.setYear(year_.year());
  const bool written = [&] {
    const host::WaitCursor wait;
    return calendar_.save(file, name);
  }();
  if (!written) {
    MessageBox(TextId::CalendarNotSaved, host::MessageButtons::ok, host::MessageIcon::warning);
    return false;
  }
  enableLoad(true);
  setCurrentName(name);
  savedWhileOpen_ = true;
  return true;
}

void Editor::enableLoad(bool enabled) {
  GetDlgItem(Id::Load).setEnabled(
      enabled, enabled ? XCBasicString() : XCLoadString(TextId::NoCalendarStored));
}

void Editor::setCurrentName(const XCBasicString& name) {
  currentName_ = name;
  SetDlgItemText(Id::Name, name);
}

void Editor::OnOK() {
  UpdateData(true);
  calendar_.setYear(year_.year());
  const bool changed = calendar_.changed();
  if (!changed && currentName_ == openingName_ && !savedWhileOpen_) return EndDialog(IDCANCEL);
  if (changed && !SaveAs()) return;
  if (device_ != nullptr) device_->SetValue(calendar::Calendar, currentName_);
  XCVarnisGuids::Get().Invalidate(XCVarnisGuids::DeviceConfiguration);
  EndDialog(IDOK);
}
