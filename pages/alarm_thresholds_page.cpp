#include "pages/alarm_thresholds_page.h"

#include <span>

#include "exchange/template_numbers.h"
#include "pages/binding/node_record.h"
#include "pages/binding/row_rewrite.h"
#include "pages/firmware_version.h"

using host::TextId;
namespace attribute = lamp::attribute;
namespace layout = host::layout;
using Node = XmlDocument::XmlNode;

namespace {

enum Id {
  AlarmsGroup = 6557,
  OldNodes = 6558,
  ActivationGroup = 6559,
  Activation = 6560,
  OldLabels = 6561,
  OldEdits = 6569,
  BlinkGroup = 6577,
  BrokenGroup = 6578,
  CapacitorGroup = 6579,
  NewNodes = 6595,
  NewLabels = 6596,
  NewEdits = 6602,
  NewGroup = 6608,
  OldGroup = 6609,
};

// The firmware from which on nodes have the new thresholds.
constexpr std::string_view NewFirmware = "0.3.0";
constexpr int ValueLimit = 8;

const host::XmlName FirmwareOfNode("vf");
const host::XmlName Alarms("Alarms");

// A threshold: the attribute, its edit, and its column in the list of its generation.
struct Threshold {
  const char* attribute;
  const char* editName;
  TextId caption;
  std::u16string_view unit;
  std::u16string_view columnCaption;
  bool digitsOnly = true;
};

// Both tables stand in the order in which the controller takes the thresholds and in which the
// labels and edits are numbered. The old nodes' columns stand in it too.
constexpr Threshold OldThresholds[] = {
    {"blinkActive", "blinkActive", TextId::ActivePower, u" (W)", u"BlA"},
    {"blinkTime", "blinkTime", TextId::BlinkTime, u" (s)", u"BlT"},
    {"blinkTimes", "blinkTimes", TextId::NumberOfBlinks, u"", u"BlTs"},
    {"blinkTotalTime", "blinkTotalTime", TextId::BlinkTotalTime, u" (s)", u"BlTT"},
    {"brokenActive", "brokenActive", TextId::ActivePower, u" (W)", u"BrA"},
    {"brokenTime", "brokenTime", TextId::BrokenLampTime, u" (s)", u"BrT"},
    {"capacitorReactive", "capacitorReactive", TextId::ReactivePower, u" (W)", u"CR"},
    {"capacitorTime", "capacitorTime", TextId::CapacitorTime, u" (s)", u"CT"},
};
enum OldThreshold {
  BlinkActive,
  BlinkTime,
  BlinkTimes,
  BlinkTotalTime,
  BrokenActive,
  BrokenTime,
  CapacitorReactive,
  CapacitorTime,
};
constexpr Threshold NewThresholds[] = {
    {"powerLamp", "powerLamp", TextId::LampPower, u" (W)", u"PL"},
    {"blinkTime", "newBlinkTime", TextId::BlinkTime, u" (s)", u"BlT"},
    {"blinkTimes", "newBlinkTimes", TextId::NumberOfBlinks, u"", u"BlTs"},
    {"timeAlarm", "timeAlarm", TextId::AlarmTime, u" (s)", u"TA"},
    {"percentageAlarm", "percentageAlarm", TextId::AlarmPercentage, u"", u"PA"},
    {"factorPower", "factorPower", TextId::PowerFactor, u"", u"FP", false},
};
enum NewThreshold {
  PowerLamp,
  NewBlinkTime,
  NewBlinkTimes,
  TimeAlarm,
  PercentageAlarm,
  FactorPower
};
constexpr int NewColumns[] = {PowerLamp,   TimeAlarm,    PercentageAlarm,
                              FactorPower, NewBlinkTime, NewBlinkTimes};

constexpr int OldCount = static_cast<int>(std::size(OldThresholds));
constexpr int NewCount = static_cast<int>(std::size(NewThresholds));
constexpr int IdentityShare = 2;

std::vector<lamp::RowField> rowFields(std::span<const Threshold> thresholds, int firstEdit) {
  std::vector<lamp::RowField> fields;
  for (const Threshold& threshold : thresholds)
    fields.push_back({firstEdit + static_cast<int>(fields.size()), threshold.attribute});
  return fields;
}

// The threshold's value travels in the row that is read and in a child of the one that is written.
lamp::RowRewrite rewriteOf(std::span<const Threshold> thresholds) {
  lamp::RowRewrite rewrite{Alarms, {}};
  for (const Threshold& threshold : thresholds) rewrite.moved.emplace_back(threshold.attribute);
  return rewrite;
}

void addEdits(std::vector<host::ControlSpec>& controls, std::span<const Threshold> thresholds,
              int firstLabel, int firstEdit) {
  for (const Threshold& threshold : thresholds) {
    const std::string name = threshold.editName;
    controls.push_back(host::label(firstLabel++, name + "Label"));
    controls.push_back(threshold.digitsOnly ? host::digitsEdit(firstEdit++, name, ValueLimit)
                                            : host::edit(firstEdit++, name, ValueLimit));
  }
}

host::ListColumn columnOf(const Threshold& threshold) {
  return lamp::attributeColumn(threshold.columnCaption, threshold.attribute);
}

host::ListColumn identityColumn() {
  return lamp::attributeColumn(TextId::Identifier, attribute::Id, IdentityShare);
}

/// Tells nodes with the old thresholds from those with the new ones. A street has few versions of
/// the firmware: those seen last are not taken apart again. The documents of the nodes that it
/// was asked about must outlive it.
class Generations {
 public:
  bool isOld(const Node& node) {
    const host::XmlText firmware = node.attribute(FirmwareOfNode, place_);
    // No version is the oldest one there is, and what stands here before any was seen.
    if (firmware.empty() || firmware == lastOld_) return true;
    if (firmware == lastNew_) return false;
    const bool old = lamp::compareVersions(firmware, NewFirmware) == lamp::VersionOrder::firstOlder;
    (old ? lastOld_ : lastNew_) = firmware;
    return old;
  }

