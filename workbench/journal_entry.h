#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace workbench {

/// One send as the journal keeps it: a command that changes something at a controller. Texts are
/// UTF-8, passwords masked.
struct JournalEntry {
  /// What the journal keeps of an uploaded file in place of its content.
  struct Upload {
    std::string name;
    std::uint64_t bytes = 0;
    std::string sha256;  ///< 64 hexadecimal digits
  };

  std::string when;        ///< the moment of sending, "2025-03-15T10:00:00.000Z"
  std::string who;         ///< the name of the user
  std::string program;     ///< which program sent it
  std::string deviceId;    ///< of the configuration; empty for a device that is not in it
  std::string deviceName;  ///< likewise
  std::string address;     ///< "host:port"
  int command = 0;
  std::string section;   ///< "E04"; empty when the document names none
  std::string document;  ///< what was sent
  std::string before;    ///< what was read of the section last before, empty for nothing
  std::optional<Upload> upload;
  bool ok = false;
  std::string error;              ///< the text of a failure
  std::int64_t milliseconds = 0;  ///< how long it took

  /// The entry as one line of JSON, with the line's end.
  std::string line() const;
  /// Reads a line; none for one that is damaged or is no entry.
  static std::optional<JournalEntry> read(std::string_view line);
};

}  // namespace workbench
