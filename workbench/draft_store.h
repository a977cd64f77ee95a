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
  /// The draft of before; none also where it can't be read, as problem() then tells. A damaged one
  /// is put aside as "*.json.damaged".
  std::optional<Draft> load();
  /// Puts the draft in the place of the one before, whole or not at all.
  bool save(const Draft& draft);
  void drop() const;

  /// Why no draft is kept, or the one of before was not read, with the name of the file; empty
  /// while all is well, and where another program has the page open.
  const std::string& problem() const { return problem_; }

  const std::filesystem::path& file() const { return file_; }

 private:
  void putAside();
  bool failed(const std::filesystem::path& path, const std::string& why);

  std::filesystem::path file_;
  FileLock lock_;
  bool mayReplace_ = true;  // what could not be read is not lost
  std::string problem_;
};

}  // namespace workbench
