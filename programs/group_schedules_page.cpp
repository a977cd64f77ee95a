#include "programs/group_schedules_page.h"

#include "exchange/template_numbers.h"
#include "host/services/setup.h"
#include "pages/binding/flag_guard.h"
#include "pages/binding/node_record.h"
#include "pages/binding/row_page.h"
#include "pages/binding/section_write.h"
#include "programs/group_lamps.h"
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

host::PageDescription makeTable(ProgramKind kind, host::XmlName read, host::XmlName write) {
  host::PageDescription page = lamp::wholeSection(
      {read, write, lamp::StampRule::activation, lamp::rewriteAll(lamp::programRewrite(kind))});
  page.activation = Id::Activation;
  page.rows = {{.places = {{.list = Id::Nodes}},
                .identity = lamp::rowIdentity,
                .bindings = lamp::ProgramFields::values(kind, Id::FirstField),
                .sendsAbsentAsEmpty = true,
                .visit = host::CheckVisit::everyRow}};
  return page;
}

}  // namespace

const host::PageDescription& CDlgE06CfgZelLampManager::PageTable(ProgramKind kind) {
  using namespace lamp::section;
  static const host::PageDescription interval =
      makeTable(ProgramKind::interval, IntervalProgramsRead, IntervalProgramsWrite);
  static const host::PageDescription clock =
      makeTable(ProgramKind::clock, ClockProgramsRead, ClockProgramsWrite);
  return kind == ProgramKind::clock ? clock : interval;
}

CDlgE06CfgZelLampManager::CDlgE06CfgZelLampManager(XCDriver* driver, CWnd* parent, ProgramKind kind)
    : DocumentPage(lamp::template_number::GroupSchedules, PageTable(kind), driver, parent),
      kind_(kind),
      fields_(*this, PageTable(kind).rows.front()) {}

host::DialogTemplate CDlgE06CfgZelLampManager::Template() {
  return {lamp::template_number::GroupSchedules, "CDlgE06CfgZelLampManager", "E06",
          lamp::joined({{host::list(Id::Groups, "groups"), host::list(Id::Nodes, "nodes")},
                        lamp::ProgramFields::controls(Id::FirstField),
                        lamp::activationControls(Id::ActivationGroup, Id::Activation),
                        {host::okButton(TextId::Send), host::cancelButton()}})};
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
  SetPageTitle(TextId::DimmingPrograms);
  fields_.initialise();
  List(Id::Nodes).setColumns(CNodesListCtrl::Columns(kind_));
  List(Id::Groups).setColumns(CGroupsListCtrl::Columns());
  const bool chooseFocus = DocumentPage::OnInitDialog();
  fillGroups();
  lamp::fillRows(List(Id::Nodes), Copy().section(), nullptr);
  return chooseFocus;
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
                              lamp::activationBox(Id::ActivationGroup, Id::Activation),
                              layout::okCancelRow()}));
}

// The nodes of all selected groups are selected at once: what is shown for them in the end is the
// same as when each were selected alone.
void CDlgE06CfgZelLampManager::OnGroupSelectionChanged() {
  if (!guard_) return;
  const lamp::FlagGuard running(guard_, false);
  host::ListControl& groups = List(Id::Groups);
  host::ListControl& nodes = List(Id::Nodes);
  nodes.clearSelection();
  std::vector<std::size_t> lamps;
  std::vector<std::size_t> groupsWithLamps;
  for (const std::size_t row : groups.selection())
    if (lamp::appendLamps(*groups.element(row), nodes, lamps)) groupsWithLamps.push_back(row);
  selectLamps(std::move(lamps));
  const std::vector<XCBasicString> texts = fields_.texts();
  for (const std::size_t row : groupsWithLamps)
    for (std::size_t i = 0; i < texts.size(); ++i) groups.setCell(row, i + 1, texts[i]);
}

void CDlgE06CfgZelLampManager::selectLamps(std::vector<std::size_t> nodes) {
  const lamp::FlagGuard selecting(selectingByGroups_, true);
  List(Id::Nodes).select(std::move(nodes));
}

void CDlgE06CfgZelLampManager::OnNodeSelectionChanged() {
  if (!guard_ && !selectingByGroups_) return;
  const lamp::FlagGuard running(guard_, false);
  if (!selectingByGroups_) List(Id::Groups).clearSelection();
  fields_.showSelected();
}

// What the fields show is the rows' already: it is not written back.
void CDlgE06CfgZelLampManager::Refresh() {
  const lamp::FlagGuard running(guard_, false);
  List(Id::Nodes).cellsChanged();
  fields_.showSelected();
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
    if (lamp::containsLamp(*groups.element(row)))
      groups.setCell(row, fields_.columnOf(editId), GetDlgItemText(editId));
}
