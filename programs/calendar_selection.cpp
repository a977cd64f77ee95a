#include "programs/calendar_selection.h"

#include "exchange/template_numbers.h"
#include "programs/calendar_store.h"
#include "programs/program_lists.h"

using host::TextId;
using lamp::ProgramKind;
namespace layout = host::layout;

namespace {

enum Id {
  FilesGroup = host::privateId(0),
  Files,
};

/// What a calendar's row is drawn in when it is of the other kind, or can't be read.
constexpr host::Colour UnusableColour{0xA0, 0xA0, 0xA0};

}  // namespace

XCDeviceCalendarSelectionZelLAMPManager::XCDeviceCalendarSelectionZelLAMPManager(CWnd* parent,
                                                                                 ProgramKind kind)
    : XCBaseDlg(lamp::template_number::CalendarSelection, parent), kind_(kind) {}

host::DialogTemplate XCDeviceCalendarSelectionZelLAMPManager::Template() {
  return {lamp::template_number::CalendarSelection,
          "XCDeviceCalendarSelectionZelLAMPManager",
          "",
          {host::group(Id::FilesGroup, "filesGroup"), host::singleSelectList(Id::Files, "files"),
           host::okButton(), host::cancelButton()}};
}

const host::MessageMap* XCDeviceCalendarSelectionZelLAMPManager::GetMessageMap() const {
  using Dialog = XCDeviceCalendarSelectionZelLAMPManager;
  static constexpr host::MessageEntry entries[] = {
      host::onSelection<&Dialog::OnSelectionChanged>(Id::Files),
      host::onDoubleClick<&Dialog::OnDoubleClick>(Id::Files)};
  static constexpr host::MessageMap map{nullptr, entries};
  return &map;
}

bool XCDeviceCalendarSelectionZelLAMPManager::OnInitDialog() {
  SetWindowText(XCLoadString(TextId::OpenCalendar));
  List(Id::Files).setColumns(CFilesListCtrl::Columns());
  fillList();
  OnSelectionChanged();
  return XCBaseDlg::OnInitDialog();
}

void XCDeviceCalendarSelectionZelLAMPManager::fillList() {
  host::ListControl& files = List(Id::Files);
  for (const XCBasicString& name : lamp::storedCalendars()) {
    XmlDocument calendar;
    const bool usable = lamp::readCalendar(lamp::calendarFile(name), calendar) &&
                        lamp::isOfKind(calendar, lamp::moduleMark(kind_));
    const std::size_t row = files.addRow({nullptr, usable ? 1 : 0});
    files.setCell(row, 0, name);
    if (!usable) files.setColour(row, UnusableColour);
  }
}

void XCDeviceCalendarSelectionZelLAMPManager::Layout() {
  SetLayout(XCVerticalLayout(
      {layout::box(Id::FilesGroup, {layout::control(Id::Files, 1)}, 1), layout::okCancelRow()}));
}

void XCDeviceCalendarSelectionZelLAMPManager::OnSelectionChanged() {
  const bool chosen = !List(Id::Files).selection().empty();
  GetDlgItem(IDOK).setEnabled(chosen,
                              chosen ? XCBasicString() : XCLoadString(TextId::NoCalendarSelected));
}

void XCDeviceCalendarSelectionZelLAMPManager::OnDoubleClick() {
  if (!List(Id::Files).selection().empty()) OnOK();
}

// A file that can't be read is taken: whoever loads it then says what is wrong with it.
void XCDeviceCalendarSelectionZelLAMPManager::OnOK() {
  const host::ListControl& files = List(Id::Files);
  if (files.selection().empty()) return;
  const XCBasicString name = files.cell(files.selection().front(), 0);
  const auto file = lamp::calendarFile(name);
  XmlDocument calendar;
  if (lamp::readCalendar(file, calendar) && !lamp::isOfKind(calendar, lamp::moduleMark(kind_))) {
    MessageBox(kind_ == ProgramKind::clock ? TextId::CalendarWithoutInputsAndOutputs
                                           : TextId::CalendarWithInputsAndOutputs,
               host::MessageButtons::ok, host::MessageIcon::warning);
    return;
  }
  name_ = name;
  file_ = file.value_or(std::filesystem::path());
  EndDialog(IDOK);
}
