#include "controller/model/section_writer.h"

#include <string>
#include <unordered_set>

#include "controller/model/names.h"
#include "controller/model/value_rules.h"

namespace lamp::controller {

const SectionWriter* findWriter(std::string_view section) {
  for (const auto family :
       {generalWriters(), taskWriters(), nodeWriters(), programWriters(), inputOutputWriters()}) {
    for (const SectionWriter& writer : family) {
      if (section == writer.section) return &writer;
    }
  }
  return nullptr;
}

std::string whereOf(pugi::xml_node element, std::string_view nodeId) {
  return std::string(element.name()) + ", node " + quoted(nodeId);
}

Objection judgeNodeIds(pugi::xml_node element, const SectionStore& store, std::string_view tag) {
  std::unordered_set<std::string_view> seen;
  for (const pugi::xml_node row : element.children()) {
    if (!tag.empty() && tag != row.name()) continue;
    const std::string_view id = row.attribute(names::kNodeId).value();
    if (id.empty()) {
      return unacceptable(element.name(),
                          "an element <" + std::string(row.name()) + "> has no nodeId");
    }
    if (store.find(id) == nullptr) {
      return unacceptable(whereOf(element, id),
                          "the controller has no such node; read L04 for those that it has");
    }
    if (!seen.insert(id).second) {
      return unacceptable(whereOf(element, id), "the node stands twice; send it once");
    }
  }
  return std::nullopt;
}

void takeSectionAttributes(pugi::xml_node from, pugi::xml_node to) {
  static constexpr const char* kDates[] = {names::kFh, names::kActDate};
  takeAttributes(from, to, kDates);
}

}  // namespace lamp::controller