 private:
  host::XmlText lastOld_;
  host::XmlText lastNew_;
  std::size_t place_ = 0;
};

host::LayoutItem pair(int firstLabel, int firstEdit, int left, int right) {
  return XCHoritzontalLayout({layout::labelled(firstLabel + left, firstEdit + left, 1),
                              layout::labelled(firstLabel + right, firstEdit + right, 1)});
}

host::LayoutItem oldPair(int left, int right) {
  return pair(OldLabels, OldEdits, left, right);
}

host::LayoutItem newPair(int left, int right) {
  return pair(NewLabels, NewEdits, left, right);
}

}  // namespace

CDlgE07CfgZelLampManager::CDlgE07CfgZelLampManager(XCDriver* driver, CWnd* parent)
    : SettingsPage(lamp::template_number::AlarmThresholds, lamp::section::AlarmsRead, driver,
                   parent),
      copy_(lamp::section::AlarmsRead),
      oldRows_(*this, Id::OldNodes, rowFields(OldThresholds, Id::OldEdits)),
      newRows_(*this, Id::NewNodes, rowFields(NewThresholds, Id::NewEdits)),
      activation_(*this, Id::Activation) {}

host::DialogTemplate CDlgE07CfgZelLampManager::Template() {
  std::vector<host::ControlSpec> controls = {
      host::group(Id::AlarmsGroup, "alarmsGroup", TextId::AlarmThresholds),
      host::group(Id::OldGroup, "oldGroup"),
      host::list(Id::OldNodes, "oldNodes"),
      host::group(Id::BlinkGroup, "blinkGroup", TextId::Blink),
      host::group(Id::BrokenGroup, "brokenGroup", TextId::BrokenLamp),
      host::group(Id::CapacitorGroup, "capacitorGroup", TextId::Capacitor)};
  addEdits(controls, OldThresholds, Id::OldLabels, Id::OldEdits);
  controls.push_back(host::group(Id::NewGroup, "newGroup"));
  controls.push_back(host::list(Id::NewNodes, "newNodes"));
  addEdits(controls, NewThresholds, Id::NewLabels, Id::NewEdits);
  controls.push_back(host::group(Id::ActivationGroup, "activationGroup", TextId::DateAndTime));
  controls.push_back(host::edit(Id::Activation, "activation"));
  controls.push_back(host::okButton(TextId::Send));
  controls.push_back(host::cancelButton());
  return {lamp::template_number::AlarmThresholds, "CDlgE07CfgZelLampManager", "E07",
          std::move(controls)};
}

const host::MessageMap* CDlgE07CfgZelLampManager::GetMessageMap() const {
  using Page = CDlgE07CfgZelLampManager;
  static constexpr host::MessageEntry entries[] = {
      host::onSelection<&Page::OnOldSelectionChanged>(Id::OldNodes),
      host::onSelection<&Page::OnNewSelectionChanged>(Id::NewNodes),
      host::onChange<&Page::OnOldEditChanged>(Id::OldEdits, Id::OldEdits + OldCount - 1),
      host::onChange<&Page::OnNewEditChanged>(Id::NewEdits, Id::NewEdits + NewCount - 1)};
  static constexpr host::MessageMap map{nullptr, entries};
  return &map;
}

