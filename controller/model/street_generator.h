#pragma once

#include <cstdint>
#include <string>

#include "controller/model/section_store.h"

namespace lamp::controller {

/// What a new controller is made from. The same plan gives the same street on every machine.
struct StreetPlan {
  std::size_t nodes = 200;
  std::uint64_t seed = 7;
  bool withInputs = false;
};

/// Fills an empty store with a small town: nodes along streets, with positions, firmware of both
/// generations, programs, thresholds, tasks, inputs and outputs. The store is indexed afterwards.
void generateStreet(const StreetPlan& plan, SectionStore& store);

/// The identifier of a controller that was given none: "LM" and the seed in eight digits.
std::string defaultIdentifier(std::uint64_t seed);

}  // namespace lamp::controller
