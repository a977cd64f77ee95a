#pragma once

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "controller/storage/disk.h"
#include "controller/storage/journal_chain.h"

namespace lamp::controller {

/// What was found on the disk.
struct KeptState {
  bool found = false;
  std::string state;     ///< the document that was written whole
  JournalChain journal;  ///< what was appended since
  std::string notice;    ///< what the operator should know; empty mostly
};

/// A state on the disk: one file that holds it whole, and a journal of the changes since. A change
/// costs what it is long; now and then the state is written whole again, with a new journal.
///
///     state.xml             names its journal in its first line
///     state.xml.journal-7   a frame for each append; the first one names the journal
///
/// A new journal is begun before the state that belongs to it is written, and the old ones are
/// removed after that state is on the disk. Whoever reads takes the state, the journal that it
/// names, and those that follow. At whatever operation the program or the machine ends, that is the
/// state with every append that was answered with success, and with at most the one append that was
/// under way: whole or not at all.
///
/// One thread at a time may append or begin a journal; another may write the state meanwhile.
class StateStorage {
 public:
  /// `file` holds the state. The disk must outlive the storage.
  StateStorage(Disk& disk, std::filesystem::path file);

  /// Finds what is kept; nothing on the disk changes. Answers what is wrong with it, or an empty
  /// text.
  std::string load(KeptState& kept);
  /// After `load`: cuts off what was never whole, removes what an ended program left, and makes
  /// ready to append where there is a journal to append to. Answers what went wrong, or an empty
  /// text.
  std::string resume(const KeptState& kept);

  /// Returns when `change` is on the disk; answers what went wrong, or an empty text. After a fault
  /// nothing of it is kept.
  std::string append(std::string_view change);

  /// Begins a new journal: what is appended from now on follows the state as it is now. Answers
  /// what went wrong, or an empty text; then appends go on as before.
  std::string beginJournal();
  /// The present journal; number 0 before the first.
  const JournalName& journal() const { return name_; }
  /// Writes the state that belongs to `journal`, with a checksum, and removes the journals before
  /// it.
  std::string writeState(std::string_view document, const JournalName& journal);

  bool hasJournal() const { return journal_ != nullptr; }
  /// How long the present journal and the state are, in bytes.
  std::uint64_t journalBytes() const { return journalBytes_; }
  std::uint64_t stateBytes() const { return stateBytes_; }

 private:
  std::string cutOverhang();

  Disk& disk_;
  const std::filesystem::path file_;
  const std::filesystem::path beside_;
  std::unique_ptr<DiskFile> journal_;
  JournalName name_;  // of the present journal
  std::uint64_t frames_ = 0;
  std::atomic<std::uint64_t> journalBytes_ = 0;
  std::atomic<std::uint64_t> stateBytes_ = 0;
  bool overhangs_ = false;  // something may stand behind the whole frames
};

}  // namespace lamp::controller
