#include "pages/node_removal_page.h"

#include "exchange/template_numbers.h"
#include "pages/binding/node_record.h"
#include "pages/binding/row_editor.h"

using host::TextId;
namespace attribute = lamp::attribute;
namespace layout = host::layout;
using Node = XmlDocument::XmlNode;

namespace {

enum Id {
  NodesGroup = 6582,
  Nodes = 6583,
  Remove = 6584,
  ActivationGroup = 6585,
  Activation = 6586,
};

// An empty reference counts: only a withdrawn one is gone.
bool hasReference(const Node& child) {
  return child.hasAttribute(attribute::Reference);
}

bool isListed(const Node& child) {
  return lamp::isNode(child) && hasReference(child);
}

// What has no reference is sent, also when it came without one from the controller: the controller
// takes the list as the nodes that it is to do without.
void keepWithoutReference(Node& table) {
  for (Node *child = table.FirstChild(), *next = nullptr; child != nullptr; child = next) {
    next = child->NextSibling();
    if (hasReference(*child)) table.RemoveChild(child);
  }
}

}  // namespace

CDlgE08CfgZelLampManager::CDlgE08CfgZelLampManager(XCDriver* driver, CWnd* parent)
    : SettingsPage(lamp::template_number::NodeRemoval, lamp::section::NodesRead, driver, parent),
      copy_(lamp::section::NodesRead),
      activation_(*this, Id::Activation) {}

host::DialogTemplate CDlgE08CfgZelLampManager::Template() {
  return {lamp::template_number::NodeRemoval,
          "CDlgE08CfgZelLampManager",
          "E08",
          {host::group(Id::NodesGroup, "nodesGroup", TextId::NodeRemoval),
           host::list(Id::Nodes, "nodes"),
           host::button(Id::Remove, "remove", TextId::Remove, "REMOVE-16.png"),
           host::group(Id::ActivationGroup, "activationGroup", TextId::DateAndTime),
           host::edit(Id::Activation, "activation"), host::okButton(TextId::Send),
           host::cancelButton()}};
}

const host::MessageMap* CDlgE08CfgZelLampManager::GetMessageMap() const {
  using Page = CDlgE08CfgZelLampManager;
  static constexpr host::MessageEntry entries[] = {host::onClick<&Page::OnRemove>(Id::Remove),
                                                   host::onKey<&Page::OnKey>(Id::Nodes)};
  static constexpr host::MessageMap map{nullptr, entries};
  return &map;
}

bool CDlgE08CfgZelLampManager::OnInitDialog() {
  SetPageTitle(TextId::NodeRemoval);
  activation_.initialise();
  List(Id::Nodes).setColumns(lamp::nodeColumns());
  copy_.take(Document());
  fill(0);
  return SettingsPage::OnInitDialog();
}

void CDlgE08CfgZelLampManager::Layout() {
  SetLayout(XCVerticalLayout(
      {layout::box(Id::NodesGroup,
                   {layout::control(Id::Nodes, 1),
                    XCHoritzontalLayout({layout::gap(35), layout::control(Id::Remove, 0, 30),
                                         layout::stretch(), layout::gap(35)}),
                    layout::box(Id::ActivationGroup, {layout::control(Id::Activation)})},
                   1),
       layout::okCancelRow()}));
}

void CDlgE08CfgZelLampManager::fill(std::size_t selectedRow) {
  host::ListControl& nodes = List(Id::Nodes);
  lamp::fillRows(nodes, copy_.section(), isListed);
  EnableIf(nodes.rowCount() > 0, Id::Remove, TextId::NoNodeWithReference);
  nodes.selectOnly(selectedRow);
}

void CDlgE08CfgZelLampManager::OnRemove() {
  const host::ListControl& nodes = List(Id::Nodes);
  for (const std::size_t row : nodes.selection()) lamp::eraseDescription(*nodes.element(row));
  fill(0);
}

void CDlgE08CfgZelLampManager::OnKey(host::Key key) {
  if (key == host::Key::deleteKey) OnRemove();
}

bool CDlgE08CfgZelLampManager::Write() {
  if (!copy_.changed()) return true;
  const std::optional<XCBasicString> stamp = activation_.checkedStamp();
  if (!stamp) return false;
  Node* table = copy_.prepareWrite(Document(), lamp::section::NodeRemovalWrite, *stamp);
  if (table == nullptr) return false;
  keepWithoutReference(*table);
  return writeCfg(false);
}
