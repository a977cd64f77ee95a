#include "controller/model/section_store.h"

#include "controller/model/names.h"
#include "controller/model/refusal.h"
#include "controller/model/value_rules.h"

namespace lamp::controller {
namespace {

constexpr const char* kRoot = "sections";
constexpr const char* kOverrides = "overrides";
constexpr const char* kSince = "since";

}  // namespace

SectionStore::SectionStore() : root_(document_.append_child(kRoot)) {}

SectionStore::SectionStore(const SectionStore& other) : root_(document_.append_copy(other.root_)) {
  index();
}

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
  if (fault.empty()) fault = indexRows(names::kNodePower, &NodeRows::power);
  if (fault.empty()) fault = indexRows(names::kIntervalPrograms, &NodeRows::interval);
  if (fault.empty()) fault = indexRows(names::kAlarmThresholds, &NodeRows::alarm);
  if (fault.empty()) fault = indexRows(names::kClockPrograms, &NodeRows::clock);
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
      NodeRows rows;
      rows.id = row.attribute(names::kNodeId).value();
      rows.table = row;
      nodes_.push_back(std::move(rows));
    }
  }
  positions_.reserve(nodes_.size());
  for (std::size_t i = 0; i < nodes_.size(); ++i) {
    if (nodes_[i].id.empty()) return "a node of L04 has no nodeId";
    if (!positions_.emplace(nodes_[i].id, i).second) {
      return "the node " + quoted(nodes_[i].id) + " stands twice in L04";
    }
  }
  return "";
}

std::string SectionStore::indexRows(const char* code, pugi::xml_node NodeRows::*row) {
  for (const pugi::xml_node child : root_.child(code).children()) {
    const auto found = positions_.find(child.attribute(names::kId).value());
    if (found != positions_.end()) nodes_[found->second].*row = child;
  }
  for (const NodeRows& rows : nodes_) {
    if (!(rows.*row)) return "the node " + quoted(rows.id) + " has no row in " + code;
  }
  return "";
}

pugi::xml_node SectionStore::section(const char* code) {
  const pugi::xml_node found = root_.child(code);
  return found ? found : root_.append_child(code);
}

pugi::xml_node SectionStore::section(const char* code) const {
  return root_.child(code);
}

pugi::xml_node SectionStore::blackList() {
  pugi::xml_node table = section(names::kNodeTable);
  const pugi::xml_node found = table.child(names::kBlackList);
  return found ? found : table.append_child(names::kBlackList);
}

const NodeRows* SectionStore::find(std::string_view nodeId) const {
  const auto found = positions_.find(nodeId);
  return found == positions_.end() ? nullptr : &nodes_[found->second];
}

bool SectionStore::isBlacklisted(const NodeRows& rows) {
  return std::string_view(rows.table.parent().name()) == names::kBlackList;
}

void SectionStore::setPowerSince(std::string_view nodeId, long long seconds) {
  const auto found = positions_.find(nodeId);
  if (found == positions_.end()) return;
  NodeRows& rows = nodes_[found->second];
  if (!rows.override) {
    rows.override = section(kOverrides).append_child(names::kNode);
    putAttribute(rows.override, names::kNodeId, rows.id.c_str());
  }
  putAttribute(rows.override, kSince, std::to_string(seconds).c_str());
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
