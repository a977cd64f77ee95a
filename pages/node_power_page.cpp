#include "pages/node_power_page.h"

#include "exchange/template_numbers.h"
#include "pages/binding/node_record.h"
#include "pages/binding/section_write.h"
#include "pages/binding/value_rules.h"

using host::TextId;
namespace layout = host::layout;

namespace {

enum Id { NodesGroup = 6521, Nodes = 6522, Activation = 6553, ActivationGroup = 6554 };

const host::XmlName Time("time");
const host::XmlName Power("power");

constexpr int DigitLimit = 3;

host::PageDescription makeTable() {
  // A node is read with time and power of its own and written with an interval that holds them.
  static const lamp::RowRewrite rewrite{lamp::element::Interval, {Time, Power}};
  host::PageDescription page =
      lamp::wholeSection({lamp::section::PowerRead, lamp::section::PowerWrite,
                          lamp::StampRule::activation, lamp::rewriteAll(rewrite)});
  page.activation = Id::Activation;
  page.rows = {{.places = {{.list = Id::Nodes}},
                .identity = lamp::rowIdentity,
                .bindings = {{.name = "time",
                              .attributes = {Time},
                              .caption = {.text = TextId::Time, .unit = TextId::MinutesUnit},
                              .kind = host::ValueKind::number,
                              .limit = DigitLimit,
                              .control = 6524,
                              .label = 6523,
                              .rule = lamp::notEmpty(Time)},
                             {.name = "power",
                              .attributes = {Power},
                              .caption = lamp::PowerCaption,
                              .kind = host::ValueKind::number,
                              .limit = DigitLimit,
                              .control = 6526,
                              .label = 6525,
                              .rule = lamp::powerInPercent(Power)}},
                .sendsAbsentAsEmpty = true,
                .visit = host::CheckVisit::everyRow}};
  return page;
}

}  // namespace

const host::PageDescription& CDlgE05CfgZelLampManager::PageTable() {
  static const host::PageDescription page = makeTable();
  return page;
}

CDlgE05CfgZelLampManager::CDlgE05CfgZelLampManager(XCDriver* driver, CWnd* parent)
    : RowPage(lamp::template_number::NodePower, PageTable(), driver, parent) {}

host::DialogTemplate CDlgE05CfgZelLampManager::Template() {
  return {lamp::template_number::NodePower, "CDlgE05CfgZelLampManager", "E05",
          lamp::joined({{host::group(Id::NodesGroup, "nodesGroup", TextId::PowerByNode),
                         host::list(Id::Nodes, "nodes")},
                        lamp::controlsOf(PageTable().rows[0].bindings),
                        lamp::activationControls(Id::ActivationGroup, Id::Activation),
                        {host::okButton(TextId::Send), host::cancelButton()}})};
}

bool CDlgE05CfgZelLampManager::OnInitDialog() {
  SetPageTitle(TextId::DimmingPrograms);
  const auto& values = PageTable().rows[0].bindings;
  List(Id::Nodes).setColumns(lamp::columnsOf(lamp::identityColumn(), values));
  const bool chooseFocus = RowPage::OnInitDialog();
  ShowStamp();
  return chooseFocus;
}

void CDlgE05CfgZelLampManager::Layout() {
  const auto& values = PageTable().rows[0].bindings;
  SetLayout(XCVerticalLayout(
      {layout::box(
           Id::NodesGroup,
           {layout::control(Id::Nodes, 1), lamp::labelled(values[0]), lamp::labelled(values[1])},
           1),
       lamp::activationBox(Id::ActivationGroup, Id::Activation), layout::okCancelRow()}));
}
