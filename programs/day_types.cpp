#include "programs/day_types.h"

#include <array>
#include <utility>

#include "exchange/sections.h"
#include "host/resources/texts.h"
#include "programs/calendar_names.h"

namespace lamp {
namespace {

using Node = XmlDocument::XmlNode;

constexpr std::string_view ProgramPath = "day?num=%d?/Interval";

constexpr std::array<host::Colour, DayTypeCount> Colours = {{{0xFF, 0x00, 0x00},
                                                             {0x00, 0xFF, 0x00},
                                                             {0x00, 0x00, 0xFF},
                                                             {0xFF, 0xFF, 0x00},
                                                             {0x00, 0xFF, 0xFF},
                                                             {0xFF, 0x00, 0xFF},
                                                             {0x80, 0x00, 0x00},
                                                             {0x00, 0x80, 0x00},
                                                             {0x00, 0x00, 0x80},
                                                             {0x80, 0x80, 0x00}}};

Node& dayOf(Node& days, int number) {
  if (Node* present = days.Node("day?num=%d?", number)) return *present;
  Node& made = days.NewChild(calendar::Day);
  made.SetValue(calendar::Number, host::decimal(number));
  return made;
}

}  // namespace

XCCalendar::DayType dayType(int number) {
  return {host::decimal(number), Colours[static_cast<std::size_t>(number)],
          XCBasicString::Format(u"%s - %d", XCLoadString(host::TextId::DayType), number + 1)};
}

std::string hexColour(host::Colour colour) {
  constexpr char Hex[] = "0123456789ABCDEF";
  std::string text;
  for (const unsigned part : {colour.red, colour.green, colour.blue}) {
    text += Hex[part >> 4];
    text += Hex[part & 15];
  }
  return text;
}

XmlDocument dayTypesDocument() {
  XmlDocument document("dayTypes");
  for (int number = 0; number < DayTypeCount; ++number) {
    const XCCalendar::DayType type = dayType(number);
    Node& day = document.Root()->NewChild(calendar::Day);
    day.SetValue(calendar::Name, type.name);
    day.SetValue("color", XCBasicString::FromUtf8(hexColour(type.colour)));
  }
  return document;
}

Node* dayProgram(Node& days, int number) {
  return days.Node(ProgramPath, number);
}

const Node* dayProgram(const Node& days, int number) {
  return days.Node(ProgramPath, number);
}

void completeDays(Node& days, ProgramKind kind) {
  for (int number = 0; number < DayTypeCount; ++number) {
    Node& day = dayOf(days, number);
    if (day.Node(element::Interval.text()) != nullptr) continue;
    Node& program = day.NewChild(element::Interval);
    for (const host::XmlName name : programAttributes(kind)) program.setAttribute(name, u"0");
  }
}

void copyPrograms(const Node& days, Node& section) {
  for (int number = 0; number < DayTypeCount; ++number) {
    const Node* program = dayProgram(days, number);
    if (program == nullptr) continue;
    Node& day = section.NewChild(calendar::Day);
    day.SetValue(calendar::Number, host::decimal(number));
    day.NewChild(element::Interval) = *program;
  }
}

host::RowSet dayTypeRows(std::vector<host::Binding> values, int list) {
  return {.places = {{.parent = calendar::Day, .list = list}},
          .isRow = [](const Node& child) { return child.TagName() == element::Interval; },
          .identity = [](const Node& program) { return program.Parent()->Value(calendar::Number); },
          .bindings = std::move(values),
          .visit = host::CheckVisit::everyRow};
}

}  // namespace lamp
