#include <array>

#include "controller/model/names.h"
#include "controller/model/section_writer.h"
#include "controller/model/value_rules.h"

namespace lamp::controller {
namespace {

constexpr ValueRule duration(const char* name) {
  return boundedNumber(name, 0, 999, 3);
}
constexpr ValueRule percent(const char* name) {
  return boundedNumber(name, 0, 100, 3);
}
constexpr ValueRule hour(const char* name) {
  return boundedNumber(name, 0, 23, 2);
}
constexpr ValueRule minute(const char* name) {
  return boundedNumber(name, 0, 59, 2);
}
// A threshold that a node does not have travels as an empty text.
constexpr ValueRule threshold(const char* name) {
  return ValueRule{name, ValueKind::Digits, 8, 0, 0, "", true};
}

constexpr std::array kPowerRules = {duration(names::kTime), percent(names::kPower)};

constexpr std::array kIntervalRules = {
    duration("time1"), percent("power1"), duration("time2"), percent("power2"),
    duration("time3"), percent("power3"), duration("time4"), percent("power4"),
};

constexpr std::array kClockRules = {
    ValueRule{"hour1", ValueKind::Ignored},
    ValueRule{"min1", ValueKind::Ignored},
    percent("power1"),
    hour("hour2"),
    minute("min2"),
    percent("power2"),
    hour("hour3"),
    minute("min3"),
    percent("power3"),
    hour("hour4"),
    minute("min4"),
    percent("power4"),
};

constexpr std::array kAlarmRules = {
    threshold("blinkActive"),       threshold("blinkTime"),
    threshold("blinkTimes"),        threshold("blinkTotalTime"),
    threshold("brokenActive"),      threshold("brokenTime"),
    threshold("capacitorReactive"), threshold("capacitorTime"),
    threshold("powerLamp"),         threshold("timeAlarm"),
    threshold("percentageAlarm"),   ValueRule{"factorPower", ValueKind::Decimal, 8, 0, 1, "", true},
};

// What every family of rows has in common: one child per row that holds the values.
struct RowFamily {
  const char* section;
  const char* values;
  std::span<const ValueRule> rules;
  Family family;
};

constexpr RowFamily kPower{names::kNodePower, names::kInterval, kPowerRules, Family::Power};
constexpr RowFamily kIntervals{names::kIntervalPrograms, names::kInterval, kIntervalRules,
                               Family::Interval};
constexpr RowFamily kAlarms{names::kAlarmThresholds, names::kAlarms, kAlarmRules, Family::Alarm};
constexpr RowFamily kClocks{names::kClockPrograms, names::kInterval, kClockRules, Family::Clock};

Objection judgeRow(const RowFamily& family, pugi::xml_node row, pugi::xml_node kept,
                   const std::string& where) {
  const pugi::xml_node values = row.child(family.values);
  if (!values) return unacceptable(where, std::string("it has no <") + family.values + ">");
  if (values.next_sibling(family.values)) {
    return unacceptable(where, std::string("it has more than one <") + family.values + ">");
  }
  if (auto objection = judgeMerge({row, values}, kept, where)) return objection;
  return judgeAttributes(values, family.rules, where);
}

template <const RowFamily& family>
Objection judgeRows(pugi::xml_node element, const SectionView& store) {
  if (auto objection = judgeNodeIds(element, store, "")) return objection;
  if (auto objection = judgeMerge({element}, store.section(family.section), element.name()))
    return objection;
  for (const pugi::xml_node row : element.children()) {
    const char* id = row.attribute(names::kNodeId).value();
    const pugi::xml_node kept = store.row(*store.find(id), family.family);
    if (auto objection = judgeRow(family, row, kept, whereOf(element, id))) return objection;
  }
  return std::nullopt;
}

// The node's own attributes come back with every write; its identity and its firmware are not the
// client's to change.
constexpr const char* kOwnOfRow[] = {names::kNodeId, names::kId, names::kFh, names::kNodeVersion};

void takeRow(const RowFamily& family, pugi::xml_node row, pugi::xml_node kept) {
  takeAttributes(row, kept, kOwnOfRow);
  for (const pugi::xml_attribute value : row.child(family.values).attributes()) {
    if (isOwnAttribute(family.rules, value.name())) continue;
    putAttribute(kept, value.name(), value.value());
  }
}

// A row that begins to hold also begins anew where it says what is in force: it was taken because
// something else is shown.
template <const RowFamily& family>
void applyRows(pugi::xml_node element, SectionView& store, Moment effective) {
  takeSectionAttributes(element, store.sectionToChange(family.section));
  for (const pugi::xml_node row : element.children()) {
    const NodeRows& node = *store.find(row.attribute(names::kNodeId).value());
    const pugi::xml_node kept = store.rowToChange(node, family.family);
    if (!kept) continue;
    takeRow(family, row, kept);
    if (family.family == Family::Power)
      store.setPowerSince(node, effective.time_since_epoch().count());
  }
}

// Clients send every row with every write; only a row that says something new is taken.
template <const RowFamily& family>
bool differs(pugi::xml_node row, const SectionView& store) {
  const NodeRows& node = *store.find(row.attribute(names::kNodeId).value());
  const pugi::xml_node shown = store.row(node, family.family);
  if (saysMore(row, shown, kOwnOfRow)) return true;
  for (const pugi::xml_attribute value : row.child(family.values).attributes()) {
    if (isOwnAttribute(family.rules, value.name())) continue;
    const pugi::xml_attribute own = shown.attribute(value.name());
    if (!own || std::string_view(own.value()) != value.value()) return true;
  }
  return false;
}

constexpr std::array kWriters = {
    SectionWriter{"E05", WriteTiming::Dated, judgeRows<kPower>, applyRows<kPower>, differs<kPower>},
    SectionWriter{"E06", WriteTiming::Dated, judgeRows<kIntervals>, applyRows<kIntervals>,
                  differs<kIntervals>},
    SectionWriter{"E07", WriteTiming::Dated, judgeRows<kAlarms>, applyRows<kAlarms>,
                  differs<kAlarms>},
    SectionWriter{"E17", WriteTiming::Dated, judgeRows<kClocks>, applyRows<kClocks>,
                  differs<kClocks>},
};

}  // namespace

std::span<const SectionWriter> programWriters() {
  return kWriters;
}

}  // namespace lamp::controller
