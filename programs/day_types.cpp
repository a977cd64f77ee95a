#include "programs/day_types.h"

#include <array>

#include "exchange/sections.h"
#include "host/resources/texts.h"
#include "programs/calendar_names.h"

namespace lamp {
namespace {

using Node = XmlDocument::XmlNode;

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

Node* dayProgram(Node& days, int number) {
  return days.Node("day?num=%d?/Interval", number);
}

void completeDays(Node& days, ProgramKind kind) {
  for (int number = 0; number < DayTypeCount; ++number) {
    Node& day = dayOf(days, number);
    if (day.Node(element::Interval.text()) != nullptr) continue;
    Node& program = day.NewChild(element::Interval);
    for (const host::XmlName name : programAttributes(kind)) program.setAttribute(name, u"0");
  }
}

}  // namespace lamp
