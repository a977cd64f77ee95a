#include "pages/inputs_outputs_page.h"

#include "exchange/template_numbers.h"

using host::TextId;
using Node = XmlDocument::XmlNode;
namespace io = lamp::io;
namespace layout = host::layout;

namespace {

enum Id {
  InputsGroup = host::privateId(0),
  OutputsGroup,
  OffsetGroup,
  SunriseOffsetLabel,
  SunriseOffset,
  SunsetOffsetLabel,
  SunsetOffset,
  ActivationGroup,
  Activation,
};

const host::XmlName Input("Input");
const host::XmlName Output("Output");
const host::XmlName Number("Dir");
const host::XmlName Value("Value");
const host::XmlName SpontaneousReport("SponEnable");
const host::XmlName ForcedOn("On");
const host::XmlName ForcedOff("Off");
const host::XmlName OffsetOfSunrise("offsetSunRise");
const host::XmlName OffsetOfSunset("offsetSunSet");

constexpr int ModeAutomatic = u'A';
constexpr int ModeOn = u'N';
constexpr int ModeOff = u'F';

int modeOf(const Node& output) {
  if (output.attribute(ForcedOn) == u"Y") return ModeOn;
  return output.attribute(ForcedOff) == u"Y" ? ModeOff : ModeAutomatic;
}

// Only an explicit No unchecks a box: one whose attribute is missing shows checked.
bool isChecked(const Node& element, host::XmlName attribute) {
  return !(element.attribute(attribute) == u"N");
}

void setYesNo(Node& element, host::XmlName attribute, bool on) {
  element.setAttribute(attribute, on ? u"Y" : u"N");
}

Node* lineOf(Node& section, host::XmlName tag, int number) {
  const XCBasicString wanted = host::decimal(number);
  for (Node& child : section.Children())
    if (child.TagName() == tag && child.attribute(Number) == wanted) return &child;
  return nullptr;
}

XCBasicString statusText(const Node& element) {
  return XCLoadString(element.attribute(Value) == u"0" ? TextId::Off : TextId::On);
}

}  // namespace

CDlgE13CfgZelLampManager::CDlgE13CfgZelLampManager(XCDriver* driver, CWnd* parent)
    : SettingsPage(lamp::template_number::InputsOutputs, lamp::section::InputsRead, driver, parent),
      copy_(lamp::section::InputsRead),
      activation_(*this, Id::Activation) {}

host::DialogTemplate CDlgE13CfgZelLampManager::Template() {
  host::DialogTemplate dialog{
      lamp::template_number::InputsOutputs, "CDlgE13CfgZelLampManager", "E13", {}};
  const auto add = [&](const std::vector<host::ControlSpec>& controls) {
    dialog.controls.insert(dialog.controls.end(), controls.begin(), controls.end());
  };
  add({host::group(Id::InputsGroup, "inputsGroup", TextId::Inputs)});
  add(io::inputControls());
  add({host::group(Id::OutputsGroup, "outputsGroup", TextId::Outputs)});
  add(io::outputControls());
  add({host::group(Id::OffsetGroup, "offsetGroup", TextId::Offset),
       host::label(Id::SunriseOffsetLabel, "offsetSunRiseLabel"),
       host::digitsEdit(Id::SunriseOffset, "offsetSunRise"),
       host::label(Id::SunsetOffsetLabel, "offsetSunSetLabel"),
       host::digitsEdit(Id::SunsetOffset, "offsetSunSet"),
       host::group(Id::ActivationGroup, "activationGroup", TextId::DateAndTime),
       host::edit(Id::Activation, "activation"), host::okButton(TextId::Send),
       host::cancelButton()});
  return dialog;
}

const host::MessageMap* CDlgE13CfgZelLampManager::GetMessageMap() const {
  static constexpr host::MessageEntry entries[] = {
      host::onClick<&CDlgE13CfgZelLampManager::OnSwitch>(io::FirstOutputId, io::LastOutputId)};
  static constexpr host::MessageMap map{nullptr, entries};
  return &map;
}

bool CDlgE13CfgZelLampManager::OnInitDialog() {
  SetWindowText(XCLoadString(TextId::InputsAndOutputs));
  showCaptions();
  activation_.initialise();
  copy_.take(Document());
  return SettingsPage::OnInitDialog();
}

void CDlgE13CfgZelLampManager::Layout() {
  host::LayoutItem offsets =
      layout::grid(2, {layout::control(Id::SunriseOffsetLabel), layout::control(Id::SunriseOffset),
                       layout::control(Id::SunsetOffsetLabel), layout::control(Id::SunsetOffset)});
  SetLayout(XCVerticalLayout(
      {XCHoritzontalLayout(
           {XCVerticalLayout({layout::box(Id::InputsGroup, {io::inputGrid()}),
                              layout::box(Id::OffsetGroup, {std::move(offsets)}),
                              layout::box(Id::ActivationGroup, {layout::control(Id::Activation)}),
                              layout::stretch()}),
            layout::box(Id::OutputsGroup, {io::outputGrid(), layout::stretch()}, 1)}),
       layout::stretch(), layout::okCancelRow()}));
}

