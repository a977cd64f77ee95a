#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include "host/text/basic_string.h"
#include "host/xml/xml_document.h"
#include "programs/dimming_program.h"

// Where calendars lie: one file each, in a folder of the host's configuration that all controllers
// of the type share.

namespace lamp {

/// The folder of the calendars: beside the configuration, named after the display name of the
/// lamp managers. It need not exist.
std::filesystem::path calendarFolder();

/// A calendar in the store.
struct StoredCalendar {
  XCBasicString title;  ///< the file's name without folder and ending
  std::filesystem::path file;
};

/// The calendars in the store, in the order that the file system gives. A title holds what an XML
/// document can hold: other characters of the file's name read as U+FFFD.
std::vector<StoredCalendar> storedCalendars();

/// The file of the calendar with a name: the one in the store that has this title, whatever it
/// holds; else the one that a new calendar of this name gets. None for a name that could lead out
/// of the folder when there is no such file: an empty one, one with a separator of paths or a
/// control character, "." and "..", and a device's name.
std::optional<std::filesystem::path> calendarFile(const XCBasicString& name);

/// Reads a calendar's file. False, with @p calendar as it was, when there is none or it is no XML.
bool readCalendar(const std::optional<std::filesystem::path>& file, XmlDocument& calendar);

/// What "hasIOmodule" holds in calendars of a kind: clock programs are for controllers with an
/// input/output module, interval programs for those without one.
std::u16string_view moduleMark(ProgramKind kind);
/// Whether a calendar that was read is of a kind.
bool isOfKind(const XmlDocument& calendar, std::u16string_view mark);

}  // namespace lamp
