#include <array>
#include <set>

#include "controller/model/names.h"
#include "controller/model/section_writer.h"
#include "controller/model/value_rules.h"

namespace lamp::controller {
namespace {

constexpr ValueRule offset(const char* name) {
  return ValueRule{name, ValueKind::Digits, 4, 0, 1440, "", true};
}

constexpr std::array kSectionRules = {offset(names::kSunriseOffset), offset(names::kSunsetOffset)};

constexpr std::array kInputRules = {
    ValueRule{names::kValue, ValueKind::Ignored},
    boundedNumber(names::kDir, 1, 8, 1),
    oneOf(names::kSpontaneous, "NY"),
};

constexpr std::array kOutputRules = {
    ValueRule{names::kValue, ValueKind::Ignored},
    boundedNumber(names::kDir, 1, 8, 1),
    oneOf(names::kSunset, "NY"),
    oneOf(names::kSunrise, "NY"),
    oneOf("In1", "NY"),
    oneOf("In2", "NY"),
    oneOf("In3", "NY"),
    oneOf("In4", "NY"),
    oneOf("In5", "NY"),
    oneOf("In6", "NY"),
    oneOf("In7", "NY"),
    oneOf("In8", "NY"),
    oneOf(names::kFollowNodes, "NY"),
    oneOf(names::kForcedOn, "NY"),
    oneOf(names::kForcedOff, "NY"),
};

bool isPort(pugi::xml_node child) {
  const std::string_view name = child.name();
  return name == names::kInput || name == names::kOutput;
}

std::span<const ValueRule> rulesOf(pugi::xml_node port) {
  if (std::string_view(port.name()) == names::kInput) return kInputRules;
  return kOutputRules;
}

bool isYes(pugi::xml_node element, const char* name) {
  return std::string_view(element.attribute(name).value()) == "Y";
}

pugi::xml_node keptPort(pugi::xml_node section, pugi::xml_node port) {
  return section.find_child_by_attribute(port.name(), names::kDir,
                                         port.attribute(names::kDir).value());
}

Objection judgePort(pugi::xml_node port, pugi::xml_node kept, const std::string& section) {
  const std::string_view number = port.attribute(names::kDir).value();
  const std::string where = section + ", " + port.name() + " " + quoted(number);
  if (number.empty()) return unacceptable(where, "it has no Dir; it must be 1 to 8");
  if (auto objection = judgeAttributes(port, rulesOf(port), where)) return objection;
  if (auto objection = judgeMerge({port}, keptPort(kept, port), where)) return objection;
  if (isYes(port, names::kSunset) && isYes(port, names::kSunrise)) {
    return unacceptable(where, "Ocaso and Orto are both \"Y\"; at most one of them may be");
  }
  return std::nullopt;
}

Objection judgePorts(pugi::xml_node element, const SectionView& store) {
  const pugi::xml_node section = store.section(names::kInputsOutputs);
  if (auto objection = judgeMerge({element}, section, element.name())) return objection;
  if (auto objection = judgeAttributes(element, kSectionRules, element.name())) return objection;
  std::set<std::string> seen;
  for (const pugi::xml_node port : element.children()) {
    if (!isPort(port)) continue;
    if (auto objection = judgePort(port, section, element.name())) return objection;
    const std::string key = std::string(port.name()) + " " + port.attribute(names::kDir).value();
    if (!seen.insert(key).second) {
      return unacceptable(element.name(), key + " stands twice; send it once");
    }
  }
  return std::nullopt;
}

void applyPorts(pugi::xml_node element, SectionView& store, Moment) {
  pugi::xml_node section = store.sectionToChange(names::kInputsOutputs);
  takeSectionAttributes(element, section);
  static constexpr const char* kLive[] = {names::kValue};
  for (const pugi::xml_node port : element.children()) {
    if (!isPort(port)) continue;
    pugi::xml_node kept = keptPort(section, port);
    if (!kept) kept = section.append_child(port.name());
    takeAttributes(port, kept, kLive);
  }
}

bool differs(pugi::xml_node port, const SectionView& store) {
  if (!isPort(port)) return false;
  const pugi::xml_node shown = keptPort(store.section(names::kInputsOutputs), port);
  static constexpr const char* Live[] = {names::kValue};
  return saysMore(port, shown, Live);
}

constexpr std::array kWriters = {
    SectionWriter{"E13", WriteTiming::Dated, judgePorts, applyPorts, differs}};

}  // namespace

std::span<const SectionWriter> inputOutputWriters() {
  return kWriters;
}

}  // namespace lamp::controller
