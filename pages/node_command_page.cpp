#include "pages/node_command_page.h"

#include "exchange/template_numbers.h"
#include "pages/binding/node_record.h"
#include "pages/binding/row_editor.h"
#include "pages/binding/working_copy.h"

using host::TextId;
namespace layout = host::layout;
using Node = XmlDocument::XmlNode;

namespace {

enum Id {
  NodesGroup = 6618,
  Nodes = 6619,
  ActivationGroup = 6621,
  Activation = 6622,
  Instruction = 6627,
};

const host::XmlName NamedNode("node");

}  // namespace

CDlgE11CfgZelLampManager::CDlgE11CfgZelLampManager(XCDriver* driver, CWnd* parent)
    : SettingsPage(lamp::template_number::NodeCommand, lamp::section::NodesRead, driver, parent),
      activation_(*this, Id::Activation) {}

host::DialogTemplate CDlgE11CfgZelLampManager::Template() {
  return {lamp::template_number::NodeCommand,
          "CDlgE11CfgZelLampManager",
          "E11",
          {host::group(Id::NodesGroup, "nodesGroup", TextId::NodeCommand),
           host::label(Id::Instruction, "instruction", TextId::SelectNodesForCommand),
           host::list(Id::Nodes, "nodes"),
           host::group(Id::ActivationGroup, "activationGroup", TextId::DateAndTime),
           host::edit(Id::Activation, "activation"), host::okButton(TextId::Execute),
           host::cancelButton()}};
}

const host::MessageMap* CDlgE11CfgZelLampManager::GetMessageMap() const {
  static constexpr host::MessageEntry entries[] = {
      host::onSelection<&CDlgE11CfgZelLampManager::OnSelectionChanged>(Id::Nodes)};
  static constexpr host::MessageMap map{nullptr, entries};
  return &map;
}

bool CDlgE11CfgZelLampManager::OnInitDialog() {
  SetPageTitle(TextId::NodeCommand);
  activation_.initialise();
  List(Id::Nodes).setColumns(lamp::nodeColumns());
  nodes_ = std::move(Document());  // the page's own document is made anew for the write
  lamp::fillRows(List(Id::Nodes), lamp::sectionOf(nodes_, ReadSection()), lamp::isNode);
  OnSelectionChanged();
  return SettingsPage::OnInitDialog();
}

void CDlgE11CfgZelLampManager::Layout() {
  SetLayout(XCVerticalLayout(
      {layout::box(Id::NodesGroup,
                   {layout::control(Id::Instruction), layout::control(Id::Nodes, 1),
                    layout::box(Id::ActivationGroup, {layout::control(Id::Activation)})},
                   1),
       layout::okCancelRow()}));
}

void CDlgE11CfgZelLampManager::OnSelectionChanged() {
  EnableIf(!List(Id::Nodes).selection().empty(), IDOK, TextId::NoNodeSelected);
}

bool CDlgE11CfgZelLampManager::Write() {
  const host::ListControl& nodes = List(Id::Nodes);
  if (nodes.selection().empty()) return true;
  const std::optional<XCBasicString> stamp = activation_.checkedStamp();
  if (!stamp) return false;
  Node& command = lamp::beginWrite(Document(), lamp::section::NodeCommandWrite);
  for (const std::size_t row : nodes.selection()) {
    Node& named = command.NewChild(NamedNode);
    named = *nodes.element(row);  // with the tag of the record, which the controller takes as well
    lamp::eraseDescription(named);
  }
  return lamp::setActivationDate(command, *stamp) && writeCfg(false);
}
