#pragma once

#include <string_view>

#include "controller/model/civil_time.h"

namespace lamp::controller {

/// How well a lamp burns. Of the lamps that nobody touched a few are faulty from the start, always
/// the same ones; the others can be made so.
enum class LampCondition {
  AsBuilt,
  Good,    ///< measures what is expected of it
  Ageing,  ///< measures 70 % of it
  Broken   ///< measures 5 % of it
};

/// A condition and since when a lamp is in it.
struct LampHealth {
  LampCondition condition = LampCondition::AsBuilt;
  Moment since{};
};

/// "good", "ageing", "broken"; empty for a lamp as it was built.
const char* textOf(LampCondition condition);

/// Reads what `textOf` makes. False for any other text.
bool readCondition(std::string_view text, LampCondition& condition);

/// The condition of a lamp with this identity: the given one, or that in which it was built.
LampCondition presentCondition(LampCondition condition, std::string_view nodeId);

/// What a lamp measures of what is expected of it; all of it for a lamp as it was built.
double healthOf(LampCondition condition);

}  // namespace lamp::controller
