#include "pages/alarm_thresholds_page.h"

#include <algorithm>
#include <span>

#include "exchange/template_numbers.h"
#include "pages/binding/node_record.h"
#include "pages/binding/section_write.h"
#include "pages/firmware_version.h"

using host::TextId;
namespace layout = host::layout;
using Bindings = std::vector<host::Binding>;
using Node = XmlDocument::XmlNode;

namespace {

enum Id {
  AlarmsGroup = 6557,
  OldNodes = 6558,
  ActivationGroup = 6559,
  Activation = 6560,
  OldLabels = 6561,  // as many edits follow, and so below
  BlinkGroup = 6577,
  BrokenGroup = 6578,
  CapacitorGroup = 6579,
  NewNodes = 6595,
  NewLabels = 6596,
  NewGroup = 6608,
  OldGroup = 6609,
};

// The firmware from which on nodes have the new thresholds.
constexpr std::string_view NewFirmware = "0.3.0";
constexpr host::Caption NewFrame{.text = TextId::NodeFirmwareVersion, .suffix = u" >= 0.3.0"};

constexpr int ValueLimit = 8;
constexpr int IdentityShare = 2;

const host::XmlName FirmwareOfNode("vf");
const host::XmlName Alarms("Alarms");

// No version is the oldest one there is.
bool isOld(const Node& node) {
  return lamp::compareVersions(node.attribute(FirmwareOfNode), NewFirmware) ==
         lamp::VersionOrder::firstOlder;
}

// A threshold: its attribute, its caption and unit, its column in the list, and the number of its
// label and its edit among those of its generation.
struct Threshold {
  const char* attribute;
  TextId caption;
  std::u16string_view unit;
  std::u16string_view column;
  int place;
  host::Caption frame;
  const char* edit = "";  // the edit's name where it is not the attribute's
  host::ValueKind kind = host::ValueKind::number;
};

// Both tables stand in the order of the lists' columns.
constexpr Threshold OldThresholds[] = {
    {"blinkActive", TextId::ActivePower, u" (W)", u"BlA", 0, {TextId::Blink}},
    {"blinkTime", TextId::BlinkTime, u" (s)", u"BlT", 1, {TextId::Blink}},
    {"blinkTimes", TextId::NumberOfBlinks, u"", u"BlTs", 2, {TextId::Blink}},
    {"blinkTotalTime", TextId::BlinkTotalTime, u" (s)", u"BlTT", 3, {TextId::Blink}},
    {"brokenActive", TextId::ActivePower, u" (W)", u"BrA", 4, {TextId::BrokenLamp}},
    {"brokenTime", TextId::BrokenLampTime, u" (s)", u"BrT", 5, {TextId::BrokenLamp}},
    {"capacitorReactive", TextId::ReactivePower, u" (W)", u"CR", 6, {TextId::Capacitor}},
    {"capacitorTime", TextId::CapacitorTime, u" (s)", u"CT", 7, {TextId::Capacitor}}};
constexpr Threshold NewThresholds[] = {
    {"powerLamp", TextId::LampPower, u" (W)", u"PL", 0, NewFrame},
    {"timeAlarm", TextId::AlarmTime, u" (s)", u"TA", 3, NewFrame},
    {"percentageAlarm", TextId::AlarmPercentage, u"", u"PA", 4, NewFrame},
    {"factorPower", TextId::PowerFactor, u"", u"FP", 5, NewFrame, "", host::ValueKind::text},
    {"blinkTime", TextId::BlinkTime, u" (s)", u"BlT", 1, NewFrame, "newBlinkTime"},
    {"blinkTimes", TextId::NumberOfBlinks, u"", u"BlTs", 2, NewFrame, "newBlinkTimes"}};

host::RowSet rowsOf(int list, std::function<bool(const Node&)> isRow,
                    std::span<const Threshold> thresholds, int firstLabel) {
  const int firstEdit = firstLabel + static_cast<int>(thresholds.size());
  host::RowSet rows{.places = {{.list = list}},
                    .isRow = std::move(isRow),
                    .identity = lamp::rowIdentity,
                    .sendsAbsentAsEmpty = true};
  for (const Threshold& threshold : thresholds)
    rows.bindings.push_back({.name = threshold.attribute,
                             .attributes = {threshold.attribute},
                             .caption = {.text = threshold.caption, .suffix = threshold.unit},
                             .frame = threshold.frame,
                             .kind = threshold.kind,
                             .limit = ValueLimit,
                             .control = firstEdit + threshold.place,
                             .label = firstLabel + threshold.place,
                             .controlName = threshold.edit,
                             .column = threshold.column});
  return rows;
}

// The order in which the edits are reached and in which the controller takes the thresholds.
Bindings inOrderOfEdits(Bindings values) {
  std::ranges::sort(values, {}, &host::Binding::control);
  return values;
}

// A threshold's value travels in the row that is read and in a child of the one that is written.
lamp::RowRewrite rewriteOf(std::span<const Threshold> thresholds) {
  lamp::RowRewrite rewrite{Alarms, std::vector<host::XmlName>(thresholds.size(), Alarms)};
  for (const Threshold& threshold : thresholds)
    rewrite.moved[static_cast<std::size_t>(threshold.place)] = threshold.attribute;
  return rewrite;
}

host::PageDescription makeTable() {
  static const lamp::RowRewrite ofOld = rewriteOf(OldThresholds);
  static const lamp::RowRewrite ofNew = rewriteOf(NewThresholds);
  host::PageDescription page = lamp::wholeSection(
      {lamp::section::AlarmsRead, lamp::section::AlarmsWrite, lamp::StampRule::activation,
       [](const Node& row) -> const lamp::RowRewrite& { return isOld(row) ? ofOld : ofNew; }});
  page.activation = Id::Activation;
  page.rows = {rowsOf(Id::OldNodes, isOld, OldThresholds, Id::OldLabels),
               rowsOf(Id::NewNodes, std::not_fn(isOld), NewThresholds, Id::NewLabels)};
  return page;
}

enum Set { Old, New };

const Bindings& valuesOf(Set set) {
  return CDlgE07CfgZelLampManager::PageTable().rows[set].bindings;
}

// What is of use only where there are old nodes.
std::vector<host::ControlSpec> oldControls() {
  return lamp::joined({{host::group(Id::OldGroup, "oldGroup"), host::list(Id::OldNodes, "oldNodes"),
                        host::group(Id::BlinkGroup, "blinkGroup", TextId::Blink),
                        host::group(Id::BrokenGroup, "brokenGroup", TextId::BrokenLamp),
                        host::group(Id::CapacitorGroup, "capacitorGroup", TextId::Capacitor)},
                       lamp::controlsOf(inOrderOfEdits(valuesOf(Old)))});
}

host::LayoutItem pair(const host::Binding& left, const host::Binding& right) {
  return XCHoritzontalLayout({lamp::labelled(left, 1), lamp::labelled(right, 1)});
}

}  // namespace