bool CDlgE07CfgZelLampManager::OnInitDialog() {
  SetPageTitle(TextId::AlarmThresholds);
  showCaptions();
  activation_.initialise();

  std::vector<host::ListColumn> oldColumns = {identityColumn()};
  for (const Threshold& threshold : OldThresholds) oldColumns.push_back(columnOf(threshold));
  List(Id::OldNodes).setColumns(std::move(oldColumns));
  std::vector<host::ListColumn> newColumns = {identityColumn()};
  for (const int threshold : NewColumns) newColumns.push_back(columnOf(NewThresholds[threshold]));
  List(Id::NewNodes).setColumns(std::move(newColumns));

  copy_.take(Document());
  if (const Node* alarms = copy_.section())
    activation_.showStamp(alarms->getAttribute(attribute::Stamp));
  fillLists();
  if (!hasOldNodes()) hideOldNodes();
  return SettingsPage::OnInitDialog();
}

void CDlgE07CfgZelLampManager::fillLists() {
  Node* alarms = copy_.section();
  if (alarms == nullptr) return;
  host::ListControl& oldNodes = oldRows_.list();
  host::ListControl& newNodes = newRows_.list();
  oldNodes.clearRows();
  newNodes.clearRows();
  Generations generations;
  for (Node& node : alarms->Children())
    (generations.isOld(node) ? oldNodes : newNodes).addRow({&node});
  oldNodes.selectOnly(0);
  newNodes.selectOnly(0);
}

void CDlgE07CfgZelLampManager::showCaptions() {
  const XCBasicString firmware = XCLoadString(TextId::NodeFirmwareVersion);
  SetDlgItemText(Id::OldGroup, firmware + u" < " + XCBasicString::FromUtf8(NewFirmware));
  SetDlgItemText(Id::NewGroup, firmware + u" >= " + XCBasicString::FromUtf8(NewFirmware));
  const auto show = [this](std::span<const Threshold> thresholds, int firstLabel) {
    for (const Threshold& threshold : thresholds)
      SetDlgItemText(firstLabel++, XCLoadString(threshold.caption) + threshold.unit);
  };
  show(OldThresholds, Id::OldLabels);
  show(NewThresholds, Id::NewLabels);
}

void CDlgE07CfgZelLampManager::hideOldNodes() {
  for (const int id :
       {Id::OldGroup, Id::OldNodes, Id::BlinkGroup, Id::BrokenGroup, Id::CapacitorGroup})
    GetDlgItem(id).setVisible(false);
  for (int threshold = 0; threshold < OldCount; ++threshold) {
    GetDlgItem(Id::OldLabels + threshold).setVisible(false);
    GetDlgItem(Id::OldEdits + threshold).setVisible(false);
  }
}

void CDlgE07CfgZelLampManager::Layout() {
  std::vector<host::LayoutItem> generations;
  if (hasOldNodes())
    generations.push_back(layout::box(
        Id::OldGroup,
        {layout::control(Id::OldNodes, 1),
         layout::box(Id::BlinkGroup,
                     {oldPair(BlinkTime, BlinkActive), oldPair(BlinkTotalTime, BlinkTimes)}),
         XCHoritzontalLayout(
             {layout::box(Id::BrokenGroup, {oldPair(BrokenActive, BrokenTime)}, 1),
              layout::box(Id::CapacitorGroup, {oldPair(CapacitorReactive, CapacitorTime)}, 1)})},
        1));
  generations.push_back(
      layout::box(Id::NewGroup,
                  {layout::control(Id::NewNodes, 1), newPair(PowerLamp, TimeAlarm),
                   newPair(PercentageAlarm, FactorPower), newPair(NewBlinkTime, NewBlinkTimes)},
                  1));
  SetLayout(XCVerticalLayout({layout::box(Id::AlarmsGroup, std::move(generations), 1),
                              layout::box(Id::ActivationGroup, {layout::control(Id::Activation)}),
                              layout::okCancelRow()}));
}

bool CDlgE07CfgZelLampManager::Write() {
  if (!copy_.changed()) return true;
  const std::optional<XCBasicString> stamp = activation_.checkedStamp();
  if (!stamp) return false;
  Node* alarms = copy_.prepareWrite(Document(), lamp::section::AlarmsWrite, *stamp);
  if (alarms == nullptr) return false;
  const lamp::RowRewrite ofOld = rewriteOf(OldThresholds);
  const lamp::RowRewrite ofNew = rewriteOf(NewThresholds);
  Generations generations;
  const auto choose = [&](const Node& node) -> const lamp::RowRewrite& {
    return generations.isOld(node) ? ofOld : ofNew;
  };
  return lamp::rewriteRows(*alarms, choose) && writeCfg(false);
}
