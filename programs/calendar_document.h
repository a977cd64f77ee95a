#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

#include "host/xml/xml_document.h"
#include "programs/dimming_program.h"

namespace lamp {

/// A calendar that is being edited: a working copy that all edits go to, and an untouched copy that
/// tells whether anything changed.
class CalendarDocument {
 public:
  /// A calendar that was never saved, for controllers of a kind, without day types.
  explicit CalendarDocument(ProgramKind kind);

  /// Takes a stored calendar, with all that it holds, whatever its root is called. False, with the
  /// calendar as it was, when the file can't be read.
  bool load(const std::optional<std::filesystem::path>& file);

  XmlDocument::XmlNode& root() { return *working_.Root(); }
  const XmlDocument::XmlNode& root() const { return *working_.Root(); }

  /// The calendar as it was when it last counted as unchanged.
  const XmlDocument::XmlNode& untouched() const { return *untouched_.Root(); }

  /// The year string as it stands in the calendar.
  XCBasicString year() const;
  /// Puts a year string into the working copy.
  void setYear(std::u16string_view year);

  /// From here on, what the working copy holds now counts as unchanged.
  void settle();
  bool changed() const { return !(*working_.Root() == *untouched_.Root()); }

  /// Gives the calendar a new revision and the name, and writes it to @p file, whole or not at all;
  /// the folder is made when it is missing. On success the calendar counts as unchanged. False,
  /// with the calendar as it was, when it can't be written.
  bool save(const std::filesystem::path& file, const XCBasicString& name);

 private:
  bool attemptToSave(const std::filesystem::path& file, const XCBasicString& name);
  XmlDocument working_;
  XmlDocument untouched_;
};

}  // namespace lamp
