#include "controller/model/section_store.h"

#include <array>
#include <unordered_set>

#include "controller/model/names.h"
#include "controller/model/refusal.h"
#include "controller/model/value_rules.h"

namespace lamp::controller {
namespace {

constexpr const char* kRoot = "sections";
constexpr const char* kOverrides = "overrides";
constexpr const char* kSince = "since";

constexpr Family AllFamilies[] = {Family::Table, Family::Power, Family::Interval, Family::Alarm,
                                  Family::Clock};

}  // namespace

const char* sectionOf(Family family) {
  static constexpr std::array Codes = {names::kNodeTable, names::kNodePower,
                                       names::kIntervalPrograms, names::kAlarmThresholds,
                                       names::kClockPrograms};
  return Codes[static_cast<std::size_t>(family)];
}

const char* keyOf(Family family) {
  return family == Family::Table ? names::kNodeId : names::kId;
}

SectionStore::SectionStore() : root_(document_.append_child(kRoot)) {}

std::string SectionStore::load(pugi::xml_node sections) {
  document_.reset();
  root_ = document_.append_copy(sections);
  root_.set_name(kRoot);
  for (const char* code : {names::kGeneral, names::kNodeTable, names::kInputsOutputs}) {
    if (!root_.child(code)) return std::string("the section ") + code + " is missing";
  }
  return index();
}

std::string SectionStore::index() {
  nodes_.clear();
  positions_.clear();
  std::string fault = indexTable();
  for (const Family family : AllFamilies) {
    if (fault.empty() && family != Family::Table) fault = indexRows(family);
  }
  if (!fault.empty()) return fault;
  for (const pugi::xml_node row : root_.child(kOverrides).children()) {
    const auto found = positions_.find(row.attribute(names::kNodeId).value());
    if (found != positions_.end()) nodes_[found->second].override = row;
  }
  return "";
}

std::string SectionStore::indexTable() {
  const pugi::xml_node table = root_.child(names::kNodeTable);
  for (const pugi::xml_node parent : {table, table.child(names::kBlackList)}) {
    for (const pugi::xml_node row : parent.children(names::kNode)) {
      NodeRows& node = nodes_.emplace_back();
      node.id = row.attribute(names::kNodeId).value();
      node.rows[0] = row;
      node.index = nodes_.size() - 1;
    }
  }
  positions_.reserve(nodes_.size());
  for (const NodeRows& node : nodes_) {
    if (node.id.empty()) return "a node of L04 has no nodeId";
    if (!positions_.emplace(node.id, node.index).second)
      return "the node " + quoted(node.id) + " stands twice in L04";
  }
  return "";
}

std::string SectionStore::indexRows(Family family) {
  const auto slot = static_cast<std::size_t>(family);
  for (const pugi::xml_node child : root_.child(sectionOf(family)).children()) {
    const auto found = positions_.find(child.attribute(keyOf(family)).value());
    if (found != positions_.end()) nodes_[found->second].rows[slot] = child;
  }
  for (const NodeRows& node : nodes_) {
    if (!node.rows[slot])
      return "the node " + quoted(node.id) + " has no row in " + sectionOf(family);
  }
  return "";
}

pugi::xml_node SectionStore::section(const char* code) const {
  return root_.child(code);
}

pugi::xml_node SectionStore::sectionToChange(const char* code) {
  const pugi::xml_node found = root_.child(code);
  return found ? found : root_.append_child(code);
}

const NodeRows* SectionStore::find(std::string_view nodeId) const {
  const auto found = positions_.find(nodeId);
  return found == positions_.end() ? nullptr : &nodes_[found->second];
}

pugi::xml_node SectionStore::row(const NodeRows& node, Family family) const {
  return node.row(family);
}

pugi::xml_node SectionStore::rowToChange(const NodeRows& node, Family family) {
  return node.row(family);
}

void SectionStore::eachRow(Family family, const TakeRow& take) const {
  if (family == Family::Table) {
    for (const pugi::xml_node row : section(names::kNodeTable).children(names::kNode)) take(row);
    return;
  }
  for (const NodeRows& node : nodes_) {
    if (!isBlacklisted(node)) take(node.row(family));
  }
}

bool SectionStore::isBlacklisted(const NodeRows& node) const {
  return std::string_view(node.row(Family::Table).parent().name()) == names::kBlackList;
}

pugi::xml_node SectionStore::blackList(pugi::xml_document&) const {
  return section(names::kNodeTable).child(names::kBlackList);
}

void SectionStore::setBlackList(pugi::xml_node element) {
  std::unordered_set<std::string_view> wanted;
  for (const pugi::xml_node row : element.children())
    wanted.insert(row.attribute(names::kNodeId).value());
  pugi::xml_node table = sectionToChange(names::kNodeTable);
  pugi::xml_node list = table.child(names::kBlackList);
  if (!list) list = table.append_child(names::kBlackList);
  static constexpr const char* Dates[] = {names::kFh, names::kActDate};
  takeAttributes(element, list, Dates);
  for (pugi::xml_node row = list.first_child(); row;) {
    const pugi::xml_node next = row.next_sibling();
    if (!wanted.contains(row.attribute(names::kNodeId).value())) table.append_move(row);
    row = next;
  }
  for (const pugi::xml_node row : element.children())
    list.append_move(find(row.attribute(names::kNodeId).value())->row(Family::Table));
}

void SectionStore::setPowerSince(const NodeRows& node, long long seconds) {
  NodeRows& own = nodes_[node.index];
  if (!own.override) {
    own.override = sectionToChange(kOverrides).append_child(names::kNode);
    putAttribute(own.override, names::kNodeId, own.id.c_str());
  }
  putAttribute(own.override, kSince, std::to_string(seconds).c_str());
}

long long SectionStore::powerSince(const NodeRows& rows) {
  return rows.override.attribute(kSince).as_llong();
}

ChildIndex::ChildIndex(pugi::xml_node section, const char* tag, const char* key) : key_(key) {
  for (const pugi::xml_node child : section.children(tag)) add(child);
}

pugi::xml_node ChildIndex::find(std::string_view text) const {
  const auto found = children_.find(text);
  return found == children_.end() ? pugi::xml_node() : found->second;
}

}  // namespace lamp::controller
