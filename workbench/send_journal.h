#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "host/services/descriptor.h"
#include "workbench/journal_entry.h"

namespace workbench {

/// How large a journal grows.
struct JournalLimits {
  std::size_t files = 5;                       ///< the one being written and the older ones
  std::size_t fileBytes = 4U * 1024 * 1024;    ///< a file with one long entry may be larger
  std::size_t entryBytes = 36U * 1024 * 1024;  ///< the longest line that is read
};

/// The record of everything sent to controllers, in files of JSON lines that only their owner can
/// read: "sends.jsonl" and, older, "sends.1.jsonl" to "sends.4.jsonl". Any number of programs may
/// write one journal. A line is appended whole, by one write, and flushed to the disk.
class SendJournal {
 public:
  explicit SendJournal(std::filesystem::path folder, JournalLimits limits = {})
      : folder_(std::move(folder)), limits_(limits) {}

  const std::filesystem::path& folder() const { return folder_; }

  /// Appends an entry, in a new file when the present one is full. False with the system's reason,
  /// which names the file, in @p cause; nothing of the entry is then left. True with a @p cause
  /// where no new file can be begun, because the journal's lock can't be opened.
  bool append(const JournalEntry& entry, std::string& cause) const;

  /// The entries that @p wanted accepts, the latest first, at most @p most. Lines that are damaged
  /// are passed over; of a file that can't be read @p problem, where given, tells name and reason.
  std::vector<JournalEntry> entries(const std::function<bool(const JournalEntry&)>& wanted,
                                    std::size_t most, std::string* problem = nullptr) const;

 private:
  std::filesystem::path file(std::size_t age) const;
  void rotate() const;
  host::Descriptor open(std::string& cause) const;

  std::filesystem::path folder_;
  JournalLimits limits_;
};

}  // namespace workbench
