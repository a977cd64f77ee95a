#include "pages/node_command_page.h"

#include "exchange/template_numbers.h"
#include "pages/binding/node_record.h"
#include "pages/binding/row_editor.h"
#include "pages/binding/value_controls.h"
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

host::PageDescription makeTable() {
  host::PageDescription page;
  page.readSection = lamp::section::NodesRead;
  page.writeSection = lamp::section::NodeCommandWrite;
  page.form = host::WriteForm::order;
  page.activation = Id::Activation;
  page.rows = {
      {.places = {{.list = Id::Nodes}}, .isRow = lamp::isNode, .identity = lamp::nodeIdentity}};
  return page;
}

}  // namespace

const host::PageDescription& CDlgE11CfgZelLampManager::PageTable() {
  static const host::PageDescription page = makeTable();
  return page;
}

CDlgE11CfgZelLampManager::CDlgE11CfgZelLampManager(XCDriver* driver, CWnd* parent)
    : DescribedPage(lamp::template_number::NodeCommand, PageTable(), driver, parent) {}

host::DialogTemplate CDlgE11CfgZelLampManager::Template() {
  return {lamp::template_number::NodeCommand, "CDlgE11CfgZelLampManager", "E11",
          lamp::joined({{host::group(Id::NodesGroup, "nodesGroup", TextId::NodeCommand),
                         host::label(Id::Instruction, "instruction", TextId::SelectNodesForCommand),
                         host::list(Id::Nodes, "nodes")},
                        lamp::activationControls(Id::ActivationGroup, Id::Activation),
                        {host::okButton(TextId::Execute), host::cancelButton()}})};
}

const host::MessageMap* CDlgE11CfgZelLampManager::GetMessageMap() const {
  static constexpr host::MessageEntry entries[] = {
      host::onSelection<&CDlgE11CfgZelLampManager::OnSelectionChanged>(Id::Nodes)};
  static constexpr host::MessageMap map{nullptr, entries};
  return &map;
}

bool CDlgE11CfgZelLampManager::OnInitDialog() {
  SetPageTitle(TextId::NodeCommand);
  List(Id::Nodes).setColumns(lamp::nodeColumns());
  nodes_ = std::move(Document());  // the page's own document is made anew for the write
  lamp::fillRows(List(Id::Nodes), lamp::sectionOf(nodes_, ReadSection()), lamp::isNode);
  OnSelectionChanged();
  return DescribedPage::OnInitDialog();
}

void CDlgE11CfgZelLampManager::Layout() {
  SetLayout(XCVerticalLayout(
      {layout::box(Id::NodesGroup,
                   {layout::control(Id::Instruction), layout::control(Id::Nodes, 1),
                    lamp::activationBox(Id::ActivationGroup, Id::Activation)},
                   1),
       layout::okCancelRow()}));
}

void CDlgE11CfgZelLampManager::OnSelectionChanged() {
  EnableIf(Changed(), IDOK, TextId::NoNodeSelected);
}

const Node* CDlgE11CfgZelLampManager::Untouched() const {
  return lamp::sectionOf(nodes_, ReadSection());
}

std::vector<host::OrderedValue> CDlgE11CfgZelLampManager::Ordered() const {
  const host::ListControl& nodes = List(Id::Nodes);
  std::vector<host::OrderedValue> ordered;
  for (const std::size_t row : nodes.selection()) {
    const XCBasicString identity = lamp::nodeIdentity(*nodes.element(row));
    ordered.push_back({identity, "nodeId", {TextId::Identifier}, identity});
  }
  return ordered;
}

bool CDlgE11CfgZelLampManager::Changed() {
  return !List(Id::Nodes).selection().empty();
}

bool CDlgE11CfgZelLampManager::Send(const XCBasicString& stamp) {
  const host::ListControl& nodes = List(Id::Nodes);
  Node& command = lamp::beginWrite(Document(), lamp::section::NodeCommandWrite);
  for (const std::size_t row : nodes.selection()) {
    Node& named = command.NewChild(NamedNode);
    named = *nodes.element(row);  // with the tag of the record, which the controller takes as well
    lamp::eraseDescription(named);
  }
  return lamp::setActivationDate(command, stamp) && writeCfg(false);
}
