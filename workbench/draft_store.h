#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "workbench/file_lock.h"
#include "workbench/page_values.h"

namespace workbench {

/// Entries of a page that were not sent.
struct Draft {
  std::string when;  ///< the moment of the last entry, "2025-03-15T10:00:00.000Z"
  PageValues values;
};

/// The draft of one page of one device, in a file that only its owner can read. While it is held no
/// other program touches it: what was there before was left by a program that ended unexpectedly.
class DraftStore {
 public:
  /// The draft of the page that sends @p section of the device, in @p folder, which is made.
  DraftStore(const std::filesystem::path& folder, const std::string& deviceId,
             const std::string& section);

  /// False where another program has the page open or the folder can't be made; nothing is then
  /// read or written.
  bool isHeld() const { return lock_.isHeld(); }
  std::optional<Draft> load() const;
  /// Puts the draft in the place of the one before, whole or not at all.
  bool save(const Draft& draft) const;
  void drop() const;

  const std::filesystem::path& file() const { return file_; }

 private:
  std::filesystem::path file_;
  FileLock lock_;
};

}  // namespace workbench
