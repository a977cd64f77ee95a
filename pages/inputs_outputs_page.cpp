#include "pages/inputs_outputs_page.h"

#include "exchange/template_numbers.h"
#include "pages/binding/section_write.h"
#include "pages/binding/value_controls.h"

using host::Binding;
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

const host::XmlName Number("Dir");

Binding offset(const char* attribute, TextId caption, int label, int control) {
  return {.name = attribute,
          .attributes = {attribute},
          .caption = {.text = caption, .unit = TextId::MinutesUnit, .unitInside = true},
          .kind = host::ValueKind::number,
          .control = control,
          .label = label};
}

host::PageDescription makeTable() {
  host::PageDescription page = lamp::wholeSection(
      {lamp::section::InputsRead, lamp::section::InputsWrite, lamp::StampRule::activation});
  page.activation = Id::Activation;
  page.fields = {
      offset("offsetSunRise", TextId::SunriseOffset, Id::SunriseOffsetLabel, Id::SunriseOffset),
      offset("offsetSunSet", TextId::SunsetOffset, Id::SunsetOffsetLabel, Id::SunsetOffset)};
  page.rows = {io::inputs().rows, io::outputs().rows};
  return page;
}

const Binding& outputValue(io::OutputColumn column) {
  return io::outputs().rows.bindings[column];
}

int outputControl(io::OutputColumn column, int line) {
  return io::outputs().control(outputValue(column), line);
}

}  // namespace

const host::PageDescription& CDlgE13CfgZelLampManager::PageTable() {
  static const host::PageDescription page = makeTable();
  return page;
}

CDlgE13CfgZelLampManager::CDlgE13CfgZelLampManager(XCDriver* driver, CWnd* parent)
    : DocumentPage(lamp::template_number::InputsOutputs, PageTable(), driver, parent) {}

host::DialogTemplate CDlgE13CfgZelLampManager::Template() {
  return {lamp::template_number::InputsOutputs, "CDlgE13CfgZelLampManager", "E13",
          lamp::joined({{host::group(Id::InputsGroup, "inputsGroup", TextId::Inputs)},
                        io::inputs().controls(),
                        {host::group(Id::OutputsGroup, "outputsGroup", TextId::Outputs)},
                        io::outputs().controls(),
                        {host::group(Id::OffsetGroup, "offsetGroup", TextId::Offset)},
                        lamp::controlsOf(PageTable().fields),
                        lamp::activationControls(Id::ActivationGroup, Id::Activation),
                        {host::okButton(TextId::Send), host::cancelButton()}})};
}

const host::MessageMap* CDlgE13CfgZelLampManager::GetMessageMap() const {
  static constexpr host::MessageEntry entries[] = {
      host::onClick<&CDlgE13CfgZelLampManager::OnSwitch>(io::FirstOutputId, io::LastOutputId)};
  static constexpr host::MessageMap map{nullptr, entries};
  return &map;
}

bool CDlgE13CfgZelLampManager::OnInitDialog() {
  SetWindowText(XCLoadString(TextId::InputsAndOutputs));
  for (const io::Grid* grid : {&io::inputs(), &io::outputs()}) grid->showCaptions(*this);
  lamp::showCaptions(*this, PageTable().fields);
  return DocumentPage::OnInitDialog();
}

void CDlgE13CfgZelLampManager::Layout() {
  host::LayoutItem offsets =
      layout::grid(2, {layout::control(Id::SunriseOffsetLabel), layout::control(Id::SunriseOffset),
                       layout::control(Id::SunsetOffsetLabel), layout::control(Id::SunsetOffset)});
  SetLayout(XCVerticalLayout(
      {XCHoritzontalLayout(
           {XCVerticalLayout({layout::box(Id::InputsGroup, {io::inputs().layout()}),
                              layout::box(Id::OffsetGroup, {std::move(offsets)}),
                              lamp::activationBox(Id::ActivationGroup, Id::Activation),
                              layout::stretch()}),
            layout::box(Id::OutputsGroup, {io::outputs().layout(), layout::stretch()}, 1)}),
       layout::stretch(), layout::okCancelRow()}));
}

void CDlgE13CfgZelLampManager::DoDataExchange(CDataExchange* exchange) {
  Node* section = Copy().section();
  if (section == nullptr) return;
  if (!exchange->m_bSaveAndValidate) return showSection(*section);
  // From the section as it was read each time: what a refused write took along must not stay.
  *section = *Untouched();
  takeControls(*section);
}

const Node* CDlgE13CfgZelLampManager::Edited() {
  UpdateData(true);
  return Copy().section();
}

void CDlgE13CfgZelLampManager::showSection(const Node& section) {
  for (const Node& child : section.Children()) {
    const bool isOutput = child.TagName() == io::outputs().tag;
    if (!isOutput && child.TagName() != io::inputs().tag) continue;
    const int line = child.attribute(Number).toInt();
    // Deliberate: a number that is none of the controller's ends the filling altogether, and the
    // offsets stay empty too.
    if (line < 1 || line > io::LineCount) return;
    (isOutput ? io::outputs() : io::inputs()).show(*this, line, child);
    if (isOutput)
      readModes_[static_cast<std::size_t>(line - 1)] = outputValue(io::Mode).valueIn(child);
  }
  for (const Binding& field : PageTable().fields)
    lamp::showValue(*this, field.control, field, section);
}

// Sunset and sunrise exclude each other; nothing else is coupled.
void CDlgE13CfgZelLampManager::OnSwitch(int controlId) {
  for (int line = 1; line <= io::LineCount; ++line) {
    const int sunset = outputControl(io::Sunset, line);
    const int sunrise = outputControl(io::Sunrise, line);
    if (controlId != sunset && controlId != sunrise) continue;
    if (Check(controlId).isOn()) Check(controlId == sunset ? sunrise : sunset).setOn(false);
  }
}

// Every box and both offsets are sent, also where the section lacks them.
void CDlgE13CfgZelLampManager::takeControls(Node& section) const {
  for (int line = 1; line <= io::LineCount; ++line)
    for (const io::Grid* grid : {&io::inputs(), &io::outputs()})
      if (Node* row = grid->rowOf(section, line)) takeLine(*grid, line, *row);
  for (const Binding& field : PageTable().fields)
    field.put(section, *lamp::valueOn(*this, field.control, field));
}

void CDlgE13CfgZelLampManager::takeLine(const io::Grid& grid, int line, Node& row) const {
  for (const Binding& value : grid.rows.bindings) {
    if (value.owner == host::ValueOwner::controller) continue;
    const auto shown = lamp::valueOn(*this, grid.control(value, line), value);
    // A mode that stands as it was read keeps both attributes, which may say more than one mode
    // can.
    const bool stays = value.kind == host::ValueKind::choice &&
                       (!shown || shown == readModes_[static_cast<std::size_t>(line - 1)]);
    if (!stays) value.put(row, *shown);
  }
}