const host::PageDescription& CDlgE07CfgZelLampManager::PageTable() {
  static const host::PageDescription page = makeTable();
  return page;
}

CDlgE07CfgZelLampManager::CDlgE07CfgZelLampManager(XCDriver* driver, CWnd* parent)
    : RowPage(lamp::template_number::AlarmThresholds, PageTable(), driver, parent) {}

host::DialogTemplate CDlgE07CfgZelLampManager::Template() {
  return {
      lamp::template_number::AlarmThresholds, "CDlgE07CfgZelLampManager", "E07",
      lamp::joined({{host::group(Id::AlarmsGroup, "alarmsGroup", TextId::AlarmThresholds)},
                    oldControls(),
                    {host::group(Id::NewGroup, "newGroup"), host::list(Id::NewNodes, "newNodes")},
                    lamp::controlsOf(inOrderOfEdits(valuesOf(New))),
                    lamp::activationControls(Id::ActivationGroup, Id::Activation),
                    {host::okButton(TextId::Send), host::cancelButton()}})};
}

bool CDlgE07CfgZelLampManager::OnInitDialog() {
  SetPageTitle(TextId::AlarmThresholds);
  SetDlgItemText(Id::OldGroup, XCLoadString(TextId::NodeFirmwareVersion) + u" < 0.3.0");
  SetDlgItemText(Id::NewGroup, NewFrame.toString());
  for (const Set set : {Old, New})
    Rows(set).list().setColumns(
        lamp::columnsOf(lamp::identityColumn(IdentityShare), valuesOf(set)));
  const bool chooseFocus = RowPage::OnInitDialog();
  ShowStamp();
  if (!hasOldNodes())
    for (const host::ControlSpec& old : oldControls()) GetDlgItem(old.id).setVisible(false);
  return chooseFocus;
}

void CDlgE07CfgZelLampManager::Layout() {
  const Bindings& old = valuesOf(Old);
  const Bindings& recent = valuesOf(New);
  std::vector<host::LayoutItem> generations;
  if (hasOldNodes())
    generations.push_back(layout::box(
        Id::OldGroup,
        {layout::control(Id::OldNodes, 1),
         layout::box(Id::BlinkGroup, {pair(old[1], old[0]), pair(old[3], old[2])}),
         XCHoritzontalLayout({layout::box(Id::BrokenGroup, {pair(old[4], old[5])}, 1),
                              layout::box(Id::CapacitorGroup, {pair(old[6], old[7])}, 1)})},
        1));
  generations.push_back(layout::box(Id::NewGroup,
                                    {layout::control(Id::NewNodes, 1), pair(recent[0], recent[1]),
                                     pair(recent[2], recent[3]), pair(recent[4], recent[5])},
                                    1));
  SetLayout(XCVerticalLayout({layout::box(Id::AlarmsGroup, std::move(generations), 1),
                              lamp::activationBox(Id::ActivationGroup, Id::Activation),
                              layout::okCancelRow()}));
}
