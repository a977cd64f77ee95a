#pragma once

#include <vector>

#include "host/ui/control_spec.h"
#include "host/ui/layout.h"
#include "host/xml/xml_name.h"

// The two grids of the inputs and outputs page: a row for every input and for every output of the
// controller, numbered from 1.

namespace lamp::io {

constexpr int LineCount = 8;
/// What can switch an output: sunset, sunrise, the inputs, the synchronisation of the nodes.
constexpr int SwitchCount = 11;

/// The attribute of a switch, which is also the ending of its check box's name; 0 is sunset, 1 is
/// sunrise.
host::XmlName switchAttribute(int index);
constexpr int SunsetSwitch = 0;
constexpr int SunriseSwitch = 1;

// The controls of the rows. The private ids below 100 are the page's own.
constexpr int FirstInputId = host::privateId(100);
constexpr int InputIdStep = 10;
constexpr int FirstOutputId = host::privateId(200);
constexpr int OutputIdStep = 20;
constexpr int FirstHeadId = host::privateId(400);

constexpr int inputName(int input) {
  return FirstInputId + (input - 1) * InputIdStep;
}
constexpr int inputStatus(int input) {
  return inputName(input) + 1;
}
constexpr int inputSpontaneous(int input) {
  return inputName(input) + 2;
}

constexpr int outputName(int output) {
  return FirstOutputId + (output - 1) * OutputIdStep;
}
constexpr int outputSwitch(int output, int index) {
  return outputName(output) + 1 + index;
}
constexpr int outputMode(int output) {
  return outputName(output) + 1 + SwitchCount;
}
constexpr int outputStatus(int output) {
  return outputMode(output) + 1;
}

constexpr int LastOutputId = outputStatus(LineCount);

/// The captions of the columns and the controls of the rows.
std::vector<host::ControlSpec> inputControls();
std::vector<host::ControlSpec> outputControls();

host::LayoutItem inputGrid();
host::LayoutItem outputGrid();

/// Where the captions "In1" to "In8" stand, which have no text number.
int inputHead(int input);

}  // namespace lamp::io
