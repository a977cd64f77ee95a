#pragma once

#include <cstdint>
#include <deque>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "controller/storage/disk.h"

namespace lamp::controller {

/// Which journal is meant: the number counts from 1, the tag is made at random for each, so that a
/// state and a journal that do not belong together are told apart.
struct JournalName {
  std::uint64_t number = 0;
  std::string tag;
};

/// What a journal's first frame says: who it is, and which journal it follows up to which byte.
struct JournalHead {
  JournalName name;
  std::string followedTag;
  std::uint64_t followedBytes = 0;
};

/// The journals that follow a state.
struct JournalChain {
  JournalChain() = default;
  JournalChain(const JournalChain&) = delete;
  JournalChain& operator=(const JournalChain&) = delete;

  std::vector<std::string_view> changes;         ///< in order; parts of `contents`
  JournalName last;                              ///< the one to go on with
  bool present = false;                          ///< whether its file is there
  std::uint64_t frames = 0;                      ///< in the last one
  std::uint64_t wholeBytes = 0;                  ///< how much of the last one is whole
  std::uint64_t brokenBytes = 0;                 ///< what stands behind that
  std::vector<std::filesystem::path> abandoned;  ///< files that nobody needs any longer
  std::deque<std::string> contents;
};

/// The file of a state's journal: the state's own name with ".journal-" and the number.
std::filesystem::path journalPath(const std::filesystem::path& state, std::uint64_t number);

/// The first frame's payload, and back. False where it is none.
std::string printHead(const JournalHead& head);
bool readHead(std::string_view text, JournalHead& head);

/// The numbers of the journals that stand beside a state, in ascending order. Answers what went
/// wrong, or an empty text.
std::string findJournals(Disk& disk, const std::filesystem::path& state,
                         std::vector<std::uint64_t>& numbers);

/// Reads the journals from the one that the state names (number 0: a state that was written without
/// one). A broken end of the last one is no fault. Answers what is wrong, or an empty text.
std::string readJournals(Disk& disk, const std::filesystem::path& state, const JournalName& first,
                         JournalChain& chain);

}  // namespace lamp::controller
