#include "controller/model/port_switch.h"

#include <string>

#include "controller/model/names.h"
#include "controller/model/value_rules.h"

namespace lamp::controller {
namespace {

bool isYes(pugi::xml_node port, const std::string& name) {
  return std::string_view(port.attribute(name.c_str()).value()) == "Y";
}

bool switchedOn(pugi::xml_node output, const PortStates& states, const LampStreet& street) {
  if (isYes(output, names::kForcedOn)) return true;
  if (isYes(output, names::kForcedOff)) return false;
  bool on = (isYes(output, names::kSunset) && street.isNight()) ||
            (isYes(output, names::kSunrise) && !street.isNight()) ||
            (isYes(output, names::kFollowNodes) && street.anyLit());
  for (int input = 0; input < kPorts; ++input) {
    on = on || (isYes(output, "In" + std::to_string(input + 1)) &&
                states.inputs[static_cast<std::size_t>(input)]);
  }
  return on;
}

// 0 to 7, or 8 where the number is out of range.
std::size_t indexOf(pugi::xml_node port) {
  const int number = port.attribute(names::kDir).as_int();
  return number >= 1 && number <= kPorts ? static_cast<std::size_t>(number - 1) : kPorts;
}

}  // namespace

PortStates switchPorts(const SectionStore& store, const LampStreet& street) {
  PortStates states;
  const pugi::xml_node section = store.section(names::kInputsOutputs);
  for (const pugi::xml_node input : section.children(names::kInput)) {
    if (indexOf(input) >= kPorts) continue;
    states.inputs[indexOf(input)] = std::string_view(input.attribute(names::kValue).value()) != "0";
  }
  for (const pugi::xml_node output : section.children(names::kOutput)) {
    if (indexOf(output) < kPorts)
      states.outputs[indexOf(output)] = switchedOn(output, states, street);
  }
  return states;
}

void setInput(SectionView& store, int number, bool active) {
  pugi::xml_node input =
      store.sectionToChange(names::kInputsOutputs)
          .find_child_by_attribute(names::kInput, names::kDir, std::to_string(number).c_str());
  if (input) putAttribute(input, names::kValue, active ? "1" : "0");
}

}  // namespace lamp::controller
