#include <array>

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

Objection judgeTable(pugi::xml_node element, const SectionView& store) {
  if (auto objection = judgeMerge({element}, store.section(names::kNodeTable), element.name()))
    return objection;
  if (auto objection = judgeNodeIds(element, store, names::kNode)) return objection;
  for (const pugi::xml_node row : element.children(names::kNode)) {
    const std::string where = whereOf(element, row.attribute(names::kNodeId).value());
    if (auto objection = judgeAttributes(row, kPositionRules, where)) return objection;
    const pugi::xml_node kept =
        store.row(*store.find(row.attribute(names::kNodeId).value()), Family::Table);
    if (auto objection = judgeMerge({row}, kept, where)) return objection;
  }
  return std::nullopt;
}

// A blacklist that a client sends back inside the table is passed over: E09 is its command.
void applyTable(pugi::xml_node element, SectionView& store, Moment) {
  takeSectionAttributes(element, store.sectionToChange(names::kNodeTable));
  for (const pugi::xml_node row : element.children(names::kNode)) {
    const NodeRows* node = store.find(row.attribute(names::kNodeId).value());
    if (pugi::xml_node kept = store.rowToChange(*node, Family::Table)) takeAttributes(row, kept);
  }
}

// The command as it was sent, to be read again under its own number.
void keepLastCommand(pugi::xml_node element, SectionView& store, const char* code) {
  pugi::xml_node kept = store.sectionToChange(code);
  kept.remove_children();
  kept.remove_attributes();
  takeAttributes(element, kept);
  for (const pugi::xml_node row : element.children()) {
    if (row.attribute(names::kNodeId)) kept.append_copy(row);
  }
}

Objection judgeRemoval(pugi::xml_node element, const SectionView& store) {
  return judgeNodeIds(element, store, names::kNode);
}

void applyRemoval(pugi::xml_node element, SectionView& store, Moment) {
  for (const pugi::xml_node row : element.children(names::kNode)) {
    pugi::xml_node node =
        store.rowToChange(*store.find(row.attribute(names::kNodeId).value()), Family::Table);
    for (const char* name : {names::kReference, names::kLatitude, names::kLongitude}) {
      node.remove_attribute(name);
    }
  }
  keepLastCommand(element, store, names::kLastRemoval);
}

Objection judgeAnyRows(pugi::xml_node element, const SectionView& store) {
  pugi::xml_document room;
  const pugi::xml_node blackList = store.blackList(room);
  if (auto objection = judgeMerge({element}, blackList, element.name())) return objection;
  return judgeNodeIds(element, store, "");
}

void applyBlackList(pugi::xml_node element, SectionView& store, Moment) {
  store.setBlackList(element);
}

// Rows of this command may be called "node" or "Node": clients build them either way.
void applySelection(pugi::xml_node element, SectionView& store, Moment) {
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
