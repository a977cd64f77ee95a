#include "controller/model/section_reader.h"

#include <cstdlib>

#include "controller/model/names.h"
#include "controller/model/value_rules.h"

namespace lamp::controller {
namespace {

pugi::xml_node beginSection(const char* code, const ReplyHead& head, pugi::xml_document& reply) {
  pugi::xml_node section = beginReply(head, reply).append_child(code);
  section.append_attribute(names::kFh).set_value(head.date.c_str());
  return section;
}

void copyAttributes(pugi::xml_node from, pugi::xml_node to) {
  static constexpr const char* kDates[] = {names::kFh, names::kActDate};
  takeAttributes(from, to, kDates);
}

Objection readNodeList(pugi::xml_node request, const SectionStore& store, pugi::xml_node section) {
  const std::string_view type = request.attribute(names::kType).value();
  if (!type.empty() && type != "Sync" && type != "Async") {
    return unacceptable("L03", "type is " + quoted(type) + "; it must be Sync or Async");
  }
  const pugi::xml_node table = store.section(names::kNodeTable);
  for (const pugi::xml_node node : table.children(names::kNode)) {
    pugi::xml_node entry = section.append_child(names::kNode);
    for (const char* name : {names::kNodeId, names::kReference}) {
      entry.append_attribute(name).set_value(node.attribute(name).value());
    }
  }
  return std::nullopt;
}

void copyTable(const SectionStore& store, pugi::xml_node section) {
  const pugi::xml_node table = store.section(names::kNodeTable);
  copyAttributes(table, section);
  for (const pugi::xml_node child : table.children()) {
    const bool emptyList =
        std::string_view(child.name()) == names::kBlackList && !child.first_child();
    if (!emptyList) section.append_copy(child);
  }
}

// Programs, powers and thresholds list the nodes of the table; the blacklisted ones are ignored.
void copyRows(const SectionStore& store, pugi::xml_node NodeRows::*row, pugi::xml_node from,
              pugi::xml_node section) {
  copyAttributes(from, section);
  for (const NodeRows& rows : store.nodes()) {
    if (!SectionStore::isBlacklisted(rows)) section.append_copy(rows.*row);
  }
}

void copyKept(pugi::xml_node kept, pugi::xml_node section) {
  takeAttributes(kept, section);
  for (const pugi::xml_node child : kept.children()) section.append_copy(child);
}

}  // namespace

bool isReadSection(std::string_view code) {
  if (code.size() != 3 || code[0] != 'L') return false;
  const int number = std::atoi(std::string(code.substr(1)).c_str());
  return code[1] >= '0' && code[1] <= '1' && code[2] >= '0' && code[2] <= '9' && number >= 1 &&
         number <= 17;
}

bool showsLiveValues(std::string_view code) {
  return code == names::kInputsOutputs || code == names::kAlarmReport ||
         code == names::kUsageReport;
}

pugi::xml_node beginReply(const ReplyHead& head, pugi::xml_document& reply) {
  pugi::xml_node controller = reply.append_child(names::kDeviceCfg).append_child(names::kZelLamp);
  controller.append_attribute(names::kId).set_value(head.id.c_str());
  return controller;
}

Objection readSection(pugi::xml_node request, const SectionStore& store, const ReplyHead& head,
                      pugi::xml_document& reply) {
  const std::string_view code = request.name();
  if (!isReadSection(code)) {
    return unacceptable("Read", "the section is " + quoted(code) + "; it must be L01 to L17");
  }
  pugi::xml_node section = beginSection(request.name(), head, reply);
  const pugi::xml_node kept = store.section(request.name());
  if (code == names::kNodeList) return readNodeList(request, store, section);
  if (code == names::kNodeTable) {
    copyTable(store, section);
  } else if (code == names::kNodePower) {
    copyRows(store, &NodeRows::power, kept, section);
  } else if (code == names::kIntervalPrograms) {
    copyRows(store, &NodeRows::interval, kept, section);
  } else if (code == names::kAlarmThresholds) {
    copyRows(store, &NodeRows::alarm, kept, section);
  } else if (code == names::kClockPrograms) {
    copyRows(store, &NodeRows::clock, kept, section);
  } else {
    copyKept(kept, section);
  }
  if (code == names::kGeneral) {
    section.remove_attribute(names::kMailUser);
    section.remove_attribute(names::kMailPassword);
  }
  return std::nullopt;
}

}  // namespace lamp::controller
