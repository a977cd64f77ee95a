#include "pages/input_output_grid.h"

#include "pages/binding/value_controls.h"

namespace lamp::io {
namespace {

using host::Binding;
using host::TextId;
using host::ValueKind;
using Node = XmlDocument::XmlNode;

const host::XmlName Number("Dir");
const host::XmlName ForcedOn("On");
const host::XmlName ForcedOff("Off");

constexpr std::u16string_view Automatic = u"A";
constexpr std::u16string_view On = u"N";
constexpr std::u16string_view Off = u"F";
constexpr std::u16string_view Yes = u"Y";
constexpr std::u16string_view No = u"N";

// 0 for a number that is none of the controller's, or not written as the controller writes it.
int lineOf(const Node& row) {
  for (int line = 1; line <= LineCount; ++line)
    if (row.attribute(Number) == host::decimal(line)) return line;
  return 0;
}

XCBasicString modeOf(const Node& output) {
  if (output.attribute(ForcedOn) == Yes) return On;
  return output.attribute(ForcedOff) == Yes ? Off : Automatic;
}

void setMode(Node& output, const XCBasicString& mode) {
  output.setAttribute(ForcedOn, mode == On ? Yes : No);
  output.setAttribute(ForcedOff, mode == Off ? Yes : No);
}

Binding flag(const char* attribute, host::Caption caption) {
  return {
      .name = attribute, .attributes = {attribute}, .caption = caption, .kind = ValueKind::flag};
}

Binding mode() {
  Binding value{.name = "mode",
                .attributes = {ForcedOn, ForcedOff},
                .caption = {TextId::Mode},
                .kind = ValueKind::choice};
  value.choices = {{TextId::Automatic, Automatic[0]}, {TextId::On, On[0]}, {TextId::Off, Off[0]}};
  value.read = modeOf;
  value.write = setMode;
  return value;
}

Binding state() {
  Binding value = flag("Value", {TextId::Status});
  value.owner = host::ValueOwner::controller;
  value.controlName = "status";
  return value;
}

std::vector<Binding> inputValues() {
  return {state(), flag("SponEnable", {TextId::Spontaneous})};
}

std::vector<Binding> outputValues() {
  return {flag("Ocaso", {TextId::Sunset}),
          flag("Orto", {TextId::Sunrise}),
          flag("In1", {.suffix = u"In1"}),
          flag("In2", {.suffix = u"In2"}),
          flag("In3", {.suffix = u"In3"}),
          flag("In4", {.suffix = u"In4"}),
          flag("In5", {.suffix = u"In5"}),
          flag("In6", {.suffix = u"In6"}),
          flag("In7", {.suffix = u"In7"}),
          flag("In8", {.suffix = u"In8"}),
          flag("SincNode", {TextId::NodeSynchronisation}),
          mode(),
          state()};
}

Grid made(Grid grid, TextId frame, std::vector<Binding> values) {
  int control = grid.firstLine;
  for (Binding& value : values) {
    value.frame = {frame};
    value.control = ++control;
  }
  const auto isLine = [tag = grid.tag](const Node& row) {
    return row.TagName() == tag && lineOf(row) != 0;
  };
  const auto identity = [name = XCBasicString::FromUtf8(grid.name)](const Node& row) {
    return name + row.getAttribute(Number);
  };
  grid.rows = {
      .places = {{}}, .isRow = isLine, .identity = identity, .bindings = std::move(values)};
  grid.rows.controlOf = [](const Node& row, const Binding& value) {
    return value.control + (lineOf(row) - 1) * IdStep;
  };
  return grid;
}

}  // namespace

const Grid& inputs() {
  static const Grid grid = made({.name = "input",
                                 .lineHead = TextId::Input,
                                 .lineName = TextId::InputNumber,
                                 .firstHead = FirstHeadId,
                                 .firstLine = FirstInputId,
                                 .tag = "Input"},
                                TextId::Inputs, inputValues());
  return grid;
}

const Grid& outputs() {
  static const Grid grid = made({.name = "output",
                                 .lineHead = TextId::Output,
                                 .lineName = TextId::OutputNumber,
                                 .firstHead = FirstHeadId + IdStep,
                                 .firstLine = FirstOutputId,
                                 .tag = "Output"},
                                TextId::Outputs, outputValues());
  return grid;
}

std::vector<host::ControlSpec> Grid::controls() const {
  std::vector<host::ControlSpec> specs;
  for (int column = 0; column <= static_cast<int>(rows.bindings.size()); ++column)
    specs.push_back(host::label(firstHead + column, name + "Head" + std::to_string(column + 1)));
  for (int line = 1; line <= LineCount; ++line) {
    const std::string lineControl = name + std::to_string(line);
    specs.push_back(host::label(firstLine + (line - 1) * IdStep, lineControl));
    for (const Binding& value : rows.bindings) {
      host::ControlSpec spec = controlOf(value);
      if (value.owner == host::ValueOwner::controller) spec.kind = host::ControlKind::label;
      spec.id = control(value, line);
      spec.name = lineControl + "." + value.nameOfControl();
      specs.push_back(std::move(spec));
    }
  }
  return specs;
}

host::LayoutItem Grid::layout() const {
  const int columns = static_cast<int>(rows.bindings.size()) + 1;
  std::vector<host::LayoutItem> items;
  for (int column = 0; column < columns; ++column)
    items.push_back(host::layout::control(firstHead + column));
  for (int line = 0; line < LineCount; ++line)
    for (int column = 0; column < columns; ++column)
      items.push_back(host::layout::control(firstLine + line * IdStep + column));
  return host::layout::grid(columns, std::move(items));
}

void Grid::showCaptions(XCBaseDlg& dialog) const {
  dialog.SetDlgItemText(firstHead, lineHead);
  int head = firstHead;
  for (const Binding& value : rows.bindings)
    dialog.SetDlgItemText(++head, value.caption.toString());
  for (int line = 1; line <= LineCount; ++line)
    dialog.SetDlgItemText(firstLine + (line - 1) * IdStep,
                          XCBasicString::Format(XCLoadString(lineName), line));
}

void Grid::show(XCBaseDlg& dialog, int line, const Node& row) const {
  for (const Binding& value : rows.bindings) {
    const int id = control(value, line);
    if (value.owner == host::ValueOwner::controller) {
      dialog.SetDlgItemText(id, value.valueIn(row) == u"0" ? TextId::Off : TextId::On);
      continue;
    }
    if (value.kind == ValueKind::choice) fillChoices(dialog.Combo(id), value);
    showValue(dialog, id, value, row);
  }
}

Node* Grid::rowOf(Node& section, int line) const {
  for (Node& child : section.Children())
    if (rows.isRow(child) && lineOf(child) == line) return &child;
  return nullptr;
}

}  // namespace lamp::io
