#include "programs/group_schedules_page.h"

#include "exchange/template_numbers.h"
#include "exchange/type_names.h"
#include "host/services/setup.h"
#include "programs/program_lists.h"

using host::TextId;
using lamp::ProgramKind;
using Node = XmlDocument::XmlNode;
namespace layout = host::layout;

namespace {

enum Id {
  Groups = host::privateId(0),
  Nodes,
  ActivationGroup,
  Activation,
  FirstField,
  LastField = FirstField + lamp::ProgramFields::IdCount - 1,
};

/// Posted to the page itself when an edit's text changed, with the edit as its parameter.
constexpr int WriteBackMessage = 1125;

const host::XmlName Devices("devices");
const host::XmlName DeviceId("id");

host::XmlName readSectionOf(ProgramKind kind) {
  return kind == ProgramKind::clock ? lamp::section::ClockProgramsRead
                                    : lamp::section::IntervalProgramsRead;
}

host::XmlName writeSectionOf(ProgramKind kind) {
  return kind == ProgramKind::clock ? lamp::section::ClockProgramsWrite
                                    : lamp::section::IntervalProgramsWrite;
}

// The lamp that a device of a group is, none when it is something else.
const XCDriver* lampOf(const Node& device) {
  const XCDriver* driver = XCDriver::LockDriver(device.Value(DeviceId));
  return driver != nullptr && driver->Type() == lamp::type_name::Lamp ? driver : nullptr;
}

const Node* devicesOf(const Node& group) {
  return group.Node(Devices.text());
}

bool containsLamp(const Node& group) {
  const Node* devices = devicesOf(group);
  if (devices == nullptr) return false;
  for (const Node& device : devices->Children())
    if (lampOf(device) != nullptr) return true;
  return false;
}

// Appends the rows of @p nodes that show the group's lamps; a lamp without a row is left out. True
// when there was one.
bool appendLamps(const Node& group, const host::ListControl& nodes,
                 std::vector<std::size_t>& rows) {
  const Node* devices = devicesOf(group);
  if (devices == nullptr) return false;
  const std::size_t before = rows.size();
  for (const Node& device : devices->Children()) {
    const XCDriver* lamp = lampOf(device);
    if (lamp == nullptr) continue;
    if (const auto row = nodes.findRow(0, lamp->Identifier())) rows.push_back(*row);
  }
  return rows.size() > before;
}

}  // namespace

CDlgE06CfgZelLampManager::CDlgE06CfgZelLampManager(XCDriver* driver, CWnd* parent, ProgramKind kind)
    : SettingsPage(lamp::template_number::GroupSchedules, readSectionOf(kind), driver, parent),
      kind_(kind),
      copy_(readSectionOf(kind)),
      fields_(*this, Id::Nodes, Id::FirstField, kind),
      activation_(*this, Id::Activation) {}

host::DialogTemplate CDlgE06CfgZelLampManager::Template() {
  host::DialogTemplate dialog{lamp::template_number::GroupSchedules,
                              "CDlgE06CfgZelLampManager",
                              "E06",
                              {host::list(Id::Groups, "groups"), host::list(Id::Nodes, "nodes")}};
  for (host::ControlSpec& control : lamp::ProgramFields::controls(Id::FirstField))
    dialog.controls.push_back(std::move(control));
  dialog.controls.push_back(
      host::group(Id::ActivationGroup, "activationGroup", TextId::DateAndTime));
  dialog.controls.push_back(host::edit(Id::Activation, "activation"));
  dialog.controls.push_back(host::okButton(TextId::Send));
  dialog.controls.push_back(host::cancelButton());
  return dialog;
}

const host::MessageMap* CDlgE06CfgZelLampManager::GetMessageMap() const {
  using Page = CDlgE06CfgZelLampManager;
  static constexpr host::MessageEntry entries[] = {
      host::onSelection<&Page::OnGroupSelectionChanged>(Id::Groups),
      host::onSelection<&Page::OnNodeSelectionChanged>(Id::Nodes),
      host::onChange<&Page::OnFieldChanged>(Id::FirstField, Id::LastField),
      host::onPosted<&Page::OnWriteBack>(WriteBackMessage)};
  static constexpr host::MessageMap map{nullptr, entries};
  return &map;
}

