#include "pages/node_removal_page.h"

#include <string>
#include <unordered_set>

#include "exchange/template_numbers.h"
#include "pages/binding/node_record.h"
#include "pages/binding/row_editor.h"
#include "pages/binding/section_write.h"
#include "pages/binding/value_controls.h"

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

void removeNamed(Node& table, const Node& written) {
  std::unordered_set<std::u16string> named;
  for (const Node& node : written.Children())
    if (lamp::isNode(node)) named.insert(lamp::nodeIdentity(node).str());
  for (Node& node : table.Children())
    if (lamp::isNode(node) && named.contains(lamp::nodeIdentity(node).str()))
      lamp::eraseDescription(node);
}

// Reference and position go with the node; no edit shows them.
std::vector<host::Binding> removedValues() {
  return {
      {.name = "Reference",
       .attributes = {attribute::Reference},
       .caption = {TextId::NodeReference}},
      {.name = "latitude", .attributes = {attribute::Latitude}, .caption = {TextId::Latitude}},
      {.name = "longitude", .attributes = {attribute::Longitude}, .caption = {TextId::Longitude}}};
}

host::PageDescription makeTable() {
  host::PageDescription page = lamp::wholeSection(
      {lamp::section::NodesRead, lamp::section::NodeRemovalWrite, lamp::StampRule::activation});
  page.form = host::WriteForm::order;
  page.activation = Id::Activation;
  page.rows = {{.places = {{.list = Id::Nodes}},
                .isRow = lamp::isNode,
                .identity = lamp::nodeIdentity,
                .bindings = removedValues(),
                .removeControl = Id::Remove}};
  page.makeWrite = [whole = page.makeWrite](XmlDocument& request, const Node* untouched,
                                            const Node& edited, const XCBasicString& stamp) {
    if (!whole(request, untouched, edited, stamp)) return false;
    keepWithoutReference(*request.Root()->FirstChild());
    return true;
  };
  page.applyWrite = removeNamed;
  return page;
}

}  // namespace

const host::PageDescription& CDlgE08CfgZelLampManager::PageTable() {
  static const host::PageDescription page = makeTable();
  return page;
}

CDlgE08CfgZelLampManager::CDlgE08CfgZelLampManager(XCDriver* driver, CWnd* parent)
    : DocumentPage(lamp::template_number::NodeRemoval, PageTable(), driver, parent) {}

host::DialogTemplate CDlgE08CfgZelLampManager::Template() {
  return {lamp::template_number::NodeRemoval, "CDlgE08CfgZelLampManager", "E08",
          lamp::joined({{host::group(Id::NodesGroup, "nodesGroup", TextId::NodeRemoval),
                         host::list(Id::Nodes, "nodes"),
                         host::button(Id::Remove, "remove", TextId::Remove, "REMOVE-16.png")},
                        lamp::activationControls(Id::ActivationGroup, Id::Activation),
                        {host::okButton(TextId::Send), host::cancelButton()}})};
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
  List(Id::Nodes).setColumns(lamp::nodeColumns());
  const bool chooseFocus = DocumentPage::OnInitDialog();
  fill();
  return chooseFocus;
}

void CDlgE08CfgZelLampManager::Layout() {
  SetLayout(XCVerticalLayout(
      {layout::box(Id::NodesGroup,
                   {layout::control(Id::Nodes, 1),
                    XCHoritzontalLayout({layout::gap(35), layout::control(Id::Remove, 0, 30),
                                         layout::stretch(), layout::gap(35)}),
                    lamp::activationBox(Id::ActivationGroup, Id::Activation)},
                   1),
       layout::okCancelRow()}));
}

void CDlgE08CfgZelLampManager::fill() {
  host::ListControl& nodes = List(Id::Nodes);
  lamp::fillRows(nodes, Copy().section(), isListed);
  EnableIf(nodes.rowCount() > 0, Id::Remove, TextId::NoNodeWithReference);
  nodes.selectOnly(0);
}

void CDlgE08CfgZelLampManager::OnRemove() {
  const host::ListControl& nodes = List(Id::Nodes);
  for (const std::size_t row : nodes.selection()) lamp::eraseDescription(*nodes.element(row));
  fill();
}

void CDlgE08CfgZelLampManager::OnKey(host::Key key) {
  if (key == host::Key::deleteKey) OnRemove();
}
