#include "pages/input_output_grid.h"

#include <string>

namespace lamp::io {
namespace {

using host::TextId;

struct Switch {
  const char* attribute;
  TextId caption;
};

// The columns of the check boxes, in the order of the grid and of the section.
constexpr Switch Switches[SwitchCount] = {{"Ocaso", TextId::Sunset},
                                          {"Orto", TextId::Sunrise},
                                          {"In1", TextId::None},
                                          {"In2", TextId::None},
                                          {"In3", TextId::None},
                                          {"In4", TextId::None},
                                          {"In5", TextId::None},
                                          {"In6", TextId::None},
                                          {"In7", TextId::None},
                                          {"In8", TextId::None},
                                          {"SincNode", TextId::NodeSynchronisation}};
constexpr int FirstInputSwitch = 2;

constexpr int InputColumns = 3;
constexpr int OutputColumns = SwitchCount + 3;
constexpr int FirstOutputHeadId = FirstHeadId + InputColumns;

void addHead(std::vector<host::ControlSpec>& controls, int firstHead, const std::string& grid,
             TextId caption) {
  const int column = static_cast<int>(controls.size());
  controls.push_back(
      host::label(firstHead + column, grid + "Head" + std::to_string(column + 1), caption));
}

std::vector<host::LayoutItem> heads(int firstHead, int columns) {
  std::vector<host::LayoutItem> items;
  for (int column = 0; column < columns; ++column)
    items.push_back(host::layout::control(firstHead + column));
  return items;
}

}  // namespace

host::XmlName switchAttribute(int index) {
  static const std::vector<host::XmlName> names = [] {
    std::vector<host::XmlName> all;
    for (const Switch& column : Switches) all.emplace_back(column.attribute);
    return all;
  }();
  return names[static_cast<std::size_t>(index)];
}

int inputHead(int input) {
  return FirstOutputHeadId + FirstInputSwitch + input;
}

std::vector<host::ControlSpec> inputControls() {
  std::vector<host::ControlSpec> controls;
  for (const TextId caption : {TextId::Input, TextId::Status, TextId::Spontaneous})
    addHead(controls, FirstHeadId, "input", caption);
  for (int input = 1; input <= LineCount; ++input) {
    const std::string name = "input" + std::to_string(input);
    controls.push_back(host::label(inputName(input), name));
    controls.push_back(host::label(inputStatus(input), name + ".status"));
    controls.push_back(host::check(inputSpontaneous(input), name + ".SponEnable"));
  }
  return controls;
}

std::vector<host::ControlSpec> outputControls() {
  std::vector<host::ControlSpec> controls;
  addHead(controls, FirstOutputHeadId, "output", TextId::Output);
  for (const Switch& column : Switches)
    addHead(controls, FirstOutputHeadId, "output", column.caption);
  for (const TextId caption : {TextId::Mode, TextId::Status})
    addHead(controls, FirstOutputHeadId, "output", caption);
  for (int output = 1; output <= LineCount; ++output) {
    const std::string name = "output" + std::to_string(output);
    controls.push_back(host::label(outputName(output), name));
    for (int index = 0; index < SwitchCount; ++index)
      controls.push_back(
          host::check(outputSwitch(output, index), name + "." + Switches[index].attribute));
    controls.push_back(host::combo(outputMode(output), name + ".mode"));
    controls.push_back(host::label(outputStatus(output), name + ".status"));
  }
  return controls;
}

host::LayoutItem inputGrid() {
  std::vector<host::LayoutItem> items = heads(FirstHeadId, InputColumns);
  for (int input = 1; input <= LineCount; ++input)
    for (const int id : {inputName(input), inputStatus(input), inputSpontaneous(input)})
      items.push_back(host::layout::control(id));
  return host::layout::grid(InputColumns, std::move(items));
}

host::LayoutItem outputGrid() {
  std::vector<host::LayoutItem> items = heads(FirstOutputHeadId, OutputColumns);
  for (int output = 1; output <= LineCount; ++output)
    for (int id = outputName(output); id <= outputStatus(output); ++id)
      items.push_back(host::layout::control(id));
  return host::layout::grid(OutputColumns, std::move(items));
}

}  // namespace lamp::io