bool CDlgE06CfgZelLampManager::OnInitDialog() {
  SetWindowText(XCLoadString(TextId::DimmingPrograms) + u" - " + Driver().Name());
  fields_.initialise();
  activation_.initialise();
  List(Id::Nodes).setColumns(CNodesListCtrl::Columns(kind_));
  List(Id::Groups).setColumns(CGroupsListCtrl::Columns());
  copy_.take(Document());
  fillGroups();
  lamp::fillRows(List(Id::Nodes), copy_.section(), nullptr);
  return SettingsPage::OnInitDialog();
}

void CDlgE06CfgZelLampManager::fillGroups() {
  Node* configuration = XCMainCfg::Get().Root();
  if (configuration == nullptr) return;
  lamp::fillRows(List(Id::Groups),
                 configuration->Node("deviceGroups/groups/group?id=%s?/groups", Driver().Name()),
                 nullptr);
}

void CDlgE06CfgZelLampManager::Layout() {
  SetLayout(XCVerticalLayout({layout::control(Id::Groups, 1), layout::control(Id::Nodes, 2),
                              lamp::ProgramFields::arrangement(Id::FirstField),
                              layout::box(Id::ActivationGroup, {layout::control(Id::Activation)}),
                              layout::okCancelRow()}));
}

// The nodes of all selected groups are selected at once: what is shown for them in the end is the
// same as when each were selected alone.
void CDlgE06CfgZelLampManager::OnGroupSelectionChanged() {
  if (!guard_) return;
  guard_ = false;
  host::ListControl& groups = List(Id::Groups);
  host::ListControl& nodes = List(Id::Nodes);
  nodes.clearSelection();
  std::vector<std::size_t> lamps;
  std::vector<std::size_t> groupsWithLamps;
  for (const std::size_t row : groups.selection())
    if (appendLamps(*groups.element(row), nodes, lamps)) groupsWithLamps.push_back(row);
  selectLamps(std::move(lamps));
  const std::vector<XCBasicString> texts = fields_.texts();
  for (const std::size_t row : groupsWithLamps)
    for (std::size_t i = 0; i < texts.size(); ++i) groups.setCell(row, i + 1, texts[i]);
  guard_ = true;
}

void CDlgE06CfgZelLampManager::selectLamps(std::vector<std::size_t> nodes) {
  selectingByGroups_ = true;
  List(Id::Nodes).select(std::move(nodes));
  selectingByGroups_ = false;
}

void CDlgE06CfgZelLampManager::OnNodeSelectionChanged() {
  if (!guard_ && !selectingByGroups_) return;
  guard_ = false;
  if (!selectingByGroups_) List(Id::Groups).clearSelection();
  fields_.showSelected();
  guard_ = true;
}

void CDlgE06CfgZelLampManager::OnFieldChanged(int editId) {
  if (guard_) PostMessage(WriteBackMessage, editId);
}

// The nodes take the value. Of the groups only what is shown changes: a group has no program of its
// own.
void CDlgE06CfgZelLampManager::OnWriteBack(int editId) {
  fields_.writeBack(editId);
  host::ListControl& groups = List(Id::Groups);
  for (const std::size_t row : groups.selection())
    if (containsLamp(*groups.element(row)))
      groups.setCell(row, fields_.columnOf(editId), GetDlgItemText(editId));
}

bool CDlgE06CfgZelLampManager::Validate() {
  return fields_.validate();
}

bool CDlgE06CfgZelLampManager::Write() {
  if (!copy_.changed()) return true;
  const auto stamp = activation_.checkedStamp();
  if (!stamp) return false;
  Node* section = copy_.prepareWrite(Document(), writeSectionOf(kind_), *stamp);
  if (section == nullptr) return false;
  return lamp::rewriteRows(*section, lamp::programRewrite(kind_)) && writeCfg(false);
}
