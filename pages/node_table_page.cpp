#include "pages/node_table_page.h"

#include "exchange/template_numbers.h"
#include "pages/binding/node_record.h"
#include "pages/binding/section_write.h"
#include "pages/binding/value_rules.h"

using host::TextId;
namespace attribute = lamp::attribute;
namespace layout = host::layout;

namespace {

enum Id { NodesGroup = 6513, Nodes = 6520 };

constexpr int ReferenceLimit = 59;
constexpr int PositionLimit = 10;

// 7-bit ASCII without angle brackets. Texts that are all ASCII lie narrow in their document.
bool isPlain(host::XmlText text) {
  return text.isWide() ? text.empty()
                       : text.narrowView().find_first_of("<>") == std::string_view::npos;
}

host::ValueRule plainReference() {
  return {[](const XmlDocument::XmlNode& node, std::size_t& place) {
            return isPlain(node.attribute(attribute::Reference, place));
          },
          [](const XmlDocument::XmlNode&) { return XCLoadString(TextId::ReferenceInvalid); }};
}

host::PageDescription makeTable() {
  host::PageDescription page = lamp::wholeSection(
      {lamp::section::NodesRead, lamp::section::NodesWrite, lamp::StampRule::erase});
  page.rows = {{.places = {{.list = Id::Nodes}},
                .isRow = lamp::isNode,
                .identity = lamp::nodeIdentity,
                .bindings = {{.name = "Reference",
                              .attributes = {attribute::Reference},
                              .caption = {TextId::NodeReference},
                              .limit = ReferenceLimit,
                              .control = 6517,
                              .label = 6514,
                              .controlName = "reference",
                              .rule = plainReference()},
                             {.name = "latitude",
                              .attributes = {attribute::Latitude},
                              .caption = {TextId::Latitude},
                              .limit = PositionLimit,
                              .control = 6518,
                              .label = 6515,
                              .rule = lamp::notEmpty(attribute::Latitude)},
                             {.name = "longitude",
                              .attributes = {attribute::Longitude},
                              .caption = {TextId::Longitude},
                              .limit = PositionLimit,
                              .control = 6519,
                              .label = 6516,
                              .rule = lamp::notEmpty(attribute::Longitude)}}}};
  return page;
}

}  // namespace

const host::PageDescription& CDlgE04CfgZelLampManager::PageTable() {
  static const host::PageDescription page = makeTable();
  return page;
}

CDlgE04CfgZelLampManager::CDlgE04CfgZelLampManager(XCDriver* driver, CWnd* parent)
    : RowPage(lamp::template_number::NodeTable, PageTable(), driver, parent) {}

host::DialogTemplate CDlgE04CfgZelLampManager::Template() {
  return {lamp::template_number::NodeTable, "CDlgE04CfgZelLampManager", "E04",
          lamp::joined({{host::group(Id::NodesGroup, "nodesGroup", TextId::NodeReference),
                         host::list(Id::Nodes, "nodes")},
                        lamp::controlsOf(PageTable().rows[0].bindings),
                        {host::okButton(TextId::Send), host::cancelButton()}})};
}

bool CDlgE04CfgZelLampManager::OnInitDialog() {
  SetPageTitle(TextId::NodeReference);
  List(Id::Nodes).setColumns(lamp::nodeColumns());
  return RowPage::OnInitDialog();
}

void CDlgE04CfgZelLampManager::Layout() {
  std::vector<host::LayoutItem> nodes = {layout::control(Id::Nodes, 1)};
  for (const host::Binding& value : PageTable().rows[0].bindings)
    nodes.push_back(lamp::labelled(value));
  SetLayout(
      XCVerticalLayout({layout::box(Id::NodesGroup, std::move(nodes), 1), layout::okCancelRow()}));
}
