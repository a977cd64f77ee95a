#include "controller/model/section_writer.h"

#include <string>
#include <unordered_map>
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

Objection judgeNodeIds(pugi::xml_node element, const SectionView& store, std::string_view tag) {
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

std::string readSectionOf(std::string_view writeSection) {
  std::string code(writeSection);
  code[0] = 'L';
  return code;
}

void keepDifferences(const SectionWriter& writer, pugi::xml_node element,
                     const SectionView& store) {
  if (writer.differs == nullptr) return;
  const pugi::xml_node shown = store.section(readSectionOf(writer.section).c_str());
  for (pugi::xml_attribute attribute = element.first_attribute(); attribute;) {
    const pugi::xml_attribute next = attribute.next_attribute();
    const pugi::xml_attribute own = shown.attribute(attribute.name());
    if (own && std::string_view(own.value()) == attribute.value())
      element.remove_attribute(attribute);
    attribute = next;
  }
  for (pugi::xml_node line = element.first_child(); line;) {
    const pugi::xml_node next = line.next_sibling();
    if (!writer.differs(line, store)) element.remove_child(line);
    line = next;
  }
}

namespace {

// Which line it is: the node that it belongs to, or the kind and number of a port.
std::string keyOfLine(pugi::xml_node line) {
  const pugi::xml_attribute node = line.attribute(names::kNodeId);
  return node ? node.value() : std::string(line.name()) + " " + line.attribute(names::kDir).value();
}

void takeLaterAttributes(pugi::xml_node element, pugi::xml_node later) {
  AttributeIndex said(later);
  for (pugi::xml_attribute attribute : element.attributes()) {
    if (const pugi::xml_attribute other = said.find(attribute.name()))
      attribute.set_value(other.value());
  }
}

}  // namespace

void takeLaterValues(pugi::xml_node element, pugi::xml_node later) {
  takeLaterAttributes(element, later);
  std::unordered_map<std::string, pugi::xml_node> lines;
  for (const pugi::xml_node line : later.children()) lines.emplace(keyOfLine(line), line);
  for (const pugi::xml_node line : element.children()) {
    const auto found = lines.find(keyOfLine(line));
    if (found == lines.end()) continue;
    takeLaterAttributes(line, found->second);
    for (const pugi::xml_node values : line.children())
      takeLaterAttributes(values, found->second.child(values.name()));
  }
}

void takeSectionAttributes(pugi::xml_node from, pugi::xml_node to) {
  static constexpr const char* kDates[] = {names::kFh, names::kActDate};
  takeAttributes(from, to, kDates);
}

}  // namespace lamp::controller
