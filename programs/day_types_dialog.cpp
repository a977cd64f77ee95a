#include "programs/day_types_dialog.h"

#include "exchange/template_numbers.h"
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

}  // namespace

XCDeviceCalendarDayTypesZelLAMPManager::XCDeviceCalendarDayTypesZelLAMPManager(CWnd* parent,
                                                                               Node* days,
                                                                               ProgramKind kind)
    : XCBaseDlg(lamp::template_number::DayTypeEditor, parent),
      days_(days),
      kind_(kind),
      working_(lamp::calendar::Days),
      untouched_(lamp::calendar::Days),
      fields_(*this, Id::Days, Id::FirstField, kind) {}

host::DialogTemplate XCDeviceCalendarDayTypesZelLAMPManager::Template() {
  host::DialogTemplate dialog{lamp::template_number::DayTypeEditor,
                              "XCDeviceCalendarDayTypesZelLAMPManager",
                              "",
                              {host::list(Id::Days, "days")}};
  for (host::ControlSpec& control : lamp::ProgramFields::controls(Id::FirstField))
    dialog.controls.push_back(std::move(control));
  dialog.controls.push_back(host::okButton());
  dialog.controls.push_back(host::cancelButton());
  return dialog;
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
  guard_ = false;
  fields_.showSelected();
  guard_ = true;
}

void XCDeviceCalendarDayTypesZelLAMPManager::OnFieldChanged(int editId) {
  if (guard_) PostMessage(WriteBackMessage, editId);
}

void XCDeviceCalendarDayTypesZelLAMPManager::OnOK() {
  UpdateData(true);
  if (!fields_.validate()) return;
  if (*working_.Root() == *untouched_.Root()) return EndDialog(IDCANCEL);
  *days_ = *working_.Root();
  EndDialog(IDOK);
}
