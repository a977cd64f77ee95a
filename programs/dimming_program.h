#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "host/text/basic_string.h"
#include "host/ui/controls/list_control.h"
#include "host/xml/xml_document.h"
#include "pages/binding/row_rewrite.h"

// The dimming program: at which power a lamp burns during four consecutive steps of the night. It
// is a set of attributes on the element that it belongs to, all decimal text.

namespace lamp {

/// An interval program gives each step a duration ("time1".."time4"), a clock program a start
/// ("hour2", "min2".."hour4", "min4"): its first step begins when the lamp switches on.
enum class ProgramKind { interval, clock };

/// Steps are numbered from 1.
constexpr int ProgramSteps = 4;

/// A step's time as lists and edits show it: "hh:mm" of a clock program, the duration's text as it
/// stands of an interval program. What is missing reads as 0, or as an empty text.
XCBasicString stepTime(const XmlDocument::XmlNode& owner, ProgramKind kind, int step);

/// Takes a step's time from an edit. In a clock program the first two characters are the hour, and
/// those from the fourth on the minute.
void setStepTime(XmlDocument::XmlNode& owner, ProgramKind kind, int step,
                 const XCBasicString& text);

/// The attribute that holds a step's power, in percent.
host::XmlName powerAttribute(int step);
/// The attribute that holds the duration of an interval program's step.
host::XmlName durationAttribute(int step);
/// The attributes that hold the start of a clock program's step.
host::XmlName hourAttribute(int step);
host::XmlName minuteAttribute(int step);

/// The attributes of a program as it is sent and stored, in their order. A clock program has no
/// start of its first step.
const std::vector<host::XmlName>& programAttributes(ProgramKind kind);
/// How an element with a program changes when it is sent: the program moves into a child
/// "Interval".
const RowRewrite& programRewrite(ProgramKind kind);

/// The columns of a list of programs: the owner, then time and power of each step.
constexpr std::size_t ProgramColumns = 1 + 2 * ProgramSteps;
constexpr std::size_t timeColumn(int step) {
  return static_cast<std::size_t>(2 * step - 1);
}
constexpr std::size_t powerColumn(int step) {
  return static_cast<std::size_t>(2 * step);
}

/// "T1", "P1" and so on, for the columns behind the owner's.
std::u16string_view programCaption(std::size_t column);

/// Captions, cells and order of those columns. @p owner is the first one; its order is that of
/// compareProgramRows.
std::vector<host::ListColumn> programColumns(ProgramKind kind, host::ListColumn owner);

/// The order of two rows by a column: negative, 0 or positive. Column 0 goes by the text of "Id",
/// a power column by its numbers. In a time column the first of the two decides alone how both are
/// compared, deliberately: by the numbers of their durations when it has one, else by the texts of
/// their starts. A row without element equals every other, and so do all rows by other columns.
int compareProgramRows(const host::ListRow& first, const host::ListRow& second, std::size_t column);

}  // namespace lamp
