#include "pages/node_power_page.h"

#include "exchange/template_numbers.h"
#include "pages/binding/node_record.h"
#include "pages/binding/row_rewrite.h"

using host::TextId;
namespace attribute = lamp::attribute;
namespace layout = host::layout;

namespace {

enum Id {
  NodesGroup = 6521,
  Nodes = 6522,
  TimeLabel = 6523,
  Time = 6524,
  PowerLabel = 6525,
  Power = 6526,
  Activation = 6553,
  ActivationGroup = 6554,
};

const host::XmlName TimeAttribute("time");
const host::XmlName PowerAttribute("power");

constexpr int DigitLimit = 3;
constexpr int LowestPower = 0;
constexpr int HighestPower = 100;

// A node is read with time and power of its own and written with an interval that holds them.
const lamp::RowRewrite Rewrite{lamp::element::Interval, {TimeAttribute, PowerAttribute}};

}  // namespace

CDlgE05CfgZelLampManager::CDlgE05CfgZelLampManager(XCDriver* driver, CWnd* parent)
    : SettingsPage(lamp::template_number::NodePower, lamp::section::PowerRead, driver, parent),
      copy_(lamp::section::PowerRead),
      rows_(*this, Id::Nodes, {{Id::Time, TimeAttribute}, {Id::Power, PowerAttribute}}),
      activation_(*this, Id::Activation) {}

host::DialogTemplate CDlgE05CfgZelLampManager::Template() {
  return {
      lamp::template_number::NodePower,
      "CDlgE05CfgZelLampManager",
      "E05",
      {host::group(Id::NodesGroup, "nodesGroup", TextId::PowerByNode),
       host::list(Id::Nodes, "nodes"), host::label(Id::TimeLabel, "timeLabel"),
       host::digitsEdit(Id::Time, "time", DigitLimit), host::label(Id::PowerLabel, "powerLabel"),
       host::digitsEdit(Id::Power, "power", DigitLimit),
       host::group(Id::ActivationGroup, "activationGroup", TextId::DateAndTime),
       host::edit(Id::Activation, "activation"), host::okButton(TextId::Send),
       host::cancelButton()}};
}

const host::MessageMap* CDlgE05CfgZelLampManager::GetMessageMap() const {
  using Page = CDlgE05CfgZelLampManager;
  static constexpr host::MessageEntry entries[] = {
      host::onSelection<&Page::OnSelectionChanged>(Id::Nodes),
      host::onChange<&Page::OnEditChanged>(Id::Time, Id::Power)};
  static constexpr host::MessageMap map{nullptr, entries};
  return &map;
}

bool CDlgE05CfgZelLampManager::OnInitDialog() {
  SetPageTitle(TextId::DimmingPrograms);
  SetDlgItemText(Id::TimeLabel,
                 XCLoadString(TextId::Time) + u" (" + XCLoadString(TextId::MinutesUnit) + u")");
  SetDlgItemText(Id::PowerLabel, XCLoadString(TextId::Power) + u" (%)");
  activation_.initialise();
  List(Id::Nodes).setColumns({lamp::attributeColumn(TextId::Identifier, attribute::Id),
                              lamp::attributeColumn(TextId::Time, TimeAttribute),
                              lamp::attributeColumn(TextId::Power, PowerAttribute)});
  copy_.take(Document());
  if (const XmlDocument::XmlNode* table = copy_.section())
    activation_.showStamp(table->getAttribute(attribute::Stamp));
  rows_.fill(copy_.section(), nullptr, 0);
  return SettingsPage::OnInitDialog();
}

void CDlgE05CfgZelLampManager::Layout() {
  SetLayout(XCVerticalLayout(
      {layout::box(Id::NodesGroup,
                   {layout::control(Id::Nodes, 1), layout::labelled(Id::TimeLabel, Id::Time),
                    layout::labelled(Id::PowerLabel, Id::Power)},
                   1),
       layout::box(Id::ActivationGroup, {layout::control(Id::Activation)}),
       layout::okCancelRow()}));
}

bool CDlgE05CfgZelLampManager::refuse(std::size_t row, int editId, std::u16string_view message) {
  List(Id::Nodes).selectOnly(row);
  MessageBox(message);
  FocusAndSelectAll(editId);
  return false;
}

// A row at fault becomes the selected one, so that the edits show what is wrong with it; when all
// is well it is the last row.
bool CDlgE05CfgZelLampManager::Validate() {
  host::ListControl& nodes = List(Id::Nodes);
  std::size_t timePlace = 0;
  std::size_t powerPlace = 0;
  for (std::size_t row = 0; row < nodes.rowCount(); ++row) {
    const XmlDocument::XmlNode& node = *nodes.element(row);
    if (node.attribute(TimeAttribute, timePlace).empty())
      return refuse(row, Id::Time, XCLoadString(TextId::FieldInvalid));
    const host::XmlText power = node.attribute(PowerAttribute, powerPlace);
    if (power.empty() || power.toInt() > HighestPower)
      return refuse(
          row, Id::Power,
          XCBasicString::Format(XCLoadString(TextId::ValueOutOfRange),
                                GetDlgItemText(Id::PowerLabel), LowestPower, HighestPower));
  }
  if (nodes.rowCount() > 0) nodes.selectOnly(nodes.rowCount() - 1);
  return true;
}

bool CDlgE05CfgZelLampManager::Write() {
  if (!copy_.changed()) return true;
  const std::optional<XCBasicString> stamp = activation_.checkedStamp();
  if (!stamp) return false;
  XmlDocument::XmlNode* table = copy_.prepareWrite(Document(), lamp::section::PowerWrite, *stamp);
  return table != nullptr && lamp::rewriteRows(*table, Rewrite) && writeCfg(false);
}
