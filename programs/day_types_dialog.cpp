#include "programs/day_types_dialog.h"

#include "exchange/template_numbers.h"
#include "pages/binding/flag_guard.h"
#include "pages/binding/row_check.h"
#include "pages/binding/row_page.h"
#include "programs/calendar_names.h"
#include "programs/day_types.h"
#include "programs/program_lists.h"

using host::TextId;
using lamp::ProgramKind;
using Node = XmlDocument::XmlNode;
namespace layout = host::layout;

namespace {

enum Id {
  Days = host::privateId(0),
  FirstField,
  LastField = FirstField + lamp::ProgramFields::IdCount - 1,
};

/// Posted to the dialog itself when an edit's text changed, with the edit as its parameter.
constexpr int WriteBackMessage = 1126;

host::PageDescription makeTable(ProgramKind kind) {
  host::PageDescription page;
  page.rows = {lamp::dayTypeRows(lamp::ProgramFields::values(kind, Id::FirstField), Id::Days)};
  return page;
}

void putPrograms(const Node& days, XmlDocument& section) {
  lamp::copyPrograms(days, section.Create(lamp::calendar::Days));
}

}  // namespace

const host::PageDescription& XCDeviceCalendarDayTypesZelLAMPManager::PageTable(ProgramKind kind) {
  static const host::PageDescription interval = makeTable(ProgramKind::interval);
  static const host::PageDescription clock = makeTable(ProgramKind::clock);
  return kind == ProgramKind::clock ? clock : interval;
}

XCDeviceCalendarDayTypesZelLAMPManager::XCDeviceCalendarDayTypesZelLAMPManager(CWnd* parent,
                                                                               Node* days,
                                                                               ProgramKind kind)
    : XCBaseDlg(lamp::template_number::DayTypeEditor, parent),
      days_(days),
      kind_(kind),
      working_(lamp::calendar::Days),
      untouched_(lamp::calendar::Days),
      fields_(*this, PageTable(kind).rows.front()) {}

host::DialogTemplate XCDeviceCalendarDayTypesZelLAMPManager::Template() {
  return {lamp::template_number::DayTypeEditor, "XCDeviceCalendarDayTypesZelLAMPManager", "",
          lamp::joined({{host::list(Id::Days, "days")},
                        lamp::ProgramFields::controls(Id::FirstField),
                        {host::okButton(), host::cancelButton()}})};
}

const host::MessageMap* XCDeviceCalendarDayTypesZelLAMPManager::GetMessageMap() const {
  using Dialog = XCDeviceCalendarDayTypesZelLAMPManager;
  static constexpr host::MessageEntry entries[] = {
      host::onSelection<&Dialog::OnSelectionChanged>(Id::Days),
      host::onChange<&Dialog::OnFieldChanged>(Id::FirstField, Id::LastField),
      host::onPosted<&Dialog::OnWriteBack>(WriteBackMessage)};
  static constexpr host::MessageMap map{nullptr, entries};
  return &map;
}

bool XCDeviceCalendarDayTypesZelLAMPManager::OnInitDialog() {
  SetWindowText(XCLoadString(TextId::EditDayTypes));
  fields_.initialise();
  List(Id::Days).setColumns(CNodesListCtrl2::Columns(kind_));
  *working_.Root() = *days_;
  *untouched_.Root() = *days_;
  putPrograms(*days_, programsBefore_);
  fillList();
  return XCBaseDlg::OnInitDialog();
}

void XCDeviceCalendarDayTypesZelLAMPManager::fillList() {
  lamp::completeDays(*working_.Root(), kind_);
  host::ListControl& list = List(Id::Days);
  for (int number = 0; number < lamp::DayTypeCount; ++number) {
    Node* program = lamp::dayProgram(*working_.Root(), number);
    if (program == nullptr) break;
    list.setSwatch(list.addRow({program, number}), lamp::dayType(number).colour);
  }
}

void XCDeviceCalendarDayTypesZelLAMPManager::Layout() {
  SetLayout(
      XCVerticalLayout({layout::control(Id::Days, 1),
                        lamp::ProgramFields::arrangement(Id::FirstField), layout::okCancelRow()}));
}

void XCDeviceCalendarDayTypesZelLAMPManager::OnSelectionChanged() {
  if (!guard_) return;
  const lamp::FlagGuard showing(guard_, false);
  fields_.showSelected();
}

void XCDeviceCalendarDayTypesZelLAMPManager::Refresh() {
  List(Id::Days).cellsChanged();
  OnSelectionChanged();
}

void XCDeviceCalendarDayTypesZelLAMPManager::OnFieldChanged(int editId) {
  if (guard_) PostMessage(WriteBackMessage, editId);
}

const Node* XCDeviceCalendarDayTypesZelLAMPManager::Edited() {
  putPrograms(*working_.Root(), programsNow_);
  return programsNow_.Root();
}

void XCDeviceCalendarDayTypesZelLAMPManager::OnOK() {
  UpdateData(true);
  if (!lamp::checkRows(*this, Description().rows.front())) return;
  if (*working_.Root() == *untouched_.Root()) return EndDialog(IDCANCEL);
  *days_ = *working_.Root();
  EndDialog(IDOK);
}
