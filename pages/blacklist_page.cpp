#include "pages/blacklist_page.h"

#include "exchange/template_numbers.h"
#include "pages/binding/node_record.h"
#include "pages/binding/row_editor.h"
#include "pages/binding/value_controls.h"
#include "pages/blacklist_section.h"

using host::TextId;
namespace layout = host::layout;
using Node = XmlDocument::XmlNode;

namespace {

enum Id {
  BlacklistGroup = 6610,
  Nodes = 6611,
  MoveRight = 6612,
  ActivationGroup = 6613,
  Activation = 6614,
  Blacklist = 6615,
  MoveLeft = 6617,
  NodesLabel = 6624,
  BlacklistLabel = 6626,
};

constexpr std::u16string_view AbsentPosition = u"0.000000";

host::PageDescription makeTable() {
  host::PageDescription page;
  page.readSection = lamp::section::NodesRead;
  page.writeSection = lamp::section::BlacklistWrite;
  page.form = host::WriteForm::order;
  page.activation = Id::Activation;
  page.rows = {{.places = {{.list = Id::Nodes, .mark = u"N", .moveControl = Id::MoveRight},
                           {.parent = lamp::BlacklistElement,
                            .list = Id::Blacklist,
                            .mark = u"Y",
                            .moveControl = Id::MoveLeft}},
                .isRow = lamp::isNode,
                .identity = lamp::nodeIdentity,
                .membership = host::Binding{.name = "BlackList",
                                            .attributes = {lamp::BlacklistElement},
                                            .caption = {TextId::BlacklistedNodes},
                                            .kind = host::ValueKind::flag}}};
  page.makeWrite = [](XmlDocument& request, const Node*, const Node& edited,
                      const XCBasicString& stamp) {
    return lamp::makeBlacklistWrite(request, edited, stamp);
  };
  page.applyWrite = lamp::applyBlacklist;
  return page;
}

}  // namespace

const host::PageDescription& CDlgE09CfgZelLampManager::PageTable() {
  static const host::PageDescription page = makeTable();
  return page;
}

CDlgE09CfgZelLampManager::CDlgE09CfgZelLampManager(XCDriver* driver, CWnd* parent)
    : DocumentPage(lamp::template_number::Blacklist, PageTable(), driver, parent) {}

host::DialogTemplate CDlgE09CfgZelLampManager::Template() {
  return {
      lamp::template_number::Blacklist, "CDlgE09CfgZelLampManager",
      "E08",  // another page's, deliberately: the window gets its own title when it opens
      lamp::joined({{host::group(Id::BlacklistGroup, "blacklistGroup", TextId::NodeBlacklist),
                     host::label(Id::NodesLabel, "nodesLabel", TextId::ControllerNodes),
                     host::list(Id::Nodes, "nodes"),
                     host::button(Id::MoveRight, "moveRight", TextId::None, "MOVE-RIGHT-16.png"),
                     host::button(Id::MoveLeft, "moveLeft", TextId::None, "MOVE-LEFT-16.png"),
                     host::label(Id::BlacklistLabel, "blacklistLabel", TextId::BlacklistedNodes),
                     host::list(Id::Blacklist, "blacklist")},
                    lamp::activationControls(Id::ActivationGroup, Id::Activation),
                    {host::okButton(TextId::Send), host::cancelButton()}})};
}

const host::MessageMap* CDlgE09CfgZelLampManager::GetMessageMap() const {
  using Page = CDlgE09CfgZelLampManager;
  static constexpr host::MessageEntry entries[] = {
      host::onClick<&Page::OnMove>(Id::MoveRight),
      host::onClick<&Page::OnMove>(Id::MoveLeft),
      host::onKey<&Page::OnKey>(Id::Nodes),
      host::onDoubleClick<&Page::OnMove>(Id::Nodes),
      host::onDoubleClick<&Page::OnMove>(Id::Blacklist),
      host::onSelection<&Page::OnSelectionChanged>(Id::Nodes),
      host::onSelection<&Page::OnSelectionChanged>(Id::Blacklist)};
  static constexpr host::MessageMap map{nullptr, entries};
  return &map;
}

bool CDlgE09CfgZelLampManager::OnInitDialog() {
  SetPageTitle(TextId::NodeBlacklist);
  for (const int list : {Id::Nodes, Id::Blacklist})
    List(list).setColumns(lamp::nodeColumns(AbsentPosition));
  const bool chooseFocus = DocumentPage::OnInitDialog();
  fill();
  return chooseFocus;
}

void CDlgE09CfgZelLampManager::Layout() {
  const auto listed = [](int label, int list) {
    return XCVerticalLayout({layout::control(label), layout::control(list, 1)}, 1);
  };
  SetLayout(XCVerticalLayout(
      {layout::box(
           Id::BlacklistGroup,
           {XCHoritzontalLayout({listed(Id::NodesLabel, Id::Nodes),
                                 XCVerticalLayout({layout::gap(50), layout::control(Id::MoveRight),
                                                   layout::stretch(), layout::control(Id::MoveLeft),
                                                   layout::gap(50)}),
                                 listed(Id::BlacklistLabel, Id::Blacklist)},
                                1),
            lamp::activationBox(Id::ActivationGroup, Id::Activation)},
           1),
       layout::okCancelRow()}));
}

void CDlgE09CfgZelLampManager::fill() {
  if (Node* table = Copy().section()) {
    lamp::fillRows(List(Id::Nodes), table, lamp::isNode);
    lamp::fillRows(List(Id::Blacklist), &lamp::blacklistOf(*table), lamp::isNode);
  }
  for (const int list : {Id::Nodes, Id::Blacklist}) List(list).selectOnly(0);
  OnSelectionChanged();
}

void CDlgE09CfgZelLampManager::OnSelectionChanged() {
  EnableIf(!List(Id::Nodes).selection().empty(), Id::MoveRight, TextId::NoNodeSelected);
  EnableIf(!List(Id::Blacklist).selection().empty(), Id::MoveLeft, TextId::NoNodeSelected);
}

void CDlgE09CfgZelLampManager::OnKey(host::Key key) {
  if (key == host::Key::deleteKey) OnMove(Id::MoveRight);
}

// Moves what is selected to the end of the other side, in the order of the list.
void CDlgE09CfgZelLampManager::OnMove(int controlId) {
  Node* table = Copy().section();
  if (table == nullptr) return;
  const bool right = controlId == Id::MoveRight || controlId == Id::Nodes;
  const host::ListControl& from = List(right ? Id::Nodes : Id::Blacklist);
  Node& target = right ? lamp::blacklistOf(*table) : *table;
  for (const std::size_t row : from.selection()) lamp::moveNode(*from.element(row), target);
  fill();
}

// A node that was moved out and back in again stands at the end, and still nothing has changed.
bool CDlgE09CfgZelLampManager::Changed() {
  const Node* read = Untouched();
  const Node* now = Copy().section();
  return read != nullptr && !lamp::sameNodes(lamp::blacklistOf(*read), lamp::blacklistOf(*now));
}
