#pragma once

#include <string>
#include <vector>

#include "host/dialogs/page_description.h"
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

/// The day types as the fast selection takes them.
XmlDocument dayTypesDocument();

/// The element with a day type's program below a calendar's "days", none when there is none.
XmlDocument::XmlNode* dayProgram(XmlDocument::XmlNode& days, int number);
const XmlDocument::XmlNode* dayProgram(const XmlDocument::XmlNode& days, int number);

/// Gives @p days what it lacks: a "day" for each day type, and a program of zeros of this kind in
/// each. A program that is there stays as it is, whatever its kind; so does everything else.
void completeDays(XmlDocument::XmlNode& days, ProgramKind kind);

/// Appends to @p section a "day" for each day type that has a program in @p days, with its number
/// and its program.
void copyPrograms(const XmlDocument::XmlNode& days, XmlDocument::XmlNode& section);

/// The programs of such a section as rows, each known by its day type's number.
host::RowSet dayTypeRows(std::vector<host::Binding> values, int list = 0);

}  // namespace lamp
