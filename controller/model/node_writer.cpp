#include <array>
#include <unordered_set>

#include "controller/model/names.h"
#include "controller/model/section_writer.h"
#include "controller/model/value_rules.h"

namespace lamp::controller {
namespace {

constexpr std::array kPositionRules = {
    ValueRule{names::kReference, ValueKind::Ascii, 59},
    ValueRule{names::kLatitude, ValueKind::Decimal, 10, -90, 90, "", false},
    ValueRule{names::kLongitude, ValueKind::Decimal, 10, -180, 180, "", false},
};

Objection judgeTable(pugi::xml_node element, const SectionStore& store) {
  if (auto objection = judgeMerge({element}, store.section(names::kNodeTable), element.name()))
    return objection;
  if (auto objection = judgeNodeIds(element, store, names::kNode)) return objection;
  for (const pugi::xml_node row : element.children(names::kNode)) {
    const std::string where = whereOf(element, row.attribute(names::kNodeId).value());
    if (auto objection = judgeAttributes(row, kPositionRules, where)) return objection;
    const pugi::xml_node kept = store.find(row.attribute(names::kNodeId).value())->table;
    if (auto objection = judgeMerge({row}, kept, where)) return objection;
  }
  return std::nullopt;
}

// A blacklist that a client sends back inside the table is passed over: E09 is its command.
void applyTable(pugi::xml_node element, SectionStore& store, Moment) {
  takeSectionAttributes(element, store.section(names::kNodeTable));
  for (const pugi::xml_node row : element.children(names::kNode)) {
    const NodeRows* rows = store.find(row.attribute(names::kNodeId).value());
    takeAttributes(row, rows->table);
  }
}

// The command as it was sent, to be read again under its own number.
void keepLastCommand(pugi::xml_node element, SectionStore& store, const char* code) {
  pugi::xml_node kept = store.section(code);
  kept.remove_children();
  kept.remove_attributes();
  takeAttributes(element, kept);
  for (const pugi::xml_node row : element.children()) {
    if (row.attribute(names::kNodeId)) kept.append_copy(row);
  }
}

Objection judgeRemoval(pugi::xml_node element, const SectionStore& store) {
  return judgeNodeIds(element, store, names::kNode);
}

void applyRemoval(pugi::xml_node element, SectionStore& store, Moment) {
  for (const pugi::xml_node row : element.children(names::kNode)) {
    pugi::xml_node node = store.find(row.attribute(names::kNodeId).value())->table;
    for (const char* name : {names::kReference, names::kLatitude, names::kLongitude}) {
      node.remove_attribute(name);
    }
  }
  keepLastCommand(element, store, names::kLastRemoval);
}

Objection judgeAnyRows(pugi::xml_node element, const SectionStore& store) {
  const pugi::xml_node blackList = store.section(names::kNodeTable).child(names::kBlackList);
  if (auto objection = judgeMerge({element}, blackList, element.name())) return objection;
  return judgeNodeIds(element, store, "");
}

// The list replaces the whole blacklist: who is not on it comes back to the end of the table.
void applyBlackList(pugi::xml_node element, SectionStore& store, Moment) {
  std::unordered_set<std::string_view> wanted;
  for (const pugi::xml_node row : element.children()) {
    wanted.insert(row.attribute(names::kNodeId).value());
  }
  pugi::xml_node table = store.section(names::kNodeTable);
  pugi::xml_node list = store.blackList();
  takeSectionAttributes(element, list);
  for (pugi::xml_node row = list.first_child(); row;) {
    const pugi::xml_node next = row.next_sibling();
    if (!wanted.contains(row.attribute(names::kNodeId).value())) table.append_move(row);
    row = next;
  }
  for (const pugi::xml_node row : element.children()) {
    list.append_move(store.find(row.attribute(names::kNodeId).value())->table);
  }
}

// Rows of this command may be called "node" or "Node": clients build them either way.
void applySelection(pugi::xml_node element, SectionStore& store, Moment) {
  keepLastCommand(element, store, names::kLastSelection);
}

constexpr std::array kWriters = {
    SectionWriter{"E04", WriteTiming::AtOnce, judgeTable, applyTable},
    SectionWriter{"E08", WriteTiming::Dated, judgeRemoval, applyRemoval},
    SectionWriter{"E09", WriteTiming::Dated, judgeAnyRows, applyBlackList},
    SectionWriter{"E11", WriteTiming::Dated, judgeAnyRows, applySelection},
};

}  // namespace

std::span<const SectionWriter> nodeWriters() {
  return kWriters;
}

}  // namespace lamp::controller
