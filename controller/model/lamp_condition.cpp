#include "controller/model/lamp_condition.h"

#include <array>
#include <cstdint>

namespace lamp::controller {
namespace {

struct ConditionRule {
  LampCondition condition;
  const char* text;
  double health;
};

constexpr std::array kRules = {
    ConditionRule{LampCondition::AsBuilt, "", 1.0},
    ConditionRule{LampCondition::Good, "good", 1.0},
    ConditionRule{LampCondition::Ageing, "ageing", 0.7},
    ConditionRule{LampCondition::Broken, "broken", 0.05},
};

// The fault hangs on the node's identity (FNV-1a hash).
LampCondition builtCondition(std::string_view nodeId) {
  std::uint32_t hash = 2166136261U;
  for (const char c : nodeId) hash = (hash ^ static_cast<unsigned char>(c)) * 16777619U;
  switch (hash % 97U) {
    case 0:
      return LampCondition::Broken;
    case 1:
      return LampCondition::Ageing;
    default:
      return LampCondition::Good;
  }
}

}  // namespace

const char* textOf(LampCondition condition) {
  for (const ConditionRule& rule : kRules) {
    if (rule.condition == condition) return rule.text;
  }
  return "";
}

bool readCondition(std::string_view text, LampCondition& condition) {
  for (const ConditionRule& rule : kRules) {
    if (text != rule.text) continue;
    condition = rule.condition;
    return true;
  }
  return false;
}

LampCondition presentCondition(LampCondition condition, std::string_view nodeId) {
  return condition == LampCondition::AsBuilt ? builtCondition(nodeId) : condition;
}

double healthOf(LampCondition condition) {
  for (const ConditionRule& rule : kRules) {
    if (rule.condition == condition) return rule.health;
  }
  return 1.0;
}

}  // namespace lamp::controller
