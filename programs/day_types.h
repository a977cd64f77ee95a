#pragma once

#include <string>

#include "host/ui/controls/calendar_control.h"
#include "host/xml/xml_document.h"
#include "programs/dimming_program.h"

// The ten day types of a calendar. Their programs are stored in the calendar; their names and
// colours are not.

namespace lamp {

/// Day types are numbered from 0.
constexpr int DayTypeCount = 10;

/// A day type's identifier (its number as text), colour, and name, which counts from 1.
XCCalendar::DayType dayType(int number);

/// A colour as six hexadecimal digits: red, green, blue.
std::string hexColour(host::Colour colour);

/// The element with a day type's program below a calendar's "days", none when there is none.
XmlDocument::XmlNode* dayProgram(XmlDocument::XmlNode& days, int number);

/// Gives @p days what it lacks: a "day" for each day type, and a program of zeros of this kind in
/// each. A program that is there stays as it is, whatever its kind; so does everything else.
void completeDays(XmlDocument::XmlNode& days, ProgramKind kind);

}  // namespace lamp
