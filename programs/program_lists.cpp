#include "programs/program_lists.h"

#include "exchange/sections.h"
#include "host/resources/texts.h"
#include "programs/calendar_names.h"
#include "programs/day_types.h"

using host::TextId;

namespace {

XCBasicString groupName(const XmlDocument::XmlNode& group) {
  static const host::XmlName id("id");
  return group.Value(id);
}

int compareGroupNames(const host::ListRow& first, const host::ListRow& second) {
  if (first.element == nullptr || second.element == nullptr) return 0;
  const auto order = groupName(*first.element) <=> groupName(*second.element);
  return order < 0 ? -1 : order > 0 ? 1 : 0;
}

XCBasicString dayTypeName(const XmlDocument::XmlNode& program) {
  const XmlDocument::XmlNode* day = program.Parent();
  return day == nullptr ? XCBasicString()
                        : lamp::dayType(day->Value(lamp::calendar::Number).ToInt()).name;
}

int compareNothing(const host::ListRow&, const host::ListRow&) {
  return 0;
}

}  // namespace

std::vector<host::ListColumn> CNodesListCtrl::Columns(lamp::ProgramKind kind) {
  host::ListColumn identity;
  identity.caption = XCLoadString(TextId::Identifier);
  identity.attribute = lamp::attribute::Id;
  return lamp::programColumns(kind, std::move(identity));
}

std::vector<host::ListColumn> CGroupsListCtrl::Columns() {
  std::vector<host::ListColumn> columns(lamp::ProgramColumns);
  columns[0].caption = XCLoadString(TextId::Group);
  columns[0].cell = groupName;
  columns[0].compare = compareGroupNames;
  for (std::size_t i = 1; i < columns.size(); ++i) {
    columns[i].caption = lamp::programCaption(i);
    columns[i].compare = compareNothing;
  }
  return columns;
}

std::vector<host::ListColumn> CNodesListCtrl2::Columns(lamp::ProgramKind kind) {
  host::ListColumn name;
  name.caption = XCLoadString(TextId::Identifier);
  name.cell = dayTypeName;
  return lamp::programColumns(kind, std::move(name));
}

std::vector<host::ListColumn> CFilesListCtrl::Columns() {
  host::ListColumn name;
  name.caption = XCLoadString(TextId::Calendar);
  return {std::move(name)};
}
