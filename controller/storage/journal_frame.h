#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace lamp::controller {

/// A frame of a journal: one line with its number, its length and a checksum over both and the
/// payload, then the payload. A frame is written and flushed as a whole before the next is begun.
///
///     R 0000000001 0000000042 1a2b3c4d
std::string journalFrame(std::uint64_t number, std::string_view payload);

/// What stands in a journal.
struct JournalScan {
  std::vector<std::string_view> payloads;  ///< of the whole frames, numbered from 0; parts of bytes
  std::uint64_t wholeBytes = 0;            ///< where the whole frames end
  /// What stands behind the whole frames is no write that was cut short, of which only a beginning
  /// is there, but damage.
  bool damaged = false;
};

/// Finds the frames in the bytes of a journal, which must outlive the result.
JournalScan scanJournal(std::string_view bytes);

}  // namespace lamp::controller