void CDlgE13CfgZelLampManager::showCaptions() {
  for (int line = 1; line <= io::LineCount; ++line) {
    SetDlgItemText(io::inputName(line),
                   XCBasicString::Format(XCLoadString(TextId::InputNumber), line));
    SetDlgItemText(io::outputName(line),
                   XCBasicString::Format(XCLoadString(TextId::OutputNumber), line));
    SetDlgItemText(io::inputHead(line), XCBasicString::Format(u"In%d", line));
  }
  const XCBasicString unit = XCLoadString(TextId::MinutesUnit);
  SetDlgItemText(Id::SunriseOffsetLabel,
                 XCBasicString::Format(XCLoadString(TextId::SunriseOffset), unit));
  SetDlgItemText(Id::SunsetOffsetLabel,
                 XCBasicString::Format(XCLoadString(TextId::SunsetOffset), unit));
}

void CDlgE13CfgZelLampManager::DoDataExchange(CDataExchange* exchange) {
  Node* section = copy_.section();
  if (section == nullptr) return;
  if (!exchange->m_bSaveAndValidate) return showSection(*section);
  // From the copy as it was read each time: what a refused write took along must not stay.
  *section = *lamp::sectionOf(copy_.untouched(), lamp::section::InputsRead);
  takeControls(*section);
}

// --- from the section to the controls

void CDlgE13CfgZelLampManager::showSection(const Node& section) {
  for (const Node& child : section.Children()) {
    if (child.TagName() != Input && child.TagName() != Output) continue;
    const int number = child.attribute(Number).toInt();
    // Deliberate: a number that is none of the controller's ends the filling altogether, and the
    // offsets stay empty too.
    if (number < 1 || number > io::LineCount) return;
    if (child.TagName() == Input)
      showInput(number, child);
    else
      showOutput(number, child);
  }
  SetDlgItemText(Id::SunriseOffset, section.getAttribute(OffsetOfSunrise));
  SetDlgItemText(Id::SunsetOffset, section.getAttribute(OffsetOfSunset));
}

void CDlgE13CfgZelLampManager::showInput(int input, const Node& element) {
  SetDlgItemText(io::inputStatus(input), statusText(element));
  Check(io::inputSpontaneous(input)).setOn(isChecked(element, SpontaneousReport));
}

void CDlgE13CfgZelLampManager::showOutput(int output, const Node& element) {
  for (int index = 0; index < io::SwitchCount; ++index)
    Check(io::outputSwitch(output, index)).setOn(isChecked(element, io::switchAttribute(index)));
  host::ComboControl& mode = Combo(io::outputMode(output));
  mode.clearItems();
  mode.addItem(XCLoadString(TextId::Automatic), ModeAutomatic);
  mode.addItem(XCLoadString(TextId::On), ModeOn);
  mode.addItem(XCLoadString(TextId::Off), ModeOff);
  mode.selectData(modeOf(element));
  readModes_[static_cast<std::size_t>(output - 1)] = mode.selectedData();
  SetDlgItemText(io::outputStatus(output), statusText(element));
}

// --- edits

// Sunset and sunrise exclude each other; nothing else is coupled.
void CDlgE13CfgZelLampManager::OnSwitch(int controlId) {
  for (int output = 1; output <= io::LineCount; ++output) {
    const int sunset = io::outputSwitch(output, io::SunsetSwitch);
    const int sunrise = io::outputSwitch(output, io::SunriseSwitch);
    if (controlId != sunset && controlId != sunrise) continue;
    if (Check(controlId).isOn()) Check(controlId == sunset ? sunrise : sunset).setOn(false);
  }
}

// --- from the controls to the section

void CDlgE13CfgZelLampManager::takeControls(Node& section) const {
  for (int line = 1; line <= io::LineCount; ++line) {
    if (Node* input = lineOf(section, Input, line))
      setYesNo(*input, SpontaneousReport, Check(io::inputSpontaneous(line)).isOn());
    if (Node* output = lineOf(section, Output, line)) takeOutput(line, *output);
  }
  section.setAttribute(OffsetOfSunrise, GetDlgItemText(Id::SunriseOffset));
  section.setAttribute(OffsetOfSunset, GetDlgItemText(Id::SunsetOffset));
}

void CDlgE13CfgZelLampManager::takeOutput(int output, Node& element) const {
  for (int index = 0; index < io::SwitchCount; ++index)
    setYesNo(element, io::switchAttribute(index), Check(io::outputSwitch(output, index)).isOn());
  const std::optional<int> mode = Combo(io::outputMode(output)).selectedData();
  // A mode that stands as it was read keeps both attributes, which may say more than one mode can.
  if (!mode || mode == readModes_[static_cast<std::size_t>(output - 1)]) return;
  setYesNo(element, ForcedOn, *mode == ModeOn);
  setYesNo(element, ForcedOff, *mode == ModeOff);
}

bool CDlgE13CfgZelLampManager::Write() {
  if (!copy_.changed()) return true;
  const std::optional<XCBasicString> stamp = activation_.checkedStamp();
  if (!stamp) return false;
  return copy_.prepareWrite(Document(), lamp::section::InputsWrite, *stamp) != nullptr &&
         writeCfg(false);
}
