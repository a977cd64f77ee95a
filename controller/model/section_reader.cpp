#include "controller/model/section_reader.h"

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <iterator>

#include "controller/model/names.h"
#include "controller/model/text_writer.h"
#include "controller/model/value_rules.h"

namespace lamp::controller {
namespace {

// A row in bytes, rather too many: room that is not used costs nothing.
constexpr std::size_t kLongRow = 200;

void copyAttributes(pugi::xml_node from, pugi::xml_node to) {
  static constexpr const char* kDates[] = {names::kFh, names::kActDate};
  takeAttributes(from, to, kDates);
}

Objection judgeNodeList(pugi::xml_node request) {
  const std::string_view type = request.attribute(names::kType).value();
  if (type.empty() || type == "Sync" || type == "Async") return std::nullopt;
  return unacceptable("L03", "type is " + quoted(type) + "; it must be Sync or Async");
}

// What takes the rows of a section, one after the other.
using TakeRow = SectionView::TakeRow;

void giveNodeList(const SectionView& store, const TakeRow& take) {
  pugi::xml_document document;
  pugi::xml_node entry = document.append_child(names::kNode);
  for (const char* name : {names::kNodeId, names::kReference}) entry.append_attribute(name);
  store.eachRow(Family::Table, [&](pugi::xml_node node) {
    for (pugi::xml_attribute attribute : entry.attributes())
      attribute.set_value(node.attribute(attribute.name()).value());
    take(entry);
  });
}

void giveTable(const SectionView& store, const TakeRow& take) {
  store.eachRow(Family::Table, take);
  pugi::xml_document room;
  const pugi::xml_node list = store.blackList(room);
  if (list.first_child()) take(list);
}

constexpr Family kFamilies[] = {Family::Power, Family::Interval, Family::Alarm, Family::Clock};

const Family* familyOf(std::string_view code) {
  const auto* found = std::find_if(std::begin(kFamilies), std::end(kFamilies),
                                   [&](Family family) { return code == sectionOf(family); });
  return found == std::end(kFamilies) ? nullptr : found;
}

void giveRows(std::string_view code, const SectionView& store, const TakeRow& take) {
  if (code == names::kNodeList) return giveNodeList(store, take);
  if (code == names::kNodeTable) return giveTable(store, take);
  if (const Family* family = familyOf(code)) return store.eachRow(*family, take);
  const std::string name(code);
  for (const pugi::xml_node child : store.section(name.c_str()).children()) take(child);
}

bool hasRowOfEveryNode(std::string_view code) {
  return code == names::kNodeList || code == names::kNodeTable || familyOf(code) != nullptr;
}

// The reply without its rows.
Objection beginSection(pugi::xml_node request, const SectionView& store, const ReplyHead& head,
                       pugi::xml_document& reply) {
  const std::string_view code = request.name();
  if (!isReadSection(code)) {
    return unacceptable("Read", "the section is " + quoted(code) + "; it must be L01 to L17");
  }
  pugi::xml_node section = beginReply(head, reply).append_child(request.name());
  section.append_attribute(names::kFh).set_value(head.date.c_str());
  if (code == names::kNodeList) return judgeNodeList(request);
  const pugi::xml_node kept = store.section(request.name());
  if (hasRowOfEveryNode(code)) {
    copyAttributes(kept, section);
  } else {
    takeAttributes(kept, section);
  }
  if (code == names::kGeneral) {
    section.remove_attribute(names::kMailUser);
    section.remove_attribute(names::kMailPassword);
  }
  return std::nullopt;
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

Objection readSection(pugi::xml_node request, const SectionView& store, const ReplyHead& head,
                      pugi::xml_document& reply) {
  if (auto objection = beginSection(request, store, head, reply)) return objection;
  pugi::xml_node section = reply.document_element().first_child().first_child();
  giveRows(request.name(), store, [&](pugi::xml_node row) { section.append_copy(row); });
  return std::nullopt;
}

Objection printSection(pugi::xml_node request, const SectionView& store, const ReplyHead& head,
                       std::string& text) {
  pugi::xml_document reply;
  if (auto objection = beginSection(request, store, head, reply)) return objection;
  TextWriter writer;
  reply.save(writer, "", pugi::format_raw, pugi::encoding_utf8);
  // The rows go into the section, which stands there as one empty tag.
  const std::size_t end = writer.text.rfind("/>");
  const std::string rest = writer.text.substr(end + 2);
  writer.text.replace(end, std::string::npos, ">");
  if (hasRowOfEveryNode(request.name())) {
    writer.text.reserve(end + kLongRow * store.nodeCount());
  }
  giveRows(request.name(), store,
           [&](pugi::xml_node row) { row.print(writer, "", pugi::format_raw); });
  if (writer.text.size() == end + 1) {
    writer.text.replace(end, std::string::npos, "/>" + rest);
  } else {
    writer.text += std::string("</") + request.name() + ">" + rest;
  }
  text = std::move(writer.text);
  return std::nullopt;
}

}  // namespace lamp::controller
