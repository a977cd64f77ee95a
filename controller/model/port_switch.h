#pragma once

#include <array>

#include "controller/model/lamp_street.h"
#include "controller/model/section_store.h"

namespace lamp::controller {

inline constexpr int kPorts = 8;

/// The eight inputs and outputs as they are now; index 0 is number 1.
struct PortStates {
  std::array<bool, kPorts> inputs{};
  std::array<bool, kPorts> outputs{};
};

/// Works out the outputs from the section in force: forced on, else forced off, else on while any
/// of its switches is. "Ocaso" (sunset) is on by night, "Orto" (sunrise) by day, each with its
/// offset; "In1" to "In8" while that input is active; "SincNode" while any lamp burns.
PortStates switchPorts(const SectionStore& store, const LampStreet& street);

/// Sets the state of an input (1 to 8) in the section.
void setInput(SectionView& store, int number, bool active);

}  // namespace lamp::controller
