#include <array>
#include <unordered_set>

#include "controller/model/names.h"
#include "controller/model/section_writer.h"
#include "controller/model/value_rules.h"

namespace lamp::controller {
namespace {

constexpr std::array kTaskRules = {
    ValueRule{names::kTaskPeriod, ValueKind::Digits, 14, 0, 0, "", false},
    oneOf(names::kTaskFillHoles, "NY"),
    oneOf(names::kTaskPriority, "123"),
    ValueRule{names::kTaskNode, ValueKind::Text, 64},
};

constexpr std::array kActionRules = {
    oneOf(names::kActionSend, "NY"),
    oneOf(names::kActionStore, "NY"),
};

constexpr std::size_t kPeriodDigits = 14;

bool isDeletion(pugi::xml_node task) {
  const pugi::xml_attribute period = task.attribute(names::kTaskPeriod);
  return period && *period.value() == '\0';
}

Objection judgeAction(pugi::xml_node action, const std::string& where) {
  const std::string_view request = action.attribute(names::kActionRequest).value();
  if (request != names::kNodeList && request != names::kAlarmReport &&
      request != names::kUsageReport) {
    return unacceptable(where, "TpReq is " + quoted(request) + "; it must be L03, L09 or L15");
  }
  return judgeAttributes(action, kActionRules, where);
}

Objection judgeTask(pugi::xml_node task, const std::string& where) {
  if (!parseStamp(task.attribute(names::kTaskStart).value())) {
    return unacceptable(where, "TpHi is " + quoted(task.attribute(names::kTaskStart).value()) +
                                   "; it must be 14 digits of a date and time and S or W");
  }
  if (auto objection = judgeAttributes(task, kTaskRules, where)) return objection;
  const std::string_view period = task.attribute(names::kTaskPeriod).value();
  if (period.size() != kPeriodDigits) {
    return unacceptable(where, "TpPer is " + quoted(period) +
                                   "; it must be 14 digits, or empty to delete the task");
  }
  if (!task.child(names::kAction)) {
    return unacceptable(where, "it has no TpPro; a task needs at least one");
  }
  for (const pugi::xml_node action : task.children(names::kAction)) {
    if (auto objection = judgeAction(action, where)) return objection;
  }
  return std::nullopt;
}

Objection judgeTasks(pugi::xml_node element, const SectionView& store) {
  const pugi::xml_node section = store.section(names::kTasks);
  if (auto objection = judgeMerge({element}, section, element.name())) return objection;
  const ChildIndex present(section, names::kTask, names::kTaskNumber);
  std::unordered_set<std::string_view> seen;
  for (const pugi::xml_node task : element.children(names::kTask)) {
    const std::string_view number = task.attribute(names::kTaskNumber).value();
    const std::string where = std::string(element.name()) + ", task " + quoted(number);
    const std::string fault = faultOf(boundedNumber(names::kTaskNumber, 0, 999999999, 9), number);
    if (!fault.empty()) return unacceptable(element.name(), fault);
    if (!seen.insert(number).second) {
      return unacceptable(where, "the task stands twice; send it once");
    }
    if (isDeletion(task)) continue;
    if (auto objection = judgeTask(task, where)) return objection;
    if (auto objection = judgeMerge({task}, present.find(number), where)) return objection;
  }
  return std::nullopt;
}

// Tasks that the document does not name stay: only an empty period takes a task away.
void applyTasks(pugi::xml_node element, SectionView& store, Moment) {
  pugi::xml_node section = store.sectionToChange(names::kTasks);
  takeSectionAttributes(element, section);
  ChildIndex present(section, names::kTask, names::kTaskNumber);
  for (const pugi::xml_node task : element.children(names::kTask)) {
    const char* number = task.attribute(names::kTaskNumber).value();
    pugi::xml_node kept = present.find(number);
    if (isDeletion(task)) {
      if (!kept) continue;
      present.remove(number);
      section.remove_child(kept);
    } else if (kept) {
      takeAttributes(task, kept);
      kept.remove_children();
      for (const pugi::xml_node child : task.children()) kept.append_copy(child);
    } else {
      section.append_copy(task);
    }
  }
}

constexpr std::array kWriters = {SectionWriter{"E02", WriteTiming::AtOnce, judgeTasks, applyTasks}};

}  // namespace

std::span<const SectionWriter> taskWriters() {
  return kWriters;
}

}  // namespace lamp::controller
