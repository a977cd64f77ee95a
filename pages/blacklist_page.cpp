#include "pages/blacklist_page.h"

#include <algorithm>
#include <string>
#include <unordered_set>

#include "exchange/template_numbers.h"
#include "pages/binding/node_record.h"
#include "pages/binding/row_editor.h"
#include "pages/binding/working_copy.h"

using host::TextId;
namespace attribute = lamp::attribute;
namespace element = lamp::element;
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

const host::XmlName BlacklistElement("BlackList");
const host::XmlName BlacklistRoot("blackList");
constexpr std::u16string_view AbsentPosition = u"0.000000";

// Moves the selected rows' elements to the end of @p target, in the order of the list, out of the
// document that @p from is the root of, wherever they stand in it.
void moveSelected(const host::ListControl& list, Node& from, Node& target) {
  for (const std::size_t row : list.selection()) {
    Node* node = list.element(row);
    target.NewChild(element::Node) = *node;
    from.RemoveChild(node);
  }
}

}  // namespace

CDlgE09CfgZelLampManager::CDlgE09CfgZelLampManager(XCDriver* driver, CWnd* parent)
    : SettingsPage(lamp::template_number::Blacklist, lamp::section::NodesRead, driver, parent),
      blacklist_(BlacklistRoot),
      untouched_(BlacklistRoot),
      activation_(*this, Id::Activation) {}

host::DialogTemplate CDlgE09CfgZelLampManager::Template() {
  return {lamp::template_number::Blacklist,
          "CDlgE09CfgZelLampManager",
          "E08",  // another page's, deliberately: the window gets its own title when it opens
          {host::group(Id::BlacklistGroup, "blacklistGroup", TextId::NodeBlacklist),
           host::label(Id::NodesLabel, "nodesLabel", TextId::ControllerNodes),
           host::list(Id::Nodes, "nodes"),
           host::button(Id::MoveRight, "moveRight", TextId::None, "MOVE-RIGHT-16.png"),
           host::button(Id::MoveLeft, "moveLeft", TextId::None, "MOVE-LEFT-16.png"),
           host::label(Id::BlacklistLabel, "blacklistLabel", TextId::BlacklistedNodes),
           host::list(Id::Blacklist, "blacklist"),
           host::group(Id::ActivationGroup, "activationGroup", TextId::DateAndTime),
           host::edit(Id::Activation, "activation"), host::okButton(TextId::Send),
           host::cancelButton()}};
}

const host::MessageMap* CDlgE09CfgZelLampManager::GetMessageMap() const {
  using Page = CDlgE09CfgZelLampManager;
  static constexpr host::MessageEntry entries[] = {
      host::onClick<&Page::OnMoveRight>(Id::MoveRight),
      host::onClick<&Page::OnMoveLeft>(Id::MoveLeft),
      host::onKey<&Page::OnKey>(Id::Nodes),
      host::onDoubleClick<&Page::OnMoveRight>(Id::Nodes),
      host::onDoubleClick<&Page::OnMoveLeft>(Id::Blacklist),
      host::onSelection<&Page::OnSelectionChanged>(Id::Nodes),
      host::onSelection<&Page::OnSelectionChanged>(Id::Blacklist)};
  static constexpr host::MessageMap map{nullptr, entries};
  return &map;
}

bool CDlgE09CfgZelLampManager::OnInitDialog() {
  SetPageTitle(TextId::NodeBlacklist);
  activation_.initialise();
  for (const int list : {Id::Nodes, Id::Blacklist})
    List(list).setColumns(lamp::nodeColumns(AbsentPosition));
  takeReply();
  fill(0);
  return SettingsPage::OnInitDialog();
}

void CDlgE09CfgZelLampManager::takeReply() {
  nodes_ = std::move(Document());  // the page's own document is made anew for the write
  const Node* table = lamp::sectionOf(nodes_, ReadSection());
  const Node* read = table == nullptr ? nullptr : table->Node(BlacklistElement.text());
  if (read == nullptr) return;
  *blacklist_.Root() = *read;
  *untouched_.Root() = *read;
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
            layout::box(Id::ActivationGroup, {layout::control(Id::Activation)})},
           1),
       layout::okCancelRow()}));
}

void CDlgE09CfgZelLampManager::fill(std::size_t selectedRow) {
  if (Node* table = lamp::sectionOf(nodes_, ReadSection())) {
    lamp::fillRows(List(Id::Nodes), table, lamp::isNode);
    lamp::fillRows(List(Id::Blacklist), blacklist_.Root(), lamp::isNode);
    List(Id::Nodes).selectOnly(selectedRow);
    List(Id::Blacklist).selectOnly(selectedRow);
  }
  OnSelectionChanged();
}

void CDlgE09CfgZelLampManager::OnSelectionChanged() {
  EnableIf(!List(Id::Nodes).selection().empty(), Id::MoveRight, TextId::NoNodeSelected);
  EnableIf(!List(Id::Blacklist).selection().empty(), Id::MoveLeft, TextId::NoNodeSelected);
}

void CDlgE09CfgZelLampManager::OnKey(host::Key key) {
  if (key == host::Key::deleteKey) OnMoveRight();
}

void CDlgE09CfgZelLampManager::OnMoveRight() {
  if (nodes_.Root() == nullptr) return;
  moveSelected(List(Id::Nodes), *nodes_.Root(), *blacklist_.Root());
  fill(0);
}

void CDlgE09CfgZelLampManager::OnMoveLeft() {
  Node* table = lamp::sectionOf(nodes_, ReadSection());
  if (table == nullptr) return;
  moveSelected(List(Id::Blacklist), *blacklist_.Root(), *table);
  fill(0);
}

// Only which nodes are listed counts, not their order and not what else they carry: a node that was
// moved out and back in again stands at the end, and still nothing has changed.
bool CDlgE09CfgZelLampManager::changed() const {
  const Node& before = *untouched_.Root();
  const Node& now = *blacklist_.Root();
  if (before.ChildCount() != now.ChildCount()) return true;
  std::unordered_set<std::u16string> listed;
  for (const Node& node : now.Children()) listed.insert(node.getAttribute(attribute::NodeId).str());
  for (const Node& node : before.Children())
    if (!listed.contains(node.getAttribute(attribute::NodeId).str())) return true;
  return false;
}

bool CDlgE09CfgZelLampManager::Write() {
  if (!changed()) return true;
  const std::optional<XCBasicString> stamp = activation_.checkedStamp();
  if (!stamp) return false;
  Node& written = lamp::writeCopy(Document(), *blacklist_.Root(), lamp::section::BlacklistWrite);
  if (!lamp::setActivationDate(written, *stamp)) return false;
  for (Node& node : written.Children()) lamp::eraseDescription(node);
  return writeCfg(false);
}
