#include "programs/calendar_selection.h"

#include <utility>

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

const host::XmlName FileNumber("number");

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

// A file is read by the path that it was found under: its title may be no name that could be typed.
void XCDeviceCalendarSelectionZelLAMPManager::fillList() {
  host::ListControl& files = List(Id::Files);
  for (lamp::StoredCalendar& stored : lamp::storedCalendars()) {
    XmlDocument calendar;
    const bool usable = lamp::readCalendar(stored.file, calendar) &&
                        lamp::isOfKind(calendar, lamp::moduleMark(kind_));
    XmlDocument::XmlNode& element = rows_.Root()->NewChild("file");
    element.setAttribute(FileNumber, XCBasicString::Format(u"%u", files_.size()));
    files_.push_back(std::move(stored.file));
    const std::size_t row = files.addRow({&element, usable ? 1 : 0});
    files.setCell(row, 0, stored.title);
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
  const std::size_t row = files.selection().front();
  const auto number = files.element(row)->attribute(FileNumber).toInt();
  const std::filesystem::path& file = files_[static_cast<std::size_t>(number)];
  XmlDocument calendar;
  if (lamp::readCalendar(file, calendar) && !lamp::isOfKind(calendar, lamp::moduleMark(kind_))) {
    MessageBox(kind_ == ProgramKind::clock ? TextId::CalendarWithoutInputsAndOutputs
                                           : TextId::CalendarWithInputsAndOutputs,
               host::MessageButtons::ok, host::MessageIcon::warning);
    return;
  }
  name_ = files.cell(row, 0);
  file_ = file;
  EndDialog(IDOK);
}
