#include "controller/model/shown_sections.h"

#include "controller/model/names.h"
#include "controller/model/refusal.h"
#include "controller/model/value_rules.h"

namespace lamp::controller {
namespace {

constexpr const char* Root = "waiting";
constexpr const char* Sections = "sections";
constexpr const char* Rows = "rows";
constexpr const char* List = "list";

constexpr Family AllFamilies[] = {Family::Table, Family::Power, Family::Interval, Family::Alarm,
                                  Family::Clock};

bool hasRows(std::string_view code) {
  for (const Family family : AllFamilies) {
    if (code == sectionOf(family)) return true;
  }
  return false;
}

}  // namespace

ShownSections::ShownSections(const SectionStore& inForce)
    : inForce_(inForce), root_(document_.append_child(Root)) {}

pugi::xml_node ShownSections::group(const char* name) {
  const pugi::xml_node found = root_.child(name);
  return found ? found : root_.append_child(name);
}

pugi::xml_node ShownSections::listInForce() const {
  pugi::xml_document unused;
  return inForce_.blackList(unused);
}

std::string ShownSections::load(pugi::xml_node shown) {
  document_.reset();
  root_ = document_.append_copy(shown);
  for (const Family family : AllFamilies) {
    for (const pugi::xml_node row : root_.child(Rows).child(sectionOf(family)).children()) {
      const NodeRows* node = find(row.attribute(keyOf(family)).value());
      if (node == nullptr) return "a row that waits belongs to no node";
      rows_[static_cast<std::size_t>(family)].emplace(node->index, row);
    }
  }
  list_ = root_.child(List);
  for (const pugi::xml_node row : list_.children()) {
    if (find(row.attribute(names::kNodeId).value()) == nullptr)
      return "a blacklist that waits holds no node of the controller";
  }
  indexList();
  return "";
}

pugi::xml_node ShownSections::section(const char* code) const {
  const pugi::xml_node own = root_.child(Sections).child(code);
  return own ? own : inForce_.section(code);
}

pugi::xml_node ShownSections::sectionToChange(const char* code) {
  const pugi::xml_node own = root_.child(Sections).child(code);
  if (own || onlyWhatWaits_) return own;
  const pugi::xml_node present = inForce_.section(code);
  if (present && !hasRows(code)) return group(Sections).append_copy(present);
  pugi::xml_node made = group(Sections).append_child(code);
  takeAttributes(present, made);
  return made;
}

pugi::xml_node ShownSections::row(const NodeRows& node, Family family) const {
  const auto& rows = rows_[static_cast<std::size_t>(family)];
  const auto found = rows.find(node.index);
  return found == rows.end() ? node.row(family) : found->second;
}

pugi::xml_node ShownSections::rowToChange(const NodeRows& node, Family family) {
  auto& rows = rows_[static_cast<std::size_t>(family)];
  const auto found = rows.find(node.index);
  if (found != rows.end()) return found->second;
  if (onlyWhatWaits_) return {};
  pugi::xml_node parent = group(Rows).child(sectionOf(family));
  if (!parent) parent = group(Rows).append_child(sectionOf(family));
  return rows.emplace(node.index, parent.append_copy(node.row(family))).first->second;
}

void ShownSections::eachRow(Family family, const TakeRow& take) const {
  if (family != Family::Table) {
    for (const NodeRows& node : inForce_.nodes()) {
      if (!isBlacklisted(node)) take(row(node, family));
    }
    return;
  }
  const bool asInForce = rows_[0].empty();
  inForce_.eachRow(family, [&](pugi::xml_node present) {
    if (asInForce && !list_) return take(present);
    const NodeRows& node = *find(present.attribute(names::kNodeId).value());
    if (!isBlacklisted(node)) take(row(node, family));
  });
  if (!list_) return;
  for (const pugi::xml_node present : listInForce().children(names::kNode)) {
    const NodeRows& node = *find(present.attribute(names::kNodeId).value());
    if (!isBlacklisted(node)) take(row(node, family));
  }
}

bool ShownSections::isBlacklisted(const NodeRows& node) const {
  return list_ ? isListed_.contains(&node) : inForce_.isBlacklisted(node);
}

pugi::xml_node ShownSections::blackList(pugi::xml_document& room) const {
  const pugi::xml_node present = listInForce();
  if (!list_ && rows_[0].empty()) return present;
  pugi::xml_node list = room.append_child(names::kBlackList);
  takeAttributes(list_ ? list_ : present, list);
  if (list_) {
    for (const NodeRows* node : listed_) list.append_copy(row(*node, Family::Table));
  } else {
    for (const pugi::xml_node listed : present.children(names::kNode)) {
      const NodeRows& node = *find(listed.attribute(names::kNodeId).value());
      list.append_copy(row(node, Family::Table));
    }
  }
  return list;
}

void ShownSections::setBlackList(pugi::xml_node element) {
  if (!list_ && onlyWhatWaits_) return;
  if (!list_) {
    list_ = root_.append_child(List);
    takeAttributes(listInForce(), list_);
  }
  static constexpr const char* Dates[] = {names::kFh, names::kActDate};
  takeAttributes(element, list_, Dates);
  list_.remove_children();
  for (const pugi::xml_node row : element.children()) {
    putAttribute(list_.append_child(names::kNode), names::kNodeId,
                 row.attribute(names::kNodeId).value());
  }
  indexList();
}

void ShownSections::indexList() {
  listed_.clear();
  for (const pugi::xml_node row : list_.children())
    listed_.push_back(find(row.attribute(names::kNodeId).value()));
  isListed_ = {listed_.begin(), listed_.end()};
}

}  // namespace lamp::controller
